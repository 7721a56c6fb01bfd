#pragma once

#include <QString>

/// A barcode to print. What the numbers behind the type do is the device's affair; they are passed on by
/// position.
struct Barcode
{
    /// Types that hosts use; the values travel as numbers.
    enum Type : int {
        UpcA = 0,
        UpcE = 1,
        Ean13 = 2,
        Ean8 = 3,
        Code39 = 4,
        Itf = 5,
        Codabar = 6,
        Pdf417 = 7,
        Qr = 8,
        Code93 = 9,
        Code128 = 10,
        Code128A = 11,
        Code128B = 12,
        Code128C = 13
    };

    QString text;
    /// One of Type. XML prints Ean13 and Qr, and logs and leaves out the others; HEX lets the register judge.
    int type = Ean13;
    /// Where the readable text stands: 0 nowhere, 1 above, 2 below, 3 both.
    int textPosition = 2;
    /// Width of a module in dots.
    int moduleWidth = 2;
    /// Height in dots.
    int height = 100;
};

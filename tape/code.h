#pragma once

#include "tape/codecaption.h"
#include "tape/symbology.h"

namespace tape {

/// A QR code or a barcode: what stands in it, not its dots.
struct Code
{
    Symbology symbology = Symbology::Qr;
    QString data;
    /// The device's number of a kind that has no name here, negative when not even that is known.
    int number = -1;
    /// Dots of the thinnest bar, or of a module's side; 0 leaves it to the printer.
    int moduleWidth = 0;
    /// Dots; 0 leaves it to the printer.
    int height = 0;
    CodeCaption caption = CodeCaption::None;

    /// The name of its kind for a tape that cannot show it.
    QString title() const;

    bool operator==(const Code&) const = default;
};

} // namespace tape

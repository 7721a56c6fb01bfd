#pragma once

#include <QString>
#include <QVariant>

/// Registers at the start of a shift. A value that the device does not have is an invalid QVariant.
struct KkmRegisterBeg
{
    /// Codes of producer and model as numbers, 0 where they are none.
    int producerCode = 0;
    QString producerName;
    int modelCode = 0;
    QString modelName;
    /// Factory number of the device.
    QString serialNumber;
    /// Sum of all sales of the fiscal drive, roubles.
    QVariant totalSales;
    /// Roubles.
    QVariant cashInDrawer;
    /// The shift that is open or about to be opened.
    int shiftNumber = 0;
    QString registrationNumber;
    QString fnNumber;
};

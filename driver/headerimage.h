#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace Log4Qt {
class Logger;
}

/// The picture of that file in black and white, for the header of the receipts; null when it cannot be loaded
/// or converted, which is logged as an error.
QImage loadHeaderImage(const QString& fileName, const Log4Qt::Logger& logger);

/// The picture as a whole BMP file.
QByteArray toBmpFile(const QImage& image);

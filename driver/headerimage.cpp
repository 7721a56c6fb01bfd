#include "headerimage.h"

#include <QBuffer>

#include <log4qt/logger.h>

QImage loadHeaderImage(const QString& fileName, const Log4Qt::Logger& logger)
{
    QImage image;
    if (!image.load(fileName)) {
        logger.error(QStringLiteral("Не удалось загрузить изображение"));
        return {};
    }
    if (image.format() != QImage::Format_Mono)
        image = image.convertToFormat(QImage::Format_Mono);
    if (image.isNull())
        logger.error(QStringLiteral("Не удалось преобразовать изображение в монохромное"));
    return image;
}

QByteArray toBmpFile(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "BMP");
    return bytes;
}

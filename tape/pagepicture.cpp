#include "tape/pagepicture.h"

#include "tape/letterform.h"
#include "tape/pagedrawing.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace tape {

namespace {

// Large, so that no rounding of the font's measures shows.
constexpr int drawnSize = 100;

QFont fontOf(const DrawnText& drawn)
{
    QFont font(QString::fromLatin1(letterform::fontFamily));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(drawnSize);
    font.setBold(drawn.isBold);
    // A hinted letter depends on the library's version and is no longer that letter when it is stretched.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void paintText(QPainter& painter, const DrawnText& drawn)
{
    const QFont font = fontOf(drawn);
    const double size = drawn.box.height() / letterform::lineHeight;
    painter.save();
    painter.translate(drawn.box.left(), drawn.box.top() + letterform::ascent * size);
    painter.scale(drawn.box.width() / QFontMetricsF(font).horizontalAdvance(drawn.text), size / drawnSize);
    painter.setFont(font);
    painter.setPen(drawn.isWhite ? Qt::white : Qt::black);
    painter.drawText(QPointF(0, 0), drawn.text);
    painter.restore();
}

void paint(QPainter& painter, const Drawing& drawing)
{
    for (const QRect& black : drawing.black)
        painter.fillRect(black, Qt::black);
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const DrawnText& drawn : drawing.texts)
        paintText(painter, drawn);
}

} // namespace

QByteArray toPng(const Page& page)
{
    constexpr int longest = 32'767;
    const Drawing drawing = drawingOf(page);
    if (drawing.size.height() > longest)
        return {};
    QImage image(drawing.size, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    image.setDotsPerMeterX(Drawing::dotsPerMillimetre * 1000);
    image.setDotsPerMeterY(Drawing::dotsPerMillimetre * 1000);
    {
        QPainter painter(&image);
        paint(painter, drawing);
    }
    QBuffer png;
    image.save(&png, "PNG");
    return png.data();
}

QByteArray toPdf(const Page& page)
{
    constexpr int dotsPerInch = 1'000;
    constexpr double millimetresPerInch = 25.4;
    const Drawing drawing = drawingOf(page);
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QPdfWriter writer(&pdf);
    writer.setResolution(dotsPerInch);
    writer.setPageSize(QPageSize(QSizeF(drawing.size) / Drawing::dotsPerMillimetre, QPageSize::Millimeter,
        QStringLiteral("receipt"), QPageSize::ExactMatch));
    writer.setPageMargins({});
    {
        QPainter painter(&writer);
        const double scale = dotsPerInch / (millimetresPerInch * Drawing::dotsPerMillimetre);
        painter.scale(scale, scale);
        paint(painter, drawing);
    }
    return pdf.data();
}

} // namespace tape

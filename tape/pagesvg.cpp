#include "tape/letterform.h"
#include "tape/pagedrawing.h"
#include "tape/pagepicture.h"

namespace tape {

namespace {

QString number(double value)
{
    constexpr int digits = 2;
    return QString::number(value, 'f', digits);
}

/// XML has no control characters, not even escaped.
QString escaped(QString text)
{
    for (QChar& letter : text) {
        if (letter.category() == QChar::Other_Control)
            letter = QChar::ReplacementCharacter;
    }
    return text.toHtmlEscaped();
}

/// Stretched by a transformation, since not every renderer heeds the length, which is there for those that
/// have another font. Browsers let no text inherit that its blanks stay.
QString textElement(const DrawnText& drawn)
{
    const double size = drawn.box.height() / letterform::lineHeight;
    const double length = size * letterform::advance * static_cast<double>(drawn.text.size());
    const QString transform
        = QStringLiteral("translate(%1 %2) scale(%3 1)")
              .arg(number(drawn.box.left()), number(drawn.box.top() + letterform::ascent * size),
                  QString::number(drawn.box.width() / length));
    const QString style = (drawn.isBold ? QStringLiteral(" font-weight=\"bold\"") : QString())
        + (drawn.isWhite ? QStringLiteral(" fill=\"#fff\"") : QString());
    return QStringLiteral("<text xml:space=\"preserve\" transform=\"%1\" font-size=\"%2\" textLength=\"%3\" "
                          "lengthAdjust=\"spacingAndGlyphs\"%4>%5</text>\n")
        .arg(transform, number(size), number(length), style, escaped(drawn.text));
}

QString pathOf(const QList<QRect>& black)
{
    QString path;
    for (const QRect& box : black)
        path += QStringLiteral("M%1 %2h%3v%4h-%3z")
                    .arg(box.x())
                    .arg(box.y())
                    .arg(box.width())
                    .arg(box.height());
    return path;
}

} // namespace

QByteArray toSvg(const Page& page)
{
    const Drawing drawing = drawingOf(page);
    QString texts;
    for (const DrawnText& drawn : drawing.texts)
        texts += textElement(drawn);
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1mm\" height=\"%2mm\" "
                          "viewBox=\"0 0 %3 %4\">\n"
                          "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n"
                          "<path shape-rendering=\"crispEdges\" d=\"%5\"/>\n"
                          "<g font-family=\"%6, monospace\">\n%7</g>\n</svg>\n")
        .arg(number(drawing.size.width() / static_cast<double>(Drawing::dotsPerMillimetre)),
            number(drawing.size.height() / static_cast<double>(Drawing::dotsPerMillimetre)))
        .arg(drawing.size.width())
        .arg(drawing.size.height())
        .arg(pathOf(drawing.black), QString::fromLatin1(letterform::fontFamily), texts)
        .toUtf8();
}

} // namespace tape

#include "tape/pagetext.h"

#include "tape/wrapping.h"

namespace tape {

namespace {

struct AttributeMark
{
    Attributes attributes;
    char16_t mark;
};

// Those with several attributes stand before the ones that they are made of.
constexpr AttributeMark attributeMarks[] = {
    {Attributes{Attribute::DoubleHeight, Attribute::DoubleWidth}, u'⤢'},
    {Attribute::Small, u'·'},
    {Attribute::Bold, u'■'},
    {Attribute::DoubleHeight, u'↕'},
    {Attribute::DoubleWidth, u'↔'},
    {Attribute::Inverse, u'▒'},
};

QString marksOf(Attributes attributes)
{
    QString marks;
    for (const AttributeMark& mark : attributeMarks) {
        if (attributes.testFlags(mark.attributes)) {
            marks += QChar(mark.mark);
            attributes &= ~mark.attributes;
        }
    }
    return marks;
}

QString spaced(const QString& text)
{
    QString result;
    for (const QChar letter : text)
        result += QString(letter) + QLatin1Char(' ');
    return result.trimmed();
}

QString textOf(const Cells& cells)
{
    return cells.attributes.testFlag(Attribute::DoubleWidth) ? spaced(cells.text) : cells.text;
}

// The marks are repeated on each line that the text does not fit on.
QStringList marked(const Cells& cells, int width)
{
    const QString marks = marksOf(cells.attributes);
    QStringList lines;
    for (const QString& piece : wrapped(textOf(cells), width - marks.size()))
        lines.append(marks + piece);
    return lines;
}

QStringList frame(const QString& title, const QString& data, int width)
{
    const int inner = width - 4;
    const QString head = QStringLiteral("[%1]").arg(title.left(inner - 2));
    QStringList lines{
        QStringLiteral("┌─") + head.leftJustified(inner + 1, QChar(u'─')) + QStringLiteral("┐")};
    for (const QString& line : wrapped(data, inner))
        lines.append(QStringLiteral("│ ") + line.leftJustified(inner) + QStringLiteral(" │"));
    lines.append(QStringLiteral("└") + QString(width - 2, QChar(u'─')) + QStringLiteral("┘"));
    return lines;
}

/// The text of each kind of line.
struct Teller
{
    int width;

    QStringList operator()(const TextLine& line) const
    {
        if (line.cells.size() == 1)
            return marked(line.cells.constFirst(), width);
        QString text;
        for (const Cells& cells : line.cells)
            text += marksOf(cells.attributes) + textOf(cells);
        return wrapped(text, width);
    }

    QStringList operator()(const Picture& picture) const
    {
        return frame(picture.title, QStringLiteral("%1 x %2").arg(picture.width).arg(picture.height), width);
    }

    QStringList operator()(const Code& code) const { return frame(code.title(), code.data, width); }

    QStringList operator()(const Cut&) const
    {
        return {QString(), QStringLiteral("- ").repeated(width / 2).trimmed(), QString()};
    }
};

} // namespace

QStringList toText(const Line& line, int width)
{
    return std::visit(Teller{width}, line);
}

QStringList toText(const Page& page)
{
    QStringList text;
    for (const Line& line : page.lines)
        text += toText(line, page.width);
    return text;
}

} // namespace tape

#include "register/page.h"

#include <algorithm>

namespace emulator {

namespace {

struct AttributeMark
{
    int attribute;
    const char16_t* mark;
    bool wide;
};

// Bits of the print attribute: 1 small font, 8 bold, 16 double height, 32 double width, 128 inverse.
constexpr AttributeMark attributeMarks[] = {
    {1, u"·", false},
    {8, u"■", false},
    {16, u"↕", false},
    {32, u"↔", true},
    {48, u"⤢", true},
    {128, u"▒", false},
};

QString spaced(const QString& text)
{
    QString result;
    for (const QChar letter : text)
        result += QString(letter) + QLatin1Char(' ');
    return result.trimmed();
}

QStringList wrapped(const QString& text, int width)
{
    QStringList lines;
    for (qsizetype start = 0; start < text.size() || start == 0; start += width)
        lines.append(text.mid(start, width));
    return lines;
}

} // namespace

Page& Page::text(const QString& text)
{
    m_lines += wrapped(text, m_width);
    return *this;
}

Page& Page::centred(const QString& text)
{
    for (const QString& line : wrapped(text, m_width))
        m_lines.append(QString((m_width - line.size()) / 2, QLatin1Char(' ')) + line);
    return *this;
}

Page& Page::pair(const QString& left, const QString& right)
{
    if (left.size() + right.size() < m_width) {
        m_lines.append(left + right.rightJustified(m_width - left.size()));
        return *this;
    }
    text(left);
    m_lines.append(right.left(m_width).rightJustified(m_width));
    return *this;
}

Page& Page::sum(const QString& left, Money sum)
{
    return pair(left, QLatin1Char('=') + moneyText(sum));
}

Page& Page::rule(QChar fill)
{
    m_lines.append(QString(m_width, fill));
    return *this;
}

Page& Page::frame(const QString& title, const QString& data)
{
    const int inner = m_width - 4;
    const QString head = QStringLiteral("[%1]").arg(title.left(inner - 2));
    m_lines.append(QStringLiteral("┌─") + head.leftJustified(inner + 1, QChar(u'─')) + QStringLiteral("┐"));
    for (const QString& line : wrapped(data, inner))
        m_lines.append(QStringLiteral("│ ") + line.leftJustified(inner) + QStringLiteral(" │"));
    m_lines.append(QStringLiteral("└") + QString(m_width - 2, QChar(u'─')) + QStringLiteral("┘"));
    return *this;
}

Page& Page::attributed(const QString& text, int attribute)
{
    const auto* const found = std::find_if(std::begin(attributeMarks), std::end(attributeMarks),
        [attribute](const AttributeMark& mark) { return mark.attribute == attribute; });
    if (found == std::end(attributeMarks))
        return this->text(text);
    const QString mark = QString::fromUtf16(found->mark);
    for (const QString& line : wrapped(found->wide ? spaced(text) : text, m_width - 1))
        m_lines.append(mark + line);
    return *this;
}

Page& Page::append(const QStringList& lines)
{
    m_lines += lines;
    return *this;
}

Page& Page::cut()
{
    m_lines.append(QString());
    m_lines.append(QStringLiteral("- ").repeated(m_width / 2).trimmed());
    m_lines.append(QString());
    return *this;
}

} // namespace emulator

#include "register/pagewriter.h"

#include "register/parts.h"
#include "register/settingtable.h"
#include "tape/wrapping.h"

namespace emulator {

PageWriter::PageWriter(const Parts& parts)
    : PageWriter(parts, parts.settings.paperWidth())
{
}

PageWriter::PageWriter(const Parts& parts, int width)
    : m_hasCutter(parts.settings.isOn(setting::cutter))
{
    m_page.width = width;
}

PageWriter& PageWriter::text(const QString& text, tape::Attributes attributes)
{
    for (const QString& piece : tape::wrapped(text, tape::columns(attributes, m_page.width)))
        add(tape::TextLine::of(piece, attributes));
    return *this;
}

PageWriter& PageWriter::centred(const QString& text)
{
    for (const QString& piece : tape::wrapped(text, m_page.width))
        line(QString((m_page.width - piece.size()) / 2, QLatin1Char(' ')) + piece);
    return *this;
}

PageWriter& PageWriter::pair(const QString& left, const QString& right)
{
    const int width = m_page.width;
    if (left.size() + right.size() < width)
        return line(left + right.rightJustified(width - left.size()));
    return text(left).line(right.left(width).rightJustified(width));
}

PageWriter& PageWriter::sum(const QString& left, Money sum)
{
    return pair(left, QLatin1Char('=') + moneyText(sum));
}

PageWriter& PageWriter::rule(QChar fill)
{
    return line(QString(m_page.width, fill));
}

PageWriter& PageWriter::add(const tape::Line& line)
{
    m_page.lines.append(line);
    return *this;
}

PageWriter& PageWriter::append(const QList<tape::Line>& lines)
{
    m_page.lines += lines;
    return *this;
}

tape::Page PageWriter::end()
{
    if (m_hasCutter)
        add(tape::Cut());
    else
        line({}).line({}).line({}); // where one tears it off
    return m_page;
}

} // namespace emulator

#pragma once

#include "register/amounts.h"
#include "tape/page.h"

namespace emulator {

struct Parts;

/// Lays out one page of the tape.
class PageWriter
{
public:
    /// As wide as the register is set to.
    explicit PageWriter(const Parts& parts);
    PageWriter(const Parts& parts, int width);

    const QList<tape::Line>& lines() const { return m_page.lines; }

    /// Text goes on as many lines as it needs.
    PageWriter& text(const QString& text, tape::Attributes attributes = {});
    PageWriter& centred(const QString& text);
    /// Left and right text on one line, or on two when they do not fit.
    PageWriter& pair(const QString& left, const QString& right);
    /// A text with a sum of money at the right end.
    PageWriter& sum(const QString& left, Money sum);
    PageWriter& rule(QChar fill = QLatin1Char('-'));
    PageWriter& add(const tape::Line& line);
    PageWriter& append(const QList<tape::Line>& lines);
    /// The whole page, with the knife behind it where there is one.
    tape::Page end();

private:
    PageWriter& line(const QString& text) { return add(tape::TextLine::of(text)); }

    tape::Page m_page;
    const bool m_hasCutter;
};

} // namespace emulator

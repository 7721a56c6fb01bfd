#pragma once

#include "register/amounts.h"

#include <QStringList>

namespace emulator {

/// Lays out one document of the tape in lines of a fixed width.
class Page
{
public:
    explicit Page(int width)
        : m_width(width)
    {
    }

    int width() const { return m_width; }
    const QStringList& lines() const { return m_lines; }

    Page& text(const QString& text);
    Page& centred(const QString& text);
    /// Left and right text on one line, or on two when they do not fit.
    Page& pair(const QString& left, const QString& right);
    /// A text with a sum of money at the right end.
    Page& sum(const QString& left, Money sum);
    Page& rule(QChar fill = QLatin1Char('-'));
    /// Something that the paper shows as a picture: a frame with a title and the data in it.
    Page& frame(const QString& title, const QString& data);
    /// Text with the printer's attribute bits, which a plain tape can only hint at.
    Page& attributed(const QString& text, int attribute);
    Page& append(const QStringList& lines);
    Page& cut();

private:
    int m_width;
    QStringList m_lines;
};

} // namespace emulator

#pragma once

#include "tape/page.h"

#include <QStringList>

#include <functional>

namespace emulator {

/// The paper. Pages, or pieces of them, go to the listener as they are printed, or are kept when there is
/// none.
class Tape
{
public:
    using Listener = std::function<void(const tape::Page& page)>;

    void setListener(Listener listener) { m_listener = std::move(listener); }
    void print(const tape::Page& page);
    const QList<tape::Page>& pages() const { return m_pages; }
    QStringList lines() const;
    QString text() const { return lines().join(QLatin1Char('\n')); }
    void clear() { m_pages.clear(); }

private:
    Listener m_listener;
    QList<tape::Page> m_pages;
};

} // namespace emulator

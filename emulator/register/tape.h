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
    /// With the number of the document of the fiscal drive that it is a part of, 0 for none.
    using Listener = std::function<void(const tape::Page& page, quint32 document)>;

    void setListener(Listener listener) { m_listener = std::move(listener); }
    void print(const tape::Page& page, quint32 document);
    const QList<tape::Page>& pages() const { return m_pages; }
    QStringList lines() const;
    QString text() const { return lines().join(QLatin1Char('\n')); }
    void clear() { m_pages.clear(); }

private:
    Listener m_listener;
    QList<tape::Page> m_pages;
};

} // namespace emulator

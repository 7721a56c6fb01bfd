#pragma once

#include <QJsonObject>
#include <QList>

#include <functional>

namespace emulator {

/// What the fiscal drive has stored in this run, and the cash that went in and out, one object a document.
/// Entries go to the listener as they come, or are kept when there is none.
class Journal
{
public:
    using Listener = std::function<void(const QJsonObject& entry)>;

    void setListener(Listener listener) { m_listener = std::move(listener); }
    void add(const QJsonObject& entry);
    const QList<QJsonObject>& entries() const { return m_entries; }
    void clear() { m_entries.clear(); }

private:
    Listener m_listener;
    QList<QJsonObject> m_entries;
};

} // namespace emulator

#pragma once

#include "http/pending.h"

#include <QHash>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace frserver {

/// The clients that wait for what becomes of their documents.
class Waiters
{
public:
    /// What is answered when the time of one is up, and who is told that somebody waits for a document.
    Waiters(const std::function<http::Response(const QString& id)>& late,
        const std::function<void(const QString& id, bool isAwaited)>& setAwaited);

    std::shared_ptr<http::Pending> wait(const QString& id, std::chrono::seconds time);
    bool areAny(const QString& id) const { return m_waiters.contains(id); }
    QStringList ids() const { return m_waiters.keys(); }
    /// Answers all that wait for the document.
    void answer(const QString& id, const http::Response& response);
    /// Nobody waits any longer.
    void release();

private:
    struct Waiter
    {
        std::shared_ptr<http::Pending> pending;
        std::unique_ptr<QTimer> timer;
    };
    void remove(const QString& id, const http::Pending* pending);

    std::function<http::Response(const QString& id)> m_late;
    std::function<void(const QString& id, bool isAwaited)> m_setAwaited;
    QHash<QString, std::shared_ptr<std::vector<Waiter>>> m_waiters;
};

} // namespace frserver

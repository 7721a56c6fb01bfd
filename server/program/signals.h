#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace frserver {

/// Signals that arrive in the event loop.
class Signals
{
public:
    /// Blocks them for this thread and those that it starts: to be made before any other thread. Children
    /// start with them blocked, too.
    Signals();
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    /// SIGTERM or SIGINT.
    void onEnd(const std::function<void()>& end) { m_end = end; }
    /// SIGHUP.
    void onReload(const std::function<void()>& reload) { m_reload = reload; }
    /// SIGUSR2.
    void onUpgrade(const std::function<void()>& upgrade) { m_upgrade = upgrade; }

private:
    void read();
    const std::function<void()>& called(unsigned signal) const;

    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::function<void()> m_end;
    std::function<void()> m_reload;
    std::function<void()> m_upgrade;
};

} // namespace frserver

#include "program/signals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace frserver {

Signals::Signals()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&set, signal);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    // A client that goes is told by its line.
    std::signal(SIGPIPE, SIG_IGN);
    m_descriptor = ::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
}

Signals::~Signals()
{
    m_notifier.reset();
    ::close(m_descriptor);
}

void Signals::read()
{
    signalfd_siginfo info{};
    while (::read(m_descriptor, &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
        const std::function<void()>& called = info.ssi_signo == SIGHUP ? m_reload : m_end;
        if (called)
            called();
    }
}

} // namespace frserver

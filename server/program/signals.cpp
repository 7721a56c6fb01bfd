#include "program/signals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace frserver {

Signals::Signals()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGUSR2})
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
        if (const std::function<void()>& function = called(info.ssi_signo))
            function();
    }
}

const std::function<void()>& Signals::called(unsigned signal) const
{
    switch (signal) {
    case SIGHUP:
        return m_reload;
    case SIGUSR2:
        return m_upgrade;
    default:
        return m_end;
    }
}

} // namespace frserver

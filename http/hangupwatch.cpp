#include "http/hangupwatch.h"

#include "http/listenerror.h"

#include <sys/epoll.h>
#include <unistd.h>

namespace http {

HangUpWatch::HangUpWatch()
    : m_epoll(epoll_create1(EPOLL_CLOEXEC))
{
    if (m_epoll < 0)
        throw ListenError("no descriptor left");
    m_notifier = std::make_unique<QSocketNotifier>(m_epoll, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { look(); });
}

HangUpWatch::~HangUpWatch()
{
    m_notifier.reset();
    ::close(m_epoll);
}

void HangUpWatch::add(int socket, bool isSilent, const Callback* callback)
{
    epoll_event event{};
    // That a line is broken is told in any case.
    event.events = isSilent ? EPOLLONESHOT : EPOLLRDHUP | EPOLLONESHOT;
    event.data.ptr = const_cast<Callback*>(callback);
    epoll_ctl(m_epoll, EPOLL_CTL_ADD, socket, &event);
}

void HangUpWatch::remove(int socket)
{
    epoll_ctl(m_epoll, EPOLL_CTL_DEL, socket, nullptr);
}

/// One at a time, since whoever is told of one may remove others.
void HangUpWatch::look()
{
    epoll_event event{};
    while (epoll_wait(m_epoll, &event, 1, 0) == 1)
        (*static_cast<const Callback*>(event.data.ptr))((event.events & (EPOLLERR | EPOLLHUP)) != 0);
}

} // namespace http

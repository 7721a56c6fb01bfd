#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace http {

/// Tells when the other side of a connection hangs up that is suspended: nobody else looks at it meanwhile.
class HangUpWatch
{
public:
    /// Throws ListenError when the machine has no descriptor left.
    HangUpWatch();
    ~HangUpWatch();
    HangUpWatch(const HangUpWatch&) = delete;
    HangUpWatch& operator=(const HangUpWatch&) = delete;

    /// The callback has to live until it is removed.
    void add(int socket, const std::function<void()>* callback);
    void remove(int socket);

private:
    void look();

    int m_epoll;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace http

#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace http {

/// Tells when the other side of a connection that is suspended hangs up, or says that it sends no more:
/// nobody else looks at it meanwhile.
class HangUpWatch
{
public:
    /// Throws ListenError when the machine has no descriptor left.
    HangUpWatch();
    ~HangUpWatch();
    HangUpWatch(const HangUpWatch&) = delete;
    HangUpWatch& operator=(const HangUpWatch&) = delete;

    using Callback = std::function<void(bool isGone)>;

    /// The callback has to live until it is removed. It is told once; of one that is known to send no more
    /// when it is gone.
    void add(int socket, bool isSilent, const Callback* callback);
    void remove(int socket);

private:
    void look();

    int m_epoll;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace http

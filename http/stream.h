#pragma once

#include <QByteArray>

#include <functional>

namespace http {

/// An answer without an end, such as events: what there is of it is taken bit by bit, as the client reads.
class Stream
{
public:
    Stream() = default;
    virtual ~Stream() = default;
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    virtual QByteArray contentType() const = 0;
    /// What is ready now; empty when nothing is.
    virtual QByteArray take() = 0;
    /// What may be sent at any time to learn whether the client is there.
    virtual QByteArray keepAlive() const = 0;
    /// Whether nothing more will come; the connection is closed behind it.
    virtual bool isOver() const { return false; }

    /// The server's: to be called when something is ready, or it is over.
    void onReady(std::function<void()> callback) { m_ready = std::move(callback); }

protected:
    void wake() const
    {
        if (m_ready)
            m_ready();
    }

private:
    std::function<void()> m_ready;
};

} // namespace http

#pragma once

#include "http/response.h"

#include <chrono>
#include <functional>
#include <optional>

namespace http {

/// An answer that comes later, as to a client that waits for an event. The handler returns it, keeps it and
/// answers when it can; the server answers for it when the time is up, and lets it go when the client left.
/// All in the thread of the event loop.
class Pending
{
public:
    using Time = std::chrono::milliseconds;

    Pending(Time timeout, const Response& atTimeout);

    /// The first answer counts, further ones are dropped.
    void answer(const Response& response);
    /// Whether it was answered, its time was up, or the client left.
    bool isOver() const { return m_isOver; }
    /// To be called when its time was up or the client left.
    void onGone(std::function<void()> callback) { m_gone = std::move(callback); }

    /// The rest is for the server.
    Time timeout() const { return m_timeout; }
    const std::optional<Response>& response() const { return m_response; }
    void onAnswer(std::function<void()> callback) { m_answered = std::move(callback); }
    void expire();
    void leave();

private:
    void end(const std::function<void()>& callback);

    Time m_timeout;
    Response m_atTimeout;
    bool m_isOver = false;
    std::optional<Response> m_response;
    std::function<void()> m_answered;
    std::function<void()> m_gone;
};

} // namespace http

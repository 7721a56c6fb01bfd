#pragma once

#include "http/bodyroom.h"
#include "http/limits.h"
#include "http/problem.h"
#include "http/request.h"

#include <optional>

namespace http {

/// Receives the body of a request within the limits. Of one that is too large a part is read and dropped,
/// since few clients look for an answer while they send.
class Intake
{
public:
    Intake(const Limits& limits, BodyRoom& room, const Request& request);
    ~Intake();
    Intake(const Intake&) = delete;
    Intake& operator=(const Intake&) = delete;

    /// Whether the client need not send its body: it is far too large, or the client waits for leave.
    bool isHopeless() const { return m_isHopeless; }
    /// False when the client sends for ever.
    bool add(QByteArrayView bytes);
    /// Its place is wanted for others; what was received is dropped.
    void loseRoom();
    /// What is wrong of the body.
    const std::optional<Problem>& problem() const { return m_problem; }
    const Request& request() const { return m_request; }
    /// The whole request, once; its body takes no more room.
    Request take();

private:
    void refuse(const Problem& problem);

    const Limits& m_limits;
    BodyRoom& m_room;
    Request m_request;
    qint64 m_received = 0;
    bool m_isHopeless = false;
    std::optional<Problem> m_problem;
};

} // namespace http

#include "http/intake.h"

namespace http {

namespace {

/// How many times the largest body is read before the line is cut.
constexpr qint64 patience = 16;

Problem tooLarge(qint64 most)
{
    return Problem(413, QStringLiteral("The body of a request has %1 bytes at most.").arg(most));
}

Problem noRoom()
{
    return Problem(503, QStringLiteral("Too many requests are being received."))
        .withHeader("Retry-After", "1");
}

} // namespace

Intake::Intake(const Limits& limits, BodyRoom& room, const Request& request)
    : m_limits(limits)
    , m_room(room)
    , m_request(request)
{
    const qint64 announced = request.headers.value("Content-Length").toLongLong();
    if (announced <= limits.body) {
        // Untouched memory costs nothing, and a body that grows would take twice its size.
        m_request.body.reserve(announced);
        return;
    }
    refuse(tooLarge(limits.body));
    m_isHopeless = announced / patience > limits.body || request.headers.contains("Expect");
}

Intake::~Intake()
{
    m_room.release(*this);
}

bool Intake::add(QByteArrayView bytes)
{
    m_received += bytes.size();
    if (m_problem)
        return m_received / patience <= m_limits.body;
    if (m_received > m_limits.body) {
        refuse(tooLarge(m_limits.body));
    } else if (!m_room.claim(*this, bytes.size())) {
        loseRoom();
    } else {
        m_request.body.append(bytes);
    }
    return true;
}

void Intake::loseRoom()
{
    refuse(noRoom());
}

Request Intake::take()
{
    m_room.release(*this);
    return std::move(m_request);
}

void Intake::refuse(const Problem& problem)
{
    m_problem = problem;
    m_request.body = QByteArray();
    m_room.release(*this);
}

} // namespace http

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

Intake::Intake(const Limits& limits, qint64& room, const Request& request)
    : m_limits(limits)
    , m_room(room)
    , m_request(request)
{
    const qint64 announced = request.headers.value("Content-Length").toLongLong();
    if (announced <= limits.body)
        return;
    refuse(tooLarge(limits.body));
    m_isHopeless = announced / patience > limits.body || request.headers.contains("Expect");
}

Intake::~Intake()
{
    release();
}

bool Intake::add(QByteArrayView bytes)
{
    m_received += bytes.size();
    if (m_problem)
        return m_received / patience <= m_limits.body;
    if (m_received > m_limits.body) {
        refuse(tooLarge(m_limits.body));
    } else if (m_room + bytes.size() > m_limits.bodies) {
        refuse(noRoom());
    } else {
        m_request.body.append(bytes);
        m_room += bytes.size();
        m_held += bytes.size();
    }
    return true;
}

Request Intake::take()
{
    release();
    return std::move(m_request);
}

void Intake::refuse(const Problem& problem)
{
    m_problem = problem;
    m_request.body = QByteArray();
    release();
}

void Intake::release()
{
    m_room -= m_held;
    m_held = 0;
}

} // namespace http

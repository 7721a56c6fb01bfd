#include "firstanswer.h"

#include "trace/signs.h"

namespace frctl {

namespace {
constexpr qsizetype enough = 4096;
/// What a register answers that is set to HEX: wrong form of the request.
const char* const wrongForm = "<ErrorCode>5002</ErrorCode>";
} // namespace

void FirstAnswer::sent(const QByteArray& bytes)
{
    m_hasAsked = true;
    m_isOver = !m_first.isEmpty();
    PassingObserver::sent(bytes);
}

void FirstAnswer::received(const QByteArray& bytes)
{
    // What comes before is left from others.
    if (m_hasAsked && !m_isOver && m_first.size() < enough)
        m_first += bytes;
    PassingObserver::received(bytes);
}

bool FirstAnswer::isOurs() const
{
    return m_isHex ? m_first.contains(trace::startOfText) || m_first.contains(trace::acknowledge)
                   : m_first.contains('<') && !m_first.contains(wrongForm);
}

} // namespace frctl

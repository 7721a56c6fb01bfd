#include "answerbuffer.h"

#include "names.h"

#include <algorithm>

namespace spfxml {

AnswerBuffer::AnswerBuffer(const QByteArray& requestId)
    : m_requestId(requestId)
{
}

bool AnswerBuffer::append(const QByteArray& portion)
{
    constexpr QByteArrayView end = names::answer::end;
    // What stands here already holds no end, so a new one can begin at most its length before the portion.
    const qsizetype from = std::max<qsizetype>(0, m_data.size() - end.size() + 1);
    m_data.append(portion);
    if (m_data.indexOf(end, from) < 0)
        return false;
    if (m_data.contains(m_requestId))
        return true;
    // The whole buffer goes, also when the head of the right answer stands behind the foreign one: it is
    // meant.
    m_data.clear();
    return false;
}

} // namespace spfxml

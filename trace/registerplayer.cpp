#include "trace/registerplayer.h"

#include "trace/hexframe.h"
#include "trace/signs.h"
#include "trace/tracetr.h"
#include "trace/xmldocument.h"

#include <algorithm>

namespace trace {

namespace {

const QByteArray cannotBeDone = "01";

QByteArray xmlId(const Frame& frame)
{
    return xmldocument::parse(frame.bytes).id.toUtf8();
}

} // namespace

QByteArray answerFor(const Frame& answer, const Frame& recordedRequest, const Frame& request)
{
    if (!answer.bytes.startsWith(startOfText)) {
        // One that was late has the id of an earlier request, and keeps it.
        const bool isAnswer = answer.bytes.startsWith('<') && xmlId(answer) == xmlId(recordedRequest);
        return isAnswer ? xmldocument::withId(answer.bytes, xmlId(request)) : answer.bytes;
    }
    const char recorded = hexframe::parse(recordedRequest.bytes, Direction::ToRegister).id;
    const char living = hexframe::parse(request.bytes, Direction::ToRegister).id;
    // An echo has its id where a request has it.
    const bool isEcho = answer.bytes == recordedRequest.bytes;
    const qsizetype position = hexframe::idPosition(isEcho ? Direction::ToRegister : Direction::ToHost);
    QByteArray bytes = answer.bytes;
    if (bytes.size() > position && bytes.at(position) == recorded)
        bytes[position] = living;
    return isEcho ? request.bytes : hexframe::withCheckOf(bytes, answer.bytes);
}

RegisterPlayer::RegisterPlayer(const Trace& trace)
    : m_isMasked(trace.hasStandIns())
    , m_exchanges(exchangesOf(trace))
{
    for (Exchange& exchange : m_exchanges)
        exchange.meaning = comparable(exchange.meaning);
}

Meaning RegisterPlayer::comparable(const Meaning& meaning) const
{
    return m_isMasked ? meaning.withoutPeople() : meaning;
}

QList<RegisterPlayer::Answer> RegisterPlayer::receive(const QByteArray& bytes)
{
    QList<Answer> answers;
    for (const QByteArray& frame : m_framer.feed(bytes))
        answers += answersTo(frame);
    return answers;
}

bool RegisterPlayer::isDone() const
{
    if (m_next == 0)
        return m_exchanges.isEmpty();
    // A host that asks no more on this connection comes back for the next one.
    const int connection = m_exchanges.at(m_next - 1).request.connection;
    return std::all_of(
        m_exchanges.cbegin() + m_next, m_exchanges.cend(), [connection](const Exchange& exchange) {
            return exchange.meaning.isQuestion && exchange.request.connection == connection;
        });
}

QStringList RegisterPlayer::missing() const
{
    QStringList lines;
    for (const Exchange& exchange : m_exchanges.mid(m_next))
        lines.append(exchange.meaning.title());
    return lines;
}

QList<RegisterPlayer::Answer> RegisterPlayer::answersTo(const QByteArray& bytes)
{
    const Frame frame{0, 1, Direction::ToRegister, bytes};
    Frame told = frame;
    if (m_isMasked)
        told.bytes = m_mask.masked(frame);
    const Meaning meaning = comparable(m_decoder.decode(told));
    if (meaning.kind == Meaning::Kind::Enquiry) {
        // A register that said nothing then says nothing now.
        const bool isSilent = m_last >= 0 && m_exchanges.at(m_last).answers.isEmpty();
        return isSilent ? QList<Answer>() : QList<Answer>{{QByteArray(1, acknowledge)}};
    }
    if (!meaning.isRequest())
        return {};
    const qsizetype index = matching(meaning);
    if (index < 0)
        return {{refuse(frame, meaning)}};
    m_last = index;
    m_lastId = meaning.id;
    ++m_played;
    return play(m_exchanges.at(index), frame);
}

qsizetype RegisterPlayer::matching(const Meaning& meaning)
{
    if (const qsizetype index = inOrder(meaning); index >= 0) {
        m_next = index + 1;
        return index;
    }
    const bool isRepeated
        = m_last >= 0 && meaning.id == m_lastId && meaning.isLike(m_exchanges.at(m_last).meaning);
    if (isRepeated)
        return m_last;
    return meaning.isQuestion ? elsewhere(meaning) : -1;
}

qsizetype RegisterPlayer::inOrder(const Meaning& meaning) const
{
    for (qsizetype index = m_next; index < m_exchanges.size(); ++index) {
        const Meaning& recorded = m_exchanges.at(index).meaning;
        if (meaning.isLike(recorded))
            return index;
        if (!recorded.isQuestion)
            break;
    }
    return -1;
}

qsizetype RegisterPlayer::elsewhere(const Meaning& meaning) const
{
    qsizetype found = -1;
    // What was so before rather than what will be.
    for (qsizetype index = 0; index < m_exchanges.size(); ++index) {
        const bool isFound = meaning.isLike(m_exchanges.at(index).meaning);
        if (isFound && (index < m_next || found < 0))
            found = index;
    }
    return found;
}

QList<RegisterPlayer::Answer> RegisterPlayer::play(const Exchange& exchange, const Frame& frame)
{
    QList<Answer> answers;
    qint64 before = 0;
    for (const Frame& answer : exchange.answers) {
        // The first one need not wait: how long the register worked is of no interest.
        const qint64 pause = before == 0 ? 0 : answer.microseconds - before;
        answers.append({answerFor(answer, exchange.request, frame), pause});
        before = answer.microseconds;
    }
    return answers;
}

QByteArray RegisterPlayer::refuse(const Frame& frame, const Meaning& meaning)
{
    const bool isOver = m_next >= m_exchanges.size();
    const QStringList differences = isOver ? QStringList{tr("the trace is over")}
                                           : meaning.differencesFrom(m_exchanges.at(m_next).meaning);
    m_complaints.append(
        QStringLiteral("%1: %2").arg(meaning.title(), differences.join(QStringLiteral("; "))));
    if (meaning.protocol == QStringLiteral("XML")) // untranslated: goes to the host
        return xmldocument::refusal(xmldocument::parse(frame.bytes), QStringLiteral("not in the trace"));
    const HexFrame request = hexframe::parse(frame.bytes, Direction::ToRegister);
    return hexframe::answer(request.id, request.command, cannotBeDone);
}

} // namespace trace

#pragma once

#include "trace/framer.h"
#include "trace/mask.h"
#include "trace/script.h"

#include <QStringList>

namespace trace {

/// Plays the register's side of a trace to any host. Requests are matched with the trace in order, whatever
/// their ids and times are, and whatever stands where a masked trace has stand-ins; the answers go out with
/// the ids of the living requests.
///
/// A question that the trace has elsewhere is answered as it was there, a question that the host leaves out
/// is passed over, and a request that comes twice in a row is answered twice. All else is refused and told.
class RegisterPlayer
{
public:
    explicit RegisterPlayer(const Trace& trace);

    struct Answer
    {
        QByteArray bytes;
        /// How long after the one before it goes out: hosts throw away what comes right behind a foreign
        /// answer.
        qint64 pauseMicroseconds = 0;
    };

    /// What the register says to these bytes, in order.
    QList<Answer> receive(const QByteArray& bytes);
    /// Nothing is left but questions of the connection that is under way.
    bool isDone() const;
    /// What came that the trace does not have, a line each.
    const QStringList& complaints() const { return m_complaints; }
    /// Requests of the trace that did not come, a line each.
    QStringList missing() const;
    qsizetype playedCount() const { return m_played; }

private:
    Meaning comparable(const Meaning& meaning) const;
    QList<Answer> answersTo(const QByteArray& bytes);
    /// The index of the exchange that answers it; -1 for none.
    qsizetype matching(const Meaning& meaning);
    qsizetype inOrder(const Meaning& meaning) const;
    qsizetype elsewhere(const Meaning& meaning) const;
    static QList<Answer> play(const Exchange& exchange, const Frame& frame);
    QByteArray refuse(const Frame& frame, const Meaning& meaning);

    bool m_isMasked;
    QList<Exchange> m_exchanges;
    qsizetype m_next = 0;
    /// The exchange that was played last; -1 before the first.
    qsizetype m_last = -1;
    QString m_lastId;
    qsizetype m_played = 0;
    Framer m_framer{Direction::ToRegister};
    Decoder m_decoder;
    Mask m_mask;
    QStringList m_complaints;
};

/// A recorded answer as one to another request of the same kind: with its id, and check digits as right as
/// those that it had.
QByteArray answerFor(const Frame& answer, const Frame& recordedRequest, const Frame& request);

} // namespace trace

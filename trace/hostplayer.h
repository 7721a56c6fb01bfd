#pragma once

#include "trace/framer.h"
#include "trace/mask.h"
#include "trace/script.h"

#include <QStringList>

#include <optional>

namespace trace {

/// Plays the host's side of a trace against a register, request by request, and compares what comes back with
/// what came then.
///
/// Requests get fresh ids, and the start of work over HEX the time that this register told; the password is
/// put in where a trace has a stand-in for it. All else goes out as it was recorded, stand-ins included.
class HostPlayer
{
public:
    /// Without a password, that of the factory takes the place of a stand-in.
    explicit HostPlayer(const Trace& trace, const QByteArray& password = {});

    bool isOver() const { return m_next >= m_exchanges.size(); }
    qsizetype count() const { return m_exchanges.size(); }
    /// The request to send now; until it is answered or given up, there is no other one.
    QByteArray nextRequest();
    /// In words.
    QString title() const { return m_exchanges.at(m_next).meaning.title(); }
    bool isHex() const;
    /// True when the request is answered; then it is the next one's turn.
    bool receive(const QByteArray& bytes);
    /// The register said nothing.
    void giveUp();
    /// Nothing for a request that was given up.
    const Meaning& lastAnswer() const { return m_lastAnswer; }
    /// How the answers differ from those of the trace, a line each.
    const QStringList& differences() const { return m_differences; }
    /// The register has refused what that of the trace did.
    bool isRefused() const { return m_isRefused; }

private:
    QByteArray hexRequest(const Exchange& exchange);
    bool endsExchange(const Frame& frame);
    void compare(const Frame* recorded, const Frame* living);
    /// Masked, and as an answer to the request that is recorded or was sent.
    Meaning meaningOf(const Frame& request, const Frame& answer) const;
    void finish(const Frame* living);

    bool m_isMasked;
    QByteArray m_password;
    QList<Exchange> m_exchanges;
    qsizetype m_next = 0;
    Framer m_framer{Direction::ToHost};
    Frame m_sent;
    char m_hexId = 0x1F;
    /// Fields of the last answer that told the register's clock.
    QList<QByteArray> m_clock;
    Meaning m_lastAnswer;
    QStringList m_differences;
    bool m_isRefused = false;
};

} // namespace trace

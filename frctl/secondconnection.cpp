#include "secondconnection.h"

#include "connectionerror.h"
#include "exceptions.h"
#include "frctltr.h"
#include "interruption.h"
#include "linetrace.h"
#include "passingobserver.h"
#include "progress.h"
#include "registerconnection.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>

#include <algorithm>
#include <memory>

namespace frctl {

namespace {

/// Silence for so many times what an answer took before is none at all.
constexpr int patienceFactor = 10;
constexpr int leastPatienceMs = 1000;

class ByteCount : public PassingObserver
{
public:
    using PassingObserver::PassingObserver;

    void received(const QByteArray& bytes) override
    {
        count += bytes.size();
        PassingObserver::received(bytes);
    }

    qint64 count = 0;
};

/// Ends a wait whose line has to stay open, which a budget would close.
struct NoAnswer
{
};

/// One of two hosts that are connected at the same time.
class Guest
{
public:
    /// Throws as devices::RegisterConnection, and NoAnswer.
    Guest(const devices::ConnectionSettings& settings, LineTrace* trace)
        : m_protocol(settings.protocol)
        , m_bytes(trace)
        , m_connection(bounded(settings))
    {
    }
    Guest(const Guest&) = delete;
    Guest& operator=(const Guest&) = delete;

    /// A register answers, and is that one.
    bool isAnsweredBy(const FoundRegister& found, int milliseconds = probeMs)
    {
        m_end.setRemainingTime(milliseconds);
        try {
            return identify(m_connection.driver(), m_protocol).serial == found.serial;
        } catch (const BasicException&) {
            return false;
        } catch (const NoAnswer&) {
            return false;
        }
    }
    /// Anything at all comes back when it asks.
    bool isHeard(const FoundRegister& found, int milliseconds)
    {
        const qint64 before = m_bytes.count;
        return isAnsweredBy(found, milliseconds) || m_bytes.count > before;
    }
    bool hasInput(int milliseconds)
    {
        m_end = QDeadlineTimer::Forever;
        return m_connection.hasInput(milliseconds);
    }
    void leaveIdle() { m_connection.leaveIdle(); }

private:
    devices::ConnectionSettings bounded(devices::ConnectionSettings settings)
    {
        settings.observer = &m_bytes;
        settings.budgetMs = 0;
        settings.waitCallback = [this] {
            throwIfInterrupted();
            if (m_end.hasExpired())
                throw NoAnswer();
        };
        return settings;
    }

    const QString m_protocol;
    ByteCount m_bytes;
    QDeadlineTimer m_end{probeMs};
    devices::RegisterConnection m_connection;
};

/// Null when it cannot connect.
std::unique_ptr<Guest> connected(const devices::ConnectionSettings& settings, LineTrace* trace)
{
    try {
        return std::make_unique<Guest>(settings, trace);
    } catch (const devices::ConnectionError&) {
        return nullptr;
    } catch (const BasicException&) {
        return nullptr;
    } catch (const NoAnswer&) {
        return nullptr;
    }
}

std::optional<SecondConnection> compare(
    Guest& former, std::unique_ptr<Guest> latter, const FoundRegister& found, int patienceMs)
{
    if (!latter || !latter->isAnsweredBy(found)) {
        latter.reset();
        return former.isAnsweredBy(found) ? std::optional(SecondConnection::IsNotServed) : std::nullopt;
    }
    // What the former one asks must lead to nothing: no answer there, none that comes to the other one, and
    // none later.
    if (former.isHeard(found, patienceMs) || latter->hasInput(0) || !latter->isAnsweredBy(found))
        return SecondConnection::IsServedToo;
    latter.reset();
    return former.hasInput(patienceMs) ? SecondConnection::IsServedToo : SecondConnection::EndsTheFormer;
}

} // namespace

std::optional<SecondConnection> trySecondConnection(
    const Options& options, const Probe& probe, LineTrace* trace)
{
    const Progress progress(tr("%1: trying a second connection").arg(probe.port));
    devices::ConnectionSettings settings = probeSettings(options, probe.port, probe.protocol);
    const std::unique_ptr<Guest> former = connected(settings, trace);
    QElapsedTimer timer;
    timer.start();
    if (!former || !former->isAnsweredBy(*probe.found))
        return std::nullopt;
    const int patienceMs
        = std::clamp(patienceFactor * static_cast<int>(timer.elapsed()), leastPatienceMs, probeMs);
    settings.isLockHeld = true;
    if (trace != nullptr)
        // untranslated: a trace
        trace->note(probe.port + QStringLiteral(" a second connection"));
    const std::optional<SecondConnection> result
        = compare(*former, connected(settings, trace), *probe.found, patienceMs);
    if (result)
        former->leaveIdle();
    return result;
}

QString secondConnectionText(std::optional<SecondConnection> result)
{
    if (!result)
        return tr("what it makes of a second connection could not be found out");
    switch (*result) {
    case SecondConnection::EndsTheFormer:
        return tr("a new connection ends the former one");
    case SecondConnection::IsNotServed:
        return tr("a second connection is not served while there is one");
    case SecondConnection::IsServedToo:
        break;
    }
    return tr("a second connection is served beside the first one");
}

} // namespace frctl

#pragma once

#include "line/exchange.h"
#include "line/faultplan.h"
#include "line/faultsource.h"
#include "line/outbox.h"
#include "register/register.h"

#include <functional>

namespace emulator {

/// One of the register's two languages: takes bytes from the host, works the register and puts what comes
/// back into the outbox. Faults are played here, so that they are the same for both.
class Protocol
{
public:
    Protocol(Register& device, Outbox& outbox, const Clock& clock);
    virtual ~Protocol() = default;
    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    virtual void receive(const QByteArray& bytes) = 0;
    /// Nothing of a request has come yet.
    virtual bool isIdle() const = 0;
    /// Nothing has come of a request any more, and no late answer waits, as when the power was gone.
    void forget();

    void setFaults(const FaultPlan& plan) { m_plan = plan; }
    /// Its faults overrule those of the plan; null for nobody.
    void setFaultSource(FaultSource* source) { m_source = source; }
    /// Overrules all for the exchange that comes next.
    void setNextFault(const Fault& fault) { m_next = fault; }
    /// Told of a fault that is none of this protocol, which then does not happen.
    void setMisfitListener(std::function<void(const QString& words)> listener)
    {
        m_misfitListener = std::move(listener);
    }
    /// Judges as leniently as hosts need that were written to other rules.
    void setLenient(bool lenient) { m_lenient = lenient; }
    int exchangeCount() const { return m_exchanges; }
    /// Is told of each exchange once the register has acted.
    using Watcher = std::function<void(const Exchange& exchange)>;
    void setWatcher(Watcher watcher) { m_watcher = std::move(watcher); }

protected:
    Register& device() { return m_device; }
    const Register& device() const { return m_device; }
    Outbox& outbox() { return m_outbox; }
    /// The rules that a lenient register does not mind are in force.
    bool isStrict() const { return !m_lenient; }
    qint64 milliseconds() const { return m_clock.milliseconds(); }

    /// Counts an exchange and plays what happens before the register acts.
    Fault beginExchange(const QByteArray& request);
    /// Tells who watches; what was refused is remembered. What would command a terminal is escaped in command
    /// and reason.
    void note(Exchange exchange, const Fault& fault);
    /// Sends the answer in the way that the fault wants.
    void deliver(const QByteArray& request, const QByteArray& answer, const Fault& fault);
    /// The line is dead until the next request.
    bool isDeaf() const { return m_deaf; }

    virtual Language language() const = 0;
    /// What has come of a request is dropped.
    virtual void forgetRequest() = 0;
    /// An answer that belongs to another request.
    virtual QByteArray foreignAnswer(const QByteArray& answer) const = 0;
    /// The answer with a damaged check value.
    virtual QByteArray damagedAnswer(const QByteArray& answer) const = 0;
    virtual QByteArray noise() const = 0;
    /// The answer in the form that the mode stands for; as it is for all other modes.
    virtual QByteArray shaped(const QByteArray& answer, FaultMode mode) const = 0;
    /// Milliseconds between a foreign answer and the true one. A host without frames throws away whatever it
    /// has got behind a foreign answer, so on such a line the two must not run into each other.
    virtual qint64 pauseAfterForeign() const { return 0; }

private:
    Fault nextFault(const QByteArray& request);
    void cutPower();
    void putSplit(const QByteArray& answer, qsizetype size, qint64 pause);
    void putDelayed(const QByteArray& answer, const Fault& fault);

    Register& m_device;
    Outbox& m_outbox;
    const Clock& m_clock;
    FaultPlan m_plan;
    std::optional<Fault> m_next;
    FaultSource* m_source = nullptr;
    std::function<void(const QString& words)> m_misfitListener;
    int m_exchanges = 0;
    bool m_lenient = false;
    bool m_deaf = false;
    bool m_isEarly = false;
    /// Number of the last fiscal document when the exchange began.
    quint32 m_documentBefore = 0;
    Watcher m_watcher;
    qint64 m_answerDelay = 0;
    QByteArray m_late;
};

} // namespace emulator

#pragma once

#include "rack/agentclock.h"
#include "rack/backoff.h"
#include "rack/documentpick.h"
#include "rack/ownership.h"
#include "rack/shiftwatch.h"
#include "rack/soleownership.h"
#include "rack/waiting.h"
#include "rack/worker.h"

#include "errorkind.h"
#include "pendingsales.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

namespace frserver {

class KeptStates;

/// Looks after one register: has its worker make the documents that wait in the journal, one at a time, and
/// knows why when it does not. Whatever becomes of the worker, the next one settles what was begun before
/// anything else is made; nothing here says what has become of a document, that is for the register and the
/// journal.
class RegisterAgent : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        /// File of the journal, for the worker.
        QString journal = {};
        AgentClock clock = AgentClock::system();
        std::shared_ptr<QueueGlance> glance = std::make_shared<QueueGlance>();
        std::shared_ptr<Ownership> ownership = std::make_shared<SoleOwnership>();
        /// A worker that is at something and has said nothing for so many milliseconds is killed. A busy
        /// register may hold one exchange for 100 s.
        qint64 longestSilence = 120'000;
        /// A register of this service that is not reached for so many milliseconds: what was begun there is a
        /// person's case.
        qint64 longestUnreached = std::chrono::milliseconds(sale::longestUnreached).count();
        /// Must outlive the agent. Null where nothing is to outlive it.
        KeptStates* kept = nullptr;
        /// How often workers died of a document that was never begun, whichever register it was at: all
        /// agents of a rack have the same one.
        std::shared_ptr<QHash<QString, int>> deaths = std::make_shared<QHash<QString, int>>();
        /// The same of documents that failed, of a register that was reached.
        std::shared_ptr<QHash<QString, int>> failures = std::make_shared<QHash<QString, int>>();
    };

    /// The store must outlive it.
    RegisterAgent(const RegisterSettings& settings, sale::DocumentStore& store,
        std::unique_ptr<Worker> worker, const Options& options);

    const QString& name() const { return m_settings.name; }
    const RegisterSettings& settings() const { return m_settings; }
    void start();
    /// Behind the document under way, and without waiting for anything else; stopped follows.
    void stop();
    bool isStopped() const { return m_isStopped; }
    /// Nobody else may work it.
    bool isOwner() const { return m_options.ownership->isHeld(name()); }
    /// To be called every second or so: whatever time decides is decided here.
    void look();

    /// Something was queued.
    void wake();
    /// Somebody waits for the document.
    void setAwaited(const QString& id, bool isAwaited);
    /// Asks the register about a document that is unknown; documentChanged follows, also when the register
    /// cannot be asked now.
    void settle(const QString& id);
    /// Behind the document under way the port is closed and its lock released, until it is resumed, also by
    /// another run of the service. Says who wants that.
    void pause(const QString& by);
    void resume();
    /// A person says that another drive, documents that the journal does not know, or the machine that the
    /// register stands at by now, are all right.
    void accept(const QString& by, const QString& note);

    /// What it would make now of what waits in pools.
    enum class Readiness { Nothing, Paperless, Anything };
    Readiness readiness() const;
    /// One that was claimed for it, when it was ready.
    void makeClaimed(const sale::StoredDocument& document);
    /// The document that its worker is at; empty for none.
    QString underWay() const { return isMaking() ? m_request->id : QString(); }
    /// See Ownership::lease.
    QJsonObject lease() const { return m_options.ownership->lease(name()); }
    const QJsonObject& identity() const { return m_identity; }
    const QJsonObject& toldCondition() const { return m_condition; }

    /// "state" ("starting", "ready", "making", "waiting", "standby", "pausing", "paused", "stopping",
    /// "stopped") with "since" and "stateAge" in seconds, "waiting" (Waiting::reason or null) and
    /// "waitingText", "owner" ("host", "process", or null), "pausedBy" and "pausedSince", "document" (the id
    /// that is made), "identity" and "condition" as the register has told them last, with "paper" as far as
    /// its documents tell, "conditionAge", "unsentSince" (as seen by the service), "shift" ("open",
    /// "since"), "alarms" ("kind", "text"), "workerStarts", "connections", "exchanges" ("count", "seconds").
    QJsonObject view() const;

Q_SIGNALS:
    void documentChanged(const QString& id);
    void changed();
    void stopped();
    /// What was claimed for it and not begun may go to another register. Whether it may be to blame itself,
    /// and not paper or line.
    void claimGivenUp(bool mayBeToBlame);

private:
    /// What the worker is at.
    struct Request
    {
        int number = 0;
        QString what = {};
        /// Of the document.
        QString id = {};
        QString kind = {};
        /// The service's own Z report.
        bool isOfShift = false;
        /// The worker has begun it.
        bool isBegun = false;
        qint64 heard = 0;
    };
    /// A document of a pool.
    struct Claim
    {
        QString id;
        bool isPaperless = false;
        bool mayBeToBlame = false;
    };
    struct Acceptance
    {
        QString by;
        QString note;
    };

    bool recall();
    void forgetKept();
    bool isKeptPause(const QDateTime& since) const;
    bool wasKeptPauseEnded() const;
    qint64 epoch() const;
    void noteDrive(const QString& drive);
    QJsonObject toKeep() const;
    void keep();
    void advance();
    void work();
    void advanceOpen();
    void standBy();
    void leaveToOthers();
    void giveWay();
    bool mayBeBegun() const;
    void tellLease();
    bool isWorkerOfFormerLease() const;
    void leave();
    void endWorker();
    void finishStop();
    void startWorker();
    void hurry();
    void request(Request request, QJsonObject message);
    void take(const QJsonObject& message);
    void answered(const Request& request, const QJsonObject& answer);
    void opened(const QJsonObject& answer);
    void made(const Request& request, const QJsonObject& answer);
    void meetHold(const QString& reason, const QString& text);
    void noteShiftBeginning(const QJsonObject& answer);
    void noteShift(const Request& request, const QJsonObject& answer);
    void noteZReport(const QJsonObject& answer);
    void noteUnsent();
    void noteCondition(const QJsonObject& answer);
    void meetFailure(const Request& request, const QJsonObject& failure);
    void workerEnded(const QString& how);
    void noteBegun();
    void tellBegun();
    void noteDeath(const QString& id);
    void refuse(const QString& id, sale::ErrorKind kind, const QString& text, const QString& exceptionName);
    bool refuseDeadly(const QString& id);
    bool refuseFailing(const QString& id, const QString& reason, const QString& text);
    void giveUpBegun();
    void giveUpInTime();
    bool isMaking() const;
    void requestMaking(Request document);
    bool makeNext();
    std::optional<Request> nextDocument();
    std::optional<Request> dueZReport();
    bool isShiftAwaited() const;
    bool refuseOutsideHours(const sale::StoredDocument& document);
    void block(const QString& reason, const QString& text);
    void unblock();
    void wakeLater();
    void giveUpClaim();
    bool endClaim(const QString& id, const QString& hold);
    void announce();
    QString state() const;
    QJsonValue paper() const;
    QJsonValue condition() const;
    QJsonArray alarms() const;
    /// None is younger than it can be.
    qint64 ageOf(const QDateTime& moment) const;
    qint64 steady() const { return m_options.clock.steady(); }
    QDateTime now() const { return m_options.clock.now(); }

    const RegisterSettings m_settings;
    sale::DocumentStore& m_store;
    const std::unique_ptr<Worker> m_worker;
    const Options m_options;
    DocumentPick m_pick;
    ShiftWatch m_shift;
    Backoff m_backoff;

    bool m_isStarted = false;
    bool m_isStopping = false;
    bool m_isStopped = false;
    /// The process is there.
    bool m_isAlive = false;
    /// The register was reached, and nothing has failed since.
    bool m_isOpen = false;
    /// Somebody else works the register.
    bool m_isStandby = false;
    /// As the worker knows it; empty before it was told.
    QJsonObject m_lease;
    /// By the present lease.
    bool m_hasMade = false;
    /// Since when its line has led to a register that is not its own.
    std::optional<qint64> m_strayedSince;
    /// The worker may have port and lock.
    bool m_mayHoldPort = false;
    /// Others may find the register kept for this service, also by a worker that has died.
    bool m_mayHoldDrive = false;
    /// Not sooner than that by steady(), behind a failure.
    qint64 m_leaveDriveAt = 0;
    std::optional<QString> m_pausedBy;
    QDateTime m_pausedSince;
    /// That of the last pause that was ended here, which may not be written down yet, and the lease's epoch
    /// then.
    QDateTime m_resumed;
    qint64 m_resumedEpoch = 0;
    /// Of which what is kept is known.
    QString m_drive;
    bool m_isRecalled = false;
    /// As it was written last.
    QJsonObject m_kept;
    bool m_isKeepingFailed = false;
    std::optional<Request> m_request;
    int m_lastNumber = 0;
    /// When the worker was told to end; it may hang.
    std::optional<qint64> m_endingSince;
    std::optional<Waiting> m_waiting;
    std::optional<Acceptance> m_acceptance;
    std::optional<Claim> m_claimed;
    /// Also for what is not printed.
    bool m_isPaperWanted = false;
    QStringList m_toSettle;
    /// Documents that the start under way settles.
    QStringList m_begun;
    /// Steady times.
    qint64 m_retryAt = 0;
    qint64 m_triedAt = 0;
    qint64 m_conditionDue = 0;
    /// Before the next document: nobody knows whether the shift is open.
    bool m_isConditionWanted = false;
    qint64 m_zReportDue = 0;
    QString m_zReport;
    QString m_zReportFailure;
    /// While documents are to be settled.
    int m_failedStarts = 0;
    qint64 m_giveUpAt = 0;
    int m_workerStarts = 0;
    int m_connections = 0;
    qint64 m_exchanges = 0;
    qint64 m_exchangeMicroseconds = 0;
    QJsonObject m_identity;
    QJsonObject m_condition;
    QDateTime m_conditionTime;
    /// Over XML a register does not tell since when the OFD has not got its documents.
    QDateTime m_unsentSince;
    bool m_isUnsentTold = false;
    /// The drive's last document then; 0 when that was not told.
    qint64 m_unsentLast = 0;
    /// Something since the register was reached.
    bool m_hasPrinted = false;
    QString m_told;
    QDateTime m_since;
};

} // namespace frserver

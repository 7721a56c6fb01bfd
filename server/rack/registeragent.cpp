#include "rack/registeragent.h"

#include "rack/racklog.h"

#include "documentid.h"
#include "journalerror.h"

#include <QTimer>

#include <utility>

namespace frserver {

namespace {

/// What a person may have put right is tried again so long after the last try when somebody waits.
constexpr qint64 hurriedMs = 2'000;
/// What the journal could not take is written so long after that.
constexpr qint64 leaveAgainMs = 10'000;
/// A register with nothing to do is asked how it is.
constexpr qint64 conditionMs = 60'000;
constexpr qint64 zReportMs = 60'000;

const QString makeVerb = QStringLiteral("make");
const QString zReportKind = QStringLiteral("zReport");
const QString openShiftKind = QStringLiteral("openShift");

/// What waits for a person's word.
QString wayToSaySo(const QString& reason, const QString& registerName)
{
    const bool isAwaited = reason == QStringLiteral("needsReview") || reason == QStringLiteral("newDrive");
    return isAwaited ? QStringLiteral(" (POST /v1/registers/%1/accept)").arg(registerName) : QString();
}

} // namespace

RegisterAgent::RegisterAgent(const RegisterSettings& settings, sale::DocumentStore& store,
    std::unique_ptr<Worker> worker, const Options& options)
    : m_settings(settings)
    , m_store(store)
    , m_worker(std::move(worker))
    , m_options(options)
    , m_pick(store, settings.name, *options.glance)
    , m_shift(settings)
{
    connect(m_worker.get(), &Worker::told, this, &RegisterAgent::take);
    connect(m_worker.get(), &Worker::ended, this, &RegisterAgent::workerEnded);
    m_since = now();
}

void RegisterAgent::start()
{
    m_isStarted = true;
    m_giveUpAt = steady() + m_options.longestUnreached;
    advance();
}

void RegisterAgent::stop()
{
    m_isStopping = true;
    giveUpClaim();
    // A register that does not answer may be waited for, for a minute and more.
    static const QStringList harmless{
        QStringLiteral("start"), QStringLiteral("open"), QStringLiteral("state"), QStringLiteral("settle")};
    if (m_request && harmless.contains(m_request->what))
        endWorker();
    advance();
}

void RegisterAgent::pause(const QString& by)
{
    if (m_pausedBy != by)
        m_pausedSince = now();
    m_pausedBy = by;
    giveUpClaim();
    advance();
}

void RegisterAgent::resume()
{
    if (!std::exchange(m_pausedBy, std::nullopt))
        return;
    m_resumed = m_pausedSince;
    m_resumedEpoch = epoch();
    m_retryAt = 0;
    advance();
}

void RegisterAgent::accept(const QString& by, const QString& note)
{
    if (isOwner())
        m_acceptance = Acceptance{by, note};
    else if (m_waiting && m_waiting->reason == QStringLiteral("otherMachine"))
        m_options.ownership->acceptMoved(name());
    m_retryAt = 0;
    advance();
}

void RegisterAgent::settle(const QString& id)
{
    if (!m_toSettle.contains(id))
        m_toSettle.append(id);
    // Whoever asks wants to be told later.
    QTimer::singleShot(0, this, [this] { advance(); });
}

void RegisterAgent::wake()
{
    hurry();
    advance();
}

void RegisterAgent::setAwaited(const QString& id, bool isAwaited)
{
    m_pick.setAwaited(id, isAwaited);
    if (isAwaited)
        wake();
}

/// A line that has vanished, or a worker that dies, is left its time; paper may be there again.
void RegisterAgent::hurry()
{
    if (m_isOpen)
        m_retryAt = std::min(m_retryAt, m_triedAt + hurriedMs);
}

void RegisterAgent::look()
{
    isOwner() && !isWorkerOfFormerLease() ? tellLease() : leaveToOthers();
    const bool isSilent = m_request && steady() - m_request->heard >= m_options.longestSilence;
    const bool isHanging = m_endingSince && steady() - *m_endingSince >= m_options.longestSilence;
    if (isSilent || isHanging) {
        qCWarning(rackLog).noquote() << name() << "no sign of life from the worker, which is killed";
        m_worker->kill();
    }
    giveWay();
    advance();
}

void RegisterAgent::advance()
{
    const bool isIdle = !m_isStarted && !m_isStopping;
    if (isIdle || m_isStopped || m_request || m_endingSince || (!m_isStopping && isOwner() && !recall()))
        return announce();
    giveUpInTime();
    if (m_isStopping || m_pausedBy)
        leave();
    else if (!isOwner())
        standBy();
    else if (isWorkerOfFormerLease())
        leaveToOthers();
    else
        work();
    if (!m_isOpen && !m_request) {
        // The register cannot be asked now, and whoever waits for that is told so.
        for (const QString& id : std::exchange(m_toSettle, {}))
            Q_EMIT documentChanged(id);
    }
    announce();
}

void RegisterAgent::work()
{
    if (std::exchange(m_isStandby, false))
        unblock();
    if (steady() < m_retryAt)
        return;
    if (!m_isAlive)
        startWorker();
    else if (m_acceptance)
        request({.what = QStringLiteral("accept")},
            {{QStringLiteral("by"), m_acceptance->by}, {QStringLiteral("note"), m_acceptance->note}});
    else if (!m_isOpen) {
        noteBegun();
        request({.what = QStringLiteral("open")}, {{QStringLiteral("opensShift"), m_shift.mayOpen(now())}});
    } else
        advanceOpen();
}

void RegisterAgent::advanceOpen()
{
    if (!m_toSettle.isEmpty()) {
        const QString id = m_toSettle.takeFirst();
        request({.what = QStringLiteral("settle"), .id = id}, {{QStringLiteral("id"), id}});
    } else if (std::exchange(m_isConditionWanted, false) || (!makeNext() && steady() >= m_conditionDue)) {
        request({.what = QStringLiteral("state")}, {});
    }
}

void RegisterAgent::leave()
{
    if (m_mayHoldPort)
        return request({.what = QStringLiteral("close")}, {});
    if (m_mayHoldDrive && steady() >= m_leaveDriveAt) {
        m_mayHoldDrive = !m_options.ownership->leaveDrive(name());
        m_leaveDriveAt = m_mayHoldDrive ? steady() + leaveAgainMs : 0;
    }
    if (!m_isStopping)
        return;
    if (!m_isAlive)
        return finishStop();
    endWorker();
}

void RegisterAgent::endWorker()
{
    if (m_endingSince)
        return;
    m_endingSince = steady();
    m_worker->end();
}

void RegisterAgent::finishStop()
{
    m_isStopped = true;
    m_options.ownership->release(name());
    announce();
    Q_EMIT stopped();
}

void RegisterAgent::startWorker()
{
    ++m_workerStarts;
    m_isAlive = true;
    m_lease = {};
    // Set first: what cannot be started has ended at once.
    m_request = Request{.number = ++m_lastNumber, .what = QStringLiteral("start"), .heard = steady()};
    m_worker->start();
    if (m_isAlive)
        m_worker->send({{QStringLiteral("n"), m_lastNumber}, {QStringLiteral("do"), QStringLiteral("start")},
            {QStringLiteral("register"), m_settings.toJson()},
            {QStringLiteral("journal"), m_options.journal}});
}

void RegisterAgent::request(Request request, QJsonObject message)
{
    request.number = ++m_lastNumber;
    request.heard = m_triedAt = steady();
    message.insert(QStringLiteral("n"), request.number);
    message.insert(QStringLiteral("do"), request.what);
    m_lease = m_options.ownership->lease(name());
    if (!m_lease.isEmpty())
        message.insert(QStringLiteral("lease"), m_lease);
    m_request = request;
    m_mayHoldPort = m_mayHoldDrive = true;
    m_conditionDue = steady() + conditionMs;
    m_worker->send(message);
}

bool RegisterAgent::isMaking() const
{
    return m_request && m_request->what == makeVerb;
}

void RegisterAgent::requestMaking(Request document)
{
    document.what = makeVerb;
    m_hasMade = true;
    request(document,
        {{QStringLiteral("id"), document.id}, {QStringLiteral("opensShift"), m_shift.mayOpen(now())}});
}

bool RegisterAgent::makeNext()
{
    try {
        const std::optional<Request> next = nextDocument();
        if (!next) {
            // Withdrawn, or too late.
            m_claimed.reset();
            // What could not be written is not tried before there is something to write.
            if (m_waiting && m_waiting->reason == QStringLiteral("journal"))
                unblock();
            return false;
        }
        requestMaking(*next);
        return true;
    } catch (const sale::JournalError& error) {
        block(QStringLiteral("journal"), QString::fromUtf8(error.what()));
        return false;
    }
}

std::optional<RegisterAgent::Request> RegisterAgent::nextDocument()
{
    if (const std::optional<Request> report = dueZReport())
        return report;
    if (isShiftAwaited())
        return std::nullopt;
    for (;;) {
        const std::optional<sale::StoredDocument> document = m_pick.next();
        if (!document)
            return std::nullopt;
        const auto& [id, kind] = std::pair(document->request.id, document->request.kind);
        if (!refuseDeadly(id) && !refuseOutsideHours(*document))
            return Request{.id = id, .kind = kind};
    }
}

std::optional<RegisterAgent::Request> RegisterAgent::dueZReport()
{
    // What is tried to find paper again is the report, and no document that would go before it.
    const bool isPaperAwaited = m_waiting && isOfPaper(m_waiting->reason);
    const bool isTimeToTry = steady() >= m_zReportDue || isPaperAwaited;
    if (!m_shift.isEndDue(now(), steady()) || !isTimeToTry || !m_settings.hasCashier())
        return std::nullopt;
    std::optional<sale::StoredDocument> report = m_pick.zReport();
    if (!report) {
        // The same one again, unless what became of it says that there is no other attempt at it.
        if (m_zReport.isEmpty())
            m_zReport = sale::newDocumentId();
        report = m_store.accept(sale::plainRequest(m_zReport, zReportKind, {}, name()));
    }
    m_zReportDue = steady() + zReportMs;
    if (report->state != sale::DocumentState::Queued) {
        m_zReport.clear();
        return std::nullopt;
    }
    return Request{.id = report->request.id, .kind = zReportKind, .isOfShift = true};
}

/// A document has met a shift that is too old, and the report that closes it has not been made.
bool RegisterAgent::isShiftAwaited() const
{
    return m_waiting && m_waiting->reason == QStringLiteral("shiftExpired")
        && m_shift.isEndDue(now(), steady());
}

bool RegisterAgent::refuseOutsideHours(const sale::StoredDocument& document)
{
    if (m_settings.shift != ShiftRule::Scheduled || document.request.kind != openShiftKind
        || m_shift.mayOpen(now()))
        return false;
    refuse(document.request.id, sale::ErrorKind::ShiftClosed,
        QStringLiteral("Вне часов работы кассы смена не открывается"), QStringLiteral("Refusal"));
    return true;
}

void RegisterAgent::block(const QString& reason, const QString& text)
{
    m_waiting = Waiting{reason, text + wayToSaySo(reason, name())};
    m_retryAt = steady() + m_backoff.next();
    giveUpClaim();
}

void RegisterAgent::unblock()
{
    m_waiting.reset();
    m_retryAt = 0;
    m_backoff.reset();
    m_isPaperWanted = false;
}

} // namespace frserver

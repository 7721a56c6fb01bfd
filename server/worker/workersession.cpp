#include "worker/workersession.h"

#include "worker/clockjudgement.h"
#include "worker/drivehistory.h"
#include "worker/driveproblem.h"
#include "worker/obstacle.h"
#include "worker/registercondition.h"

#include "abstractfrdriver.h"
#include "connectionerror.h"
#include "documentanswer.h"
#include "exceptions.h"
#include "journalerror.h"
#include "marknoting.h"
#include "pendingsales.h"
#include "postgres/openstore.h"
#include "queueddocument.h"
#include "registerstart.h"
#include "review.h"
#include "reviewneeded.h"
#include "testdrive.h"

#include <QFileInfo>
#include <QJsonArray>

namespace frserver {

namespace {

QJsonArray idsOf(const QList<sale::SettledSale>& settled)
{
    QJsonArray ids;
    for (const sale::SettledSale& sale : settled)
        ids.append(sale.id);
    return ids;
}

/// Its time, or that there is none.
bool isLastDocumentTold(const FnStatusInfo& drive)
{
    return !drive.fnNumber.isEmpty() && (drive.lastFdNumber == 0 || drive.lastFdDateTime.isValid());
}

} // namespace

WorkerSession::WorkerSession(const RegisterSettings& settings, const QString& journal,
    const WorkerLease& lease, devices::LineObserver& observer, const std::function<void()>& waitCallback)
    : m_settings(settings)
    , m_journalFile(journal)
    , m_lease(lease)
    , m_observer(observer)
    , m_waitCallback(waitCallback)
{
}

sale::DocumentStore& WorkerSession::journal()
{
    if (m_journal)
        return *m_journal;
    // Made anew it would know nothing of what was sold.
    if (!sale::isShared(m_journalFile) && !QFileInfo::exists(m_journalFile))
        throw sale::JournalError(QStringLiteral("the journal %1 is gone").arg(m_journalFile));
    m_journal.emplace(m_journalFile, m_settings.closesShift(), m_lease, m_settings.name);
    return *m_journal;
}

sale::RegisterLine WorkerSession::line()
{
    sale::RegisterLine line(m_settings.protocol, m_settings.isExclusive,
        [this] { return m_connection ? m_connection->soleConnection() : 0; });
    line.repeats = [this] { return m_connection ? m_connection->repeats() : 0; };
    line.expected = m_settings.expected;
    line.drive = [this] { return m_drive; };
    line.isClockRead = true;
    return line;
}

QDateTime WorkerSession::localNow() const
{
    return QDateTime::currentDateTimeUtc().toTimeZone(m_settings.timeZone);
}

void WorkerSession::leaveIdle()
{
    if (m_connection)
        m_connection->leaveIdle();
}

void WorkerSession::requireConnection() const
{
    if (!m_connection)
        throw devices::ConnectionError(devices::ConnectionError::NoPort, QStringLiteral("not connected"));
}

sale::CashDesk& WorkerSession::desk(bool opensShift)
{
    requireConnection();
    if (!m_desk || m_desk->options().opensShift != opensShift)
        m_desk.emplace(m_connection->driver(), journal(),
            sale::DeskOptions{line(), m_settings.name, {m_settings.cashier, {}, m_settings.cashierInn},
                m_settings.marks, opensShift, m_settings.closesShift()});
    return *m_desk;
}

QString WorkerSession::readDrive()
{
    // Over XML a byte that changed on the line would be another drive.
    return toldDrive(sale::noteMarkTwice(m_connection->driver(), line(), sale::DocumentKind::Report).drive);
}

void WorkerSession::requireDrive(const QString& drive)
{
    if (sale::isTestDrive(drive) && !m_settings.allowsTestDrive)
        throw DriveProblem(DriveProblem::TestDrive,
            QStringLiteral(
                "the fiscal drive %1 is one for tests: what it signs is no fiscal document (allow-test-drive)")
                .arg(drive));
    const QString known = lastDrive(journal(), m_settings.name);
    if (!drive.isEmpty() && !known.isEmpty() && drive != known)
        throw DriveProblem(DriveProblem::NewDrive,
            QStringLiteral("the fiscal drive is %1, and was %2: somebody has to say that it is meant")
                .arg(drive, known));
}

QJsonArray WorkerSession::reach(sale::CashDesk& desk)
{
    // Before anything is settled: another drive would know nothing of the documents that were begun.
    meetRegister(desk.options().line);
    m_drive = readDrive();
    takeDrive();
    requireDrive(m_drive);
    return idsOf(desk.open());
}

void WorkerSession::setClock(RegisterCondition& condition)
{
    AbstractFrDriver& driver = m_connection->driver();
    const FnStatusInfo& drive = condition.drive.fnStatus;
    const ClockCase given{condition.time, localNow(), drive.lastFdDateTime,
        condition.isShiftOpen.value_or(true) || drive.isShiftOpen, isComputerClockSynchronised()};
    if (m_settings.clock != ClockRule::Set || !isLastDocumentTold(drive) || !mayClockBeSet(given))
        return;
    try {
        const QDateTime now = localNow();
        driver.setDateTime(QDateTime(now.date(), now.time()));
        condition.time = driver.getDateTime();
    } catch (const FrNoConnectionException&) {
        throw;
    } catch (const FrCommandException&) {
        // The difference is told; the register has its reasons.
        return;
    }
}

RegisterCondition WorkerSession::readCondition()
{
    RegisterCondition condition = RegisterCondition::read(m_connection->driver(), line());
    const QString drive = toldDrive(condition.drive.fnStatus.fnNumber);
    if (drive != m_drive && !drive.isEmpty())
        requireDrive(drive);
    setClock(condition);
    return condition;
}

QJsonObject WorkerSession::shiftJson(const RegisterCondition& condition)
{
    if (condition.isShiftOpen != true)
        return {};
    const ShiftTrace trace = shiftTrace(journal(), m_drive);
    return {{QStringLiteral("since"), sale::momentJson(trace.since)},
        {QStringLiteral("isOpening"), trace.isOpening},
        {QStringLiteral("closed"), sale::momentJson(trace.closed)},
        {QStringLiteral("seen"), sale::momentJson(condition.seenOpen(localNow()))}};
}

QJsonObject WorkerSession::condition()
{
    requireConnection();
    return {{QStringLiteral("condition"), readCondition().toJson(localNow())}};
}

/// By the number that was told with the condition alone; before each document more is compared.
QString WorkerSession::unknownDocuments(const RegisterCondition& condition)
{
    if (!m_settings.isExclusive)
        return {};
    const FnStatusInfo& drive = condition.drive.fnStatus;
    try {
        sale::requireKnown(m_connection->driver(), journal(),
            {.drive = m_drive, .lastDocument = isLastDocumentTold(drive) ? drive.lastFdNumber : 0});
        return {};
    } catch (const sale::ReviewNeeded& needed) {
        return QString::fromUtf8(needed.what());
    }
}

QJsonObject WorkerSession::open(bool opensShift)
{
    leaveRegister(Leaving::Line);
    try {
        connect();
        const QJsonArray settled = reach(desk(opensShift));
        const RegisterCondition condition = readCondition();
        return {{QStringLiteral("identity"), identityJson(m_connection->driver(), m_drive)},
            {QStringLiteral("condition"), condition.toJson(localNow())}, {QStringLiteral("settled"), settled},
            {QStringLiteral("unknown"), unknownDocuments(condition)},
            {QStringLiteral("shift"), shiftJson(condition)}};
    } catch (...) {
        leaveRegister(leavingOfCaught());
        throw;
    }
}

QJsonObject WorkerSession::make(const QString& id, bool opensShift)
{
    QJsonArray settled;
    sale::CashDesk& at = desk(opensShift);
    try {
        std::optional<sale::QueuedDocument> made;
        if (at.isOpen())
            made = makeAt(at, id, true);
        // Not reached yet, or switched off and on since.
        if (!made || made->held == sale::ErrorKind::Other) {
            settled = reach(at);
            made = makeAt(at, id, false);
        }
        QJsonObject answer = answerOf(*made);
        answer.insert(QStringLiteral("settled"), settled);
        return answer;
    } catch (const std::exception&) {
        const Obstacle obstacle = Obstacle::current();
        return {{QStringLiteral("held"), obstacle.reason}, {QStringLiteral("text"), obstacle.text}};
    }
}

sale::QueuedDocument WorkerSession::makeAt(sale::CashDesk& desk, const QString& id, bool wasOpen)
{
    m_isMaking = true;
    m_journal->setPatientFor(id, wasOpen);
    const sale::QueuedDocument made = sale::makeQueued(desk, id, wasOpen);
    m_isMaking = false;
    return made;
}

QJsonObject WorkerSession::answerOf(const sale::QueuedDocument& made)
{
    const sale::DocumentAnswer& answer = made.answer;
    const sale::AnswerError error = answer.error.value_or(sale::AnswerError());
    // A database that was lost may have written all the same what it was told last: that it was begun.
    const bool mayBeBegun = !made.held || (!made.stored && sale::isShared(m_journalFile));
    // Also when the journal could not take what is known otherwise: the next start settles it.
    const bool isRunning = mayBeBegun
        && (made.stored ? *made.stored == sale::DocumentState::Running : isRunningInJournal(answer.id));
    const std::optional<sale::DocumentState> state = isRunning ? sale::DocumentState::Running : answer.state;
    QJsonObject json{{QStringLiteral("state"), state ? QJsonValue(sale::stateName(*state)) : QJsonValue()}};
    if (made.held)
        json.insert(QStringLiteral("held"), heldReason(*made.held, error.exceptionName));
    if (answer.error) {
        json.insert(QStringLiteral("kind"), sale::errorKindName(error.kind));
        json.insert(QStringLiteral("text"), error.text);
    }
    return json;
}

QJsonObject WorkerSession::accept(const QString& by, const QString& note)
{
    connect();
    sale::CashDesk& at = desk(true);
    meetRegister(at.options().line);
    m_drive = readDrive();
    takeDrive();
    if (sale::isTestDrive(m_drive) && !m_settings.allowsTestDrive)
        requireDrive(m_drive);
    if (!m_drive.isEmpty())
        giveUpFormerDrive(m_drive);
    const QJsonArray settled = idsOf(at.open());
    at.acceptUnknown(by, note);
    return {{QStringLiteral("settled"), settled}};
}

} // namespace frserver

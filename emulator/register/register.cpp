#include "register/register.h"

#include "register/page.h"
#include "register/parametertable.h"

#include <QJsonDocument>

#include <limits>

namespace emulator {

namespace {

constexpr qint64 startTolerance = qint64(5) * 60;
constexpr qint64 longestShift = qint64(24) * 60 * 60;
constexpr qint64 drawerStaysOpen = 10'000;

} // namespace

Register::Register(const Clock& clock, const Identity& identity)
    : m_clock(clock)
    , m_identity(identity)
    , m_drive(QDateTime::fromMSecsSinceEpoch(clock.milliseconds()))
    , m_drawerOpenedAt(std::numeric_limits<qint64>::min() / 2)
{
    m_parameters.set(parameter::serialNumber, 0, identity.serialNumber);
}

QDateTime Register::now() const
{
    return QDateTime::fromMSecsSinceEpoch(m_clock.milliseconds() + m_clockOffset);
}

bool Register::isBeforeLastDocument(const QDateTime& time) const
{
    // Hosts tell whole seconds only.
    return time.toSecsSinceEpoch() < m_drive.last().dateTime.toSecsSinceEpoch();
}

Refusal Register::start(const QDateTime& hostTime)
{
    if (!hostTime.isValid())
        return Refusal::BadValue;
    if (qAbs(now().secsTo(hostTime)) > startTolerance)
        return Refusal::ClockDiffers;
    if (isBeforeLastDocument(hostTime))
        return Refusal::DateTooEarly;
    m_started = true;
    return Refusal::None;
}

Refusal Register::setTime(const QDateTime& time)
{
    if (!time.isValid())
        return Refusal::BadValue;
    if (m_shiftOpen || m_document.isOpen())
        return Refusal::WrongState;
    if (isBeforeLastDocument(time))
        return Refusal::DateTooEarly;
    m_clockOffset = time.toMSecsSinceEpoch() - m_clock.milliseconds();
    return Refusal::None;
}

void Register::openDrawer()
{
    m_drawerOpenedAt = m_clock.milliseconds();
}

bool Register::isDrawerOpen() const
{
    return m_clock.milliseconds() - m_drawerOpenedAt < drawerStaysOpen;
}

void Register::setOperatorReachable(bool reachable)
{
    m_operatorReachable = reachable;
    if (reachable)
        m_drive.sendAll();
}

bool Register::isShiftTooLong() const
{
    return m_shiftOpen && m_shiftOpened.secsTo(now()) > longestShift;
}

Refusal Register::checkReady() const
{
    if (m_document.isOpen())
        return Refusal::WrongState;
    return m_paper ? Refusal::None : Refusal::NoPaper;
}

Refusal Register::checkDrive() const
{
    if (m_drive.isArchiveClosed())
        return Refusal::DriveWrongState;
    return now().date() > m_drive.expiry() ? Refusal::DriveExpired : Refusal::None;
}

FiscalRecord Register::store(FiscalType type, QJsonObject entry, const Cashier& cashier)
{
    entry[QStringLiteral("shift")] = m_shiftNumber;
    entry[QStringLiteral("cashier")] = cashier.name;
    entry[QStringLiteral("cashierInn")] = cashier.inn;
    const QByteArray content = QJsonDocument(entry).toJson(QJsonDocument::Compact);
    const FiscalRecord record = m_drive.store(type, now(), content);
    if (m_operatorReachable)
        m_drive.sendAll();
    entry[QStringLiteral("number")] = static_cast<qint64>(record.number);
    entry[QStringLiteral("dateTime")] = record.dateTime.toString(Qt::ISODate);
    entry[QStringLiteral("fiscalSign")] = record.sign;
    entry[QStringLiteral("fiscalDrive")] = m_drive.number();
    m_journal.add(entry);
    return record;
}

QString Register::taxName(int tax) const
{
    // Rates that came later have no row among the parameters; a position without a rate is one without VAT.
    static const QMap<int, QString> laterRates{{7, QStringLiteral("НДС 5%")}, {8, QStringLiteral("НДС 7%")},
        {9, QStringLiteral("НДС 5/105")}, {10, QStringLiteral("НДС 7/107")}};
    if (laterRates.contains(tax))
        return laterRates.value(tax);
    return m_parameters.text(parameter::taxNames, tax == 0 ? 5 : tax - 1);
}

QString Register::paymentName(int kind) const
{
    return m_parameters.text(parameter::paymentNames, kind);
}

QString Register::taxSystemName(int mask)
{
    static const QMap<int, QString> names{{1, QStringLiteral("ОСН")}, {2, QStringLiteral("УСН доход")},
        {4, QStringLiteral("УСН доход - расход")}, {8, QStringLiteral("ЕНВД")}, {16, QStringLiteral("ЕСХН")},
        {32, QStringLiteral("Патент")}};
    QStringList found;
    for (auto name = names.cbegin(); name != names.cend(); ++name) {
        if ((mask & name.key()) != 0)
            found.append(name.value());
    }
    return found.join(QStringLiteral(", "));
}

} // namespace emulator

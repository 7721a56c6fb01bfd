#include "worker/registercondition.h"

#include "worker/clockjudgement.h"

#include "abstractfrdriver.h"
#include "deviceinfo.h"
#include "documentanswer.h"
#include "exceptions.h"
#include "receiptnames.h"
#include "shiftopening.h"
#include "taxsystem.h"
#include "testdrive.h"

#include <QJsonArray>

namespace frserver {

namespace {

QJsonValue localTime(const QDateTime& time)
{
    return time.isValid() ? QJsonValue(time.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))) : QJsonValue();
}

/// What a register refuses to tell is not known; a line that fails is another matter.
template <typename Ask>
void askIfTold(const Ask& ask)
{
    try {
        ask();
    } catch (const FrNoConnectionException&) {
        throw;
    } catch (const FrCommandException&) {
        return;
    }
}

/// Over XML the driver tells how many wait, over HEX the first one.
qint64 unsentDocuments(const FnInfo& info, bool isHex)
{
    const int told = info.ofdStatus.firstUnsentNumber;
    if (told <= 0)
        return 0;
    return isHex ? qint64{info.fnStatus.lastFdNumber} - told + 1 : told;
}

QJsonArray taxSystemsJson(AbstractFrDriver& driver)
{
    QJsonArray names;
    const QList<hw::fr::common::TaxSystemType> systems = driver.getAllTaxSystems();
    for (const hw::fr::common::TaxSystemType system : systems)
        names.append(receipt::names::nameOf(receipt::names::taxSystems(), system));
    return names;
}

} // namespace

RegisterCondition RegisterCondition::read(AbstractFrDriver& driver, const sale::RegisterLine& line)
{
    RegisterCondition condition;
    askIfTold([&] { condition.isShiftOpen = sale::isShiftOpen(driver, line); });
    askIfTold([&] {
        condition.drive = driver.getFnInfo();
        condition.unsent = unsentDocuments(condition.drive, line.isChecked());
    });
    askIfTold([&] { condition.time = driver.getDateTime(); });
    return condition;
}

QJsonObject RegisterCondition::toJson(const QDateTime& localNow) const
{
    const FnStatusInfo& status = drive.fnStatus;
    const bool isTold = !status.fnNumber.isEmpty();
    const QDate until = drive.validityDate.date;
    return {{QStringLiteral("shiftOpen"), isShiftOpen ? QJsonValue(*isShiftOpen) : QJsonValue()},
        {QStringLiteral("drive"), sale::textOrNull(status.fnNumber)},
        {QStringLiteral("driveUntil"),
            until.isValid() ? QJsonValue(until.toString(Qt::ISODate)) : QJsonValue()},
        {QStringLiteral("driveWarnings"), isTold ? QJsonValue(status.warningFlags) : QJsonValue()},
        {QStringLiteral("lastDocument"), isTold ? QJsonValue(qint64{status.lastFdNumber}) : QJsonValue()},
        {QStringLiteral("unsent"), unsent < 0 ? QJsonValue() : QJsonValue(unsent)},
        {QStringLiteral("unsentSince"), localTime(drive.ofdStatus.firstUnsentDateTime)},
        {QStringLiteral("unsentNotices"), isTold ? QJsonValue(drive.unsentNotifications) : QJsonValue()},
        {QStringLiteral("clockDifference"),
            time.isValid() ? QJsonValue(clockDifference(time, localNow)) : QJsonValue()}};
}

QDateTime RegisterCondition::seenOpen(const QDateTime& localNow) const
{
    const QDateTime last = drive.fnStatus.lastFdDateTime;
    if (isShiftOpen != true || !last.isValid())
        return {};
    const qint64 ahead = time.isValid() ? clockDifference(time, localNow) : 0;
    return QDateTime(last.date(), last.time(), localNow.timeZone()).addSecs(-ahead).toUTC();
}

QJsonObject identityJson(AbstractFrDriver& driver, const QString& drive)
{
    QJsonValue systems;
    askIfTold([&] { systems = taxSystemsJson(driver); });
    const DeviceInfo info = driver.getDeviceInfo();
    return {{QStringLiteral("model"), sale::textOrNull(info.getModelName())},
        {QStringLiteral("serial"), sale::textOrNull(info.getNumber().trimmed())},
        {QStringLiteral("firmware"), sale::textOrNull(info.getFirmwareVersion())},
        {QStringLiteral("drive"), sale::textOrNull(drive)},
        {QStringLiteral("testDrive"), sale::testDriveJson(drive)}, {QStringLiteral("taxSystems"), systems}};
}

} // namespace frserver

#include "drivechecks.h"

#include "drivewarnings.h"
#include "frctltr.h"

namespace frctl {

namespace {

constexpr quint8 fiscalMode = 3;

/// A new drive wants to be bought, and registered.
constexpr qint64 soonDays = 30;
/// The drive signs nothing more once a document has waited for 30 days.
constexpr qint64 waitsTooLongDays = 5;

/// Nothing while it lasts.
QString endOf(const FnInfo& info, const QDate& today)
{
    const int flags = info.fnStatus.warningFlags;
    const QDate last = info.validityDate.date;
    if ((flags & drivewarnings::changeAtOnce) != 0 || (last.isValid() && last < today))
        return tr("is at its end");
    if ((flags & drivewarnings::memoryFull) != 0)
        return tr("is full");
    if ((flags & drivewarnings::resourceEnds) != 0 || (last.isValid() && today.daysTo(last) < soonDays))
        return tr("ends soon");
    return {};
}

HealthCheck checkLife(const FnInfo& info, const QDate& today)
{
    const QDate last = info.validityDate.date;
    const QString until = last.isValid() ? tr(", until ") + last.toString(Qt::ISODate) : QString();
    const QString drive = info.fnStatus.fnNumber + until;
    if (info.fnStatus.lifePhase != fiscalMode)
        return wrong("drive",
            tr("%1: not in its fiscal mode (phase %2)").arg(drive).arg(info.fnStatus.lifePhase),
            tr("it signs nothing: register it, or change it"));
    const QString end = endOf(info, today);
    if (end.isEmpty())
        return well("drive", drive);
    return wrong("drive", QStringLiteral("%1: %2").arg(drive, end), tr("have the drive changed"));
}

QString waitingText(const OfdStatusInfo& status, bool isHex)
{
    if (status.firstUnsentNumber <= 0)
        return tr("documents wait");
    // Over XML the driver tells how many wait, over HEX the first one.
    if (!isHex)
        return tr("documents that wait: %1").arg(status.firstUnsentNumber);
    if (!status.firstUnsentDateTime.isValid())
        return tr("from number %1").arg(status.firstUnsentNumber);
    return tr("from number %1 of %2")
        .arg(status.firstUnsentNumber)
        .arg(status.firstUnsentDateTime.toString(Qt::ISODate));
}

HealthCheck checkUnsent(const FnInfo& info, const QDateTime& now, bool isHex)
{
    const OfdStatusInfo& status = info.ofdStatus;
    const bool isSilent = (info.fnStatus.warningFlags & drivewarnings::ofdIsSilent) != 0;
    if (status.firstUnsentNumber <= 0 && !isSilent)
        return well("unsent", tr("nothing waits for the OFD"));
    const QString text = waitingText(status, isHex);
    const bool isOld = isHex && status.firstUnsentDateTime.isValid()
        && status.firstUnsentDateTime.daysTo(now) > waitsTooLongDays;
    if (!isOld && !isSilent)
        return well("unsent", text);
    return wrong("unsent", text + tr(", for too long"),
        tr("see to the register's network and the OFD contract: after 30 days it sells nothing"));
}

} // namespace

QList<HealthCheck> driveChecks(const FnInfo& info, const QDateTime& now, bool isHex)
{
    return {checkLife(info, now.date()), checkUnsent(info, now, isHex)};
}

} // namespace frctl

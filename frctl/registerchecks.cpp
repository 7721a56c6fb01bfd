#include "registerchecks.h"

#include "abstractfrdriver.h"
#include "connectionerror.h"
#include "currenttime.h"
#include "detectedport.h"
#include "deviceinfo.h"
#include "drivechecks.h"
#include "exceptions.h"
#include "frctltr.h"
#include "interruption.h"
#include "linetrace.h"
#include "mockfactory.h"
#include "options.h"
#include "portholders.h"
#include "progress.h"
#include "registerconnection.h"
#include "registerprobe.h"
#include "registerstart.h"
#include "registertaken.h"
#include "shiftopening.h"
#include "wrongregister.h"

#include <cstdlib>
#include <memory>

namespace frctl {

namespace {

/// A register that answers at all needs a second or two for all of it.
constexpr int examinationMs = 20000;
/// A register with another time refuses to be started.
constexpr qint64 farthestClockSeconds = 300;

HealthCheck refused(const char* name, const BasicException& error)
{
    return wrong(name, error.tr().ru(), tr("frctl status tells its state"));
}

/// What a register refuses to tell is ill by itself, and all else is told.
template <typename Ask>
QList<HealthCheck> asked(const QList<const char*>& names, const Ask& ask)
{
    try {
        return ask();
    } catch (const FrNoConnectionException&) {
        throw;
    } catch (const FrCommandException& error) {
        QList<HealthCheck> checks{refused(names.constFirst(), error)};
        for (const char* const name : names.mid(1))
            checks.append(untold(name, tr("not asked")));
        return checks;
    }
}

/// "2 h 5 min"
QString spanText(qint64 seconds)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    if (seconds < minute)
        return tr("%1 s").arg(seconds);
    if (seconds < hour)
        return tr("%1 min %2 s").arg(seconds / minute).arg(seconds % minute);
    return tr("%1 h %2 min").arg(seconds / hour).arg(seconds % hour / minute);
}

QString clockDifference(qint64 seconds)
{
    if (seconds == 0)
        return tr(", as this computer's clock");
    const QString text
        = seconds < 0 ? tr(", %1 behind this computer's clock") : tr(", %1 ahead of this computer's clock");
    return text.arg(spanText(std::abs(seconds)));
}

HealthCheck checkClock(AbstractFrDriver& driver)
{
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    const QDateTime time = driver.getDateTime();
    const qint64 difference = now.secsTo(time);
    const QString text = time.toString(Qt::ISODate) + clockDifference(difference);
    if (std::abs(difference) <= farthestClockSeconds)
        return well("clock", text);
    return wrong("clock", text,
        tr("see which one is right; frctl time set --force gives the register this one, with the shift closed"));
}

/// Only the HEX driver says it, in words.
HealthCheck checkShiftAge(AbstractFrDriver& driver, const Options& options)
{
    if (!sale::isShiftOpen(driver, options.line()))
        return well("shift", tr("closed", "shift"));
    if (!options.isHex())
        return untold("shift", tr("open; over XML it is not told for how long"));
    const QString tooLong = QStringLiteral("смена больше 24 часов: да");
    for (const QString& line : driver.getDeviceStateDescription()) {
        if (line.contains(tooLong))
            return wrong("shift", tr("open for more than 24 hours: the register sells nothing"),
                QStringLiteral("frctl --cashier NAME z-report"));
    }
    return well("shift", tr("open for less than 24 hours"));
}

HealthCheck identityOf(AbstractFrDriver& driver, const Options& options)
{
    const DeviceInfo info = driver.getDeviceInfo();
    const QString text = tr("%1, serial number %2, over %3")
                             .arg(info.getModelName(), info.getNumber().trimmed(), options.protocol);
    return well("register", text);
}

QList<HealthCheck> checkDrive(AbstractFrDriver& driver, const Options& options)
{
    const FnInfo info = driver.getFnInfo();
    options.answer->drive = info.fnStatus.fnNumber;
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    return driveChecks(info, now, options.isHex());
}

QList<HealthCheck> ask(devices::RegisterConnection& connection, const Options& options)
{
    AbstractFrDriver& driver = connection.driver();
    sale::connectRegister(driver, options.line());
    QList<HealthCheck> checks{identityOf(driver, options)};
    checks += asked({"clock"}, [&] { return QList{checkClock(driver)}; });
    checks += asked({"drive", "unsent"}, [&] { return checkDrive(driver, options); });
    checks.append(untold("paper", tr("neither protocol tells it")));
    checks += asked({"shift"}, [&] { return QList{checkShiftAge(driver, options)}; });
    connection.leaveIdle();
    return checks;
}

QList<HealthCheck> withUntold(QList<HealthCheck> checks, const QString& why)
{
    for (const char* const name : {"clock", "drive", "unsent", "paper", "shift"})
        checks.append(untold(name, why));
    return checks;
}

/// One that answers over the other protocol, or what silence is likely to mean.
HealthCheck unanswered(const Options& options, const QString& text, LineTrace* trace)
{
    const QString other = options.otherProtocol();
    const Probe found = probe(options, options.port, other, trace);
    return wrong("register", text,
        found.found ? tr("it answers over %1: --protocol %1").arg(other) : likelyCause(found));
}

QList<HealthCheck> failed(const HealthCheck& check)
{
    return withUntold({check}, tr("not asked"));
}

QList<HealthCheck> askRegister(const Options& options, LineTrace* trace)
{
    const Progress progress(tr("asking the register"));
    devices::ConnectionSettings settings = options.connection();
    settings.waitCallback = throwIfInterrupted;
    settings.budgetMs = examinationMs;
    settings.observer = trace;
    devices::RegisterConnection connection(settings);
    return ask(connection, options);
}

} // namespace

QList<HealthCheck> registerChecks(const Options& options)
{
    if (options.port.isEmpty())
        return withUntold({untold("register", tr("none named: --port, or --register"))}, tr("not asked"));
    const std::unique_ptr<LineTrace> trace = lineTraceOf(options);
    // It might be in the midst of a receipt, and what it is told would be half of an answer.
    if (const QList<devices::PortHolder> holders = devices::portHolders(options.port); !holders.isEmpty())
        return failed(untold("register", tr("not asked, %1 works it").arg(holdersText(holders))));
    try {
        options.journal->requireFreeLine(options.port, options.isExclusive);
        // A silent register need not be waited for as long as one that has answered.
        const Probe first = probe(options, options.port, options.protocol, trace.get());
        if (!first.isAsked)
            return failed(wrong("register", first.failure, tr("see to its port first")));
        if (first.isAtWork)
            return failed(wrong("register", first.failure, likelyCause(first)));
        if (!first.found)
            return failed(unanswered(options, first.failure, trace.get()));
        return askRegister(options, trace.get());
    } catch (const sale::RegisterTaken& error) {
        return failed(untold("register", QString::fromUtf8(error.what())));
    } catch (const sale::WrongRegister& error) {
        return failed(wrong("register", QString::fromUtf8(error.what()),
            tr("see which cable is in which port; frctl detect tells who is where")));
    } catch (const devices::ConnectionError& error) {
        return failed(wrong("register", QString::fromUtf8(error.what()), tr("see to plugin and port first")));
    } catch (const BasicException& error) {
        return failed(refused("register", error));
    }
}

} // namespace frctl

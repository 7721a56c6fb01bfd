#include "servicecommands.h"

#include "abstractfrdriver.h"
#include "currenttime.h"
#include "errors.h"
#include "exceptions.h"
#include "frctltr.h"
#include "markingcode.h"
#include "markjudgement.h"
#include "marksyntax.h"
#include "mockfactory.h"
#include "plaintext.h"
#include "shiftopening.h"
#include "textcheck.h"
#include "witnesseddocument.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <cstdlib>
#include <optional>

namespace frctl {

namespace {

/// How far time set goes by itself.
constexpr qint64 farthestSeconds = 300;

/// Out of the printout of the driver, which has asked for it: another question would be one too many.
QString driveIn(const QStringList& description)
{
    static const QRegularExpression line(QStringLiteral("Номер ФН: ([0-9]{16})"));
    return line.match(description.join(QLatin1Char('\n'))).captured(1);
}

/// Null where the register does not tell it.
QJsonValue drawerOpen(AbstractFrDriver& driver)
{
    try {
        return driver.isCashDrawerOpened();
    } catch (const FrNoConnectionException&) {
        throw;
    } catch (const FrCommandException&) {
        return {};
    }
}

QString shownShift(bool isOpen)
{
    return isOpen ? tr("open", "shift") : tr("closed", "shift");
}

QString shownDrawer(bool isOpen)
{
    return isOpen ? tr("open", "drawer") : tr("closed", "drawer");
}

Output status(AbstractFrDriver& driver, const Options& options)
{
    const DeviceInfo info = driver.getDeviceInfo();
    const QString time = driver.getDateTime().toString(Qt::ISODate);
    const bool shiftOpen = sale::isShiftOpen(driver, options.line());
    const QStringList description = driver.getDeviceStateDescription();
    const QJsonValue drawer = drawerOpen(driver);
    options.answer->drive = driveIn(description);
    Output output;
    output.json
        = {{QStringLiteral("model"), info.getModelName()}, {QStringLiteral("modelCode"), info.getModelCode()},
            {QStringLiteral("serialNumber"), info.getNumber()},
            {QStringLiteral("firmware"), info.getFirmwareVersion()},
            {QStringLiteral("lineWidth"), static_cast<int>(info.getBandWidth())},
            {QStringLiteral("dateTime"), time}, {QStringLiteral("shiftOpen"), shiftOpen},
            // Neither protocol has a question for these two.
            {QStringLiteral("paper"), QJsonValue()}, {QStringLiteral("coverOpen"), QJsonValue()},
            {QStringLiteral("drawerOpen"), drawer},
            {QStringLiteral("description"), QJsonArray::fromStringList(description)}};
    output.lines = {tr("model: %1").arg(info.getModelName()), tr("serial number: %1").arg(info.getNumber()),
        tr("firmware: %1").arg(info.getFirmwareVersion()), tr("time: %1").arg(time),
        tr("shift: %1").arg(shownShift(shiftOpen)), tr("paper: -"), tr("cover: -"),
        tr("drawer: %1").arg(drawer.isNull() ? QStringLiteral("-") : shownDrawer(drawer.toBool()))};
    output.lines += description;
    return output;
}

Output openShift(sale::CashDesk& desk, const Options& options)
{
    const sale::Verdict verdict = verdictOf(options, desk.openShift());
    if (verdict.outcome == sale::Outcome::None)
        return {{tr("the shift was open already")}, {}};
    return {{tr("shift opened")}, {}, ExitSuccess, verdict};
}

Output cancel(AbstractFrDriver& driver)
{
    driver.checkCancel();
    return {{tr("document cancelled")}, {{QStringLiteral("cancelled"), true}}};
}

Output openDrawer(AbstractFrDriver& driver)
{
    driver.drawerOpen();
    return {{tr("drawer opened")}, {{QStringLiteral("opened"), true}}};
}

Output drawerState(AbstractFrDriver& driver)
{
    const bool open = driver.isCashDrawerOpened();
    return {{shownDrawer(open)}, {{QStringLiteral("open"), open}}};
}

Output getTime(AbstractFrDriver& driver)
{
    const QString time = driver.getDateTime().toString(Qt::ISODate);
    return {{time}, {{QStringLiteral("dateTime"), time}}};
}

/// A drive signs nothing before its last document.
void requireBehindLastDocument(AbstractFrDriver& driver, const QDateTime& time)
{
    const QDateTime last = driver.getFnInfo().fnStatus.lastFdDateTime;
    if (last.isValid() && time < last)
        throw Refusal(sale::ErrorKind::Clock,
            tr("time set: %1 is before the fiscal drive's last document, %2; --force sets it all the same")
                .arg(time.toString(Qt::ISODate), last.toString(Qt::ISODate)));
}

void requireNearComputer(const QDateTime& time, const QDateTime& now)
{
    if (std::abs(now.secsTo(time)) > farthestSeconds)
        throw UsageError(tr("time set: %1 is more than 5 minutes from this computer's clock, %2; "
                            "--force sets it all the same")
                             .arg(time.toString(Qt::ISODate), now.toString(Qt::ISODate)));
}

/// The computer's clock may be the one that is wrong, and nobody has said a time.
void requireNearRegister(AbstractFrDriver& driver, const QDateTime& time)
{
    const QDateTime present = driver.getDateTime();
    if (std::abs(present.secsTo(time)) > farthestSeconds)
        throw Refusal(sale::ErrorKind::Clock,
            tr("time set: this computer's clock, %1, is more than 5 minutes from the register's, %2; see which "
               "one is right; --force sets it all the same")
                .arg(time.toString(Qt::ISODate), present.toString(Qt::ISODate)));
}

struct NewTime
{
    QDateTime time;
    /// Somebody has said it: it is not this computer's.
    bool isGiven;
    bool force;
};

Output setTime(AbstractFrDriver& driver, const NewTime& newTime)
{
    const QDateTime& time = newTime.time;
    if (!newTime.force && !newTime.isGiven)
        requireNearRegister(driver, time);
    if (!newTime.force)
        requireBehindLastDocument(driver, time);
    if (!driver.setDateTime(time))
        throw Refusal(tr("the register does not take the time now"));
    const QString text = time.toString(Qt::ISODate);
    return {{text}, {{QStringLiteral("dateTime"), text}}};
}

Output checkMark(AbstractFrDriver& driver, const MarkedPosition& position)
{
    const int verdict = driver.checkMarkingCode(position, true);
    driver.clearMarkingCodes();
    const QStringList bits = sale::judgeMark(verdict).bits;
    return {{tr("result of the check (tag 2106): %1").arg(verdict), bits.join(QStringLiteral("; "))},
        {{QStringLiteral("result"), verdict}, {QStringLiteral("bits"), QJsonArray::fromStringList(bits)}}};
}

/// As that of a receipt.
void judgeForm(const Options& options, const QString& code)
{
    std::optional<receipt::MarkFault> fault = receipt::markFault(code);
    if (const auto control = receipt::textFault(code, receipt::TextKind::MarkingCode))
        fault = {receipt::Finding::Error, *control};
    if (fault)
        settleFindings(
            options, QStringLiteral("UsageError"), {{fault->severity, options.command, code, fault->reason}});
}

Task prepareTimeSet(const Options& options)
{
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    const QString given = options.arguments.value(1);
    const QDateTime time = given.isEmpty() ? now : QDateTime::fromString(given, Qt::ISODate);
    if (!time.isValid())
        throw UsageError(tr("time: \"%1\" is not a time as 2024-12-31T23:59:59").arg(given));
    if (!options.force)
        requireNearComputer(time, now);
    const NewTime newTime{time, !given.isEmpty(), options.force};
    return onRegister([newTime](AbstractFrDriver& driver) { return setTime(driver, newTime); });
}

} // namespace

Task prepareStatus(const Options& options)
{
    return onRegister([options](AbstractFrDriver& driver) { return status(driver, options); });
}

Task prepareOpenShift(const Options& options)
{
    options.requireCashierOption();
    return onDesk([options](sale::CashDesk& desk) { return openShift(desk, options); });
}

Task prepareCancel(const Options& options)
{
    // Over XML the register never holds an open document.
    requireHex(options, options.command);
    Task task = onRegister(cancel);
    task.withInit = false;
    return task;
}

Task prepareDrawer(const Options& options)
{
    const QString what = options.arguments.constFirst();
    if (what == QStringLiteral("open"))
        return onRegister(openDrawer);
    if (what == QStringLiteral("state"))
        return onRegister(drawerState);
    throw UsageError(tr("drawer: \"%1\" is neither open nor state").arg(what));
}

Task prepareTime(const Options& options)
{
    const QString what = options.arguments.constFirst();
    if (what == QStringLiteral("set"))
        return prepareTimeSet(options);
    if (what != QStringLiteral("get") || options.arguments.size() != 1)
        throw UsageError(tr("time takes get, set or set TIME"));
    if (options.force)
        throw UsageError(tr("--force goes with time set"));
    return onRegister(getTime);
}

Task prepareMark(const Options& options)
{
    MarkedPosition position;
    position.markingCode = receipt::markFromText(options.arguments.constFirst());
    if (position.markingCode.isEmpty())
        throw UsageError(tr("mark: the code is empty"));
    judgeForm(options, position.markingCode);
    return onRegister([position](AbstractFrDriver& driver) { return checkMark(driver, position); });
}

} // namespace frctl

#include "fncommands.h"

#include "abstractfrdriver.h"
#include "drivewarnings.h"
#include "errors.h"
#include "frctltr.h"
#include "receiptnames.h"
#include "shownvalue.h"
#include "witnesseddocument.h"

#include <QJsonArray>

#include <algorithm>

namespace frctl {

namespace {

using hw::fr::common::TaxSystem;
using hw::fr::common::TaxSystemType;

QJsonValue timeOrNull(const QDateTime& time)
{
    return time.isValid() ? QJsonValue(time.toString(Qt::ISODate)) : QJsonValue();
}

QJsonObject statusFields(const FnStatusInfo& status)
{
    return {{QStringLiteral("drive"), status.fnNumber},
        {QStringLiteral("lastDocument"), static_cast<qint64>(status.lastFdNumber)},
        {QStringLiteral("lastDocumentTime"), timeOrNull(status.lastFdDateTime)},
        {QStringLiteral("lifePhase"), status.lifePhase},
        {QStringLiteral("currentDocumentType"), status.currentDocType},
        {QStringLiteral("currentDocumentHasData"), status.hasDocData},
        {QStringLiteral("warningFlags"), status.warningFlags},
        {QStringLiteral("shiftOpen"), status.isShiftOpen}};
}

/// The drivers put different things into one field: HEX the number of the first document that waits, XML how
/// many do.
QJsonObject ofdFields(const FnInfo& info, bool isHex)
{
    const OfdStatusInfo& status = info.ofdStatus;
    const bool isNoneWaiting = status.firstUnsentNumber <= 0;
    const bool isFirstTold = isHex && !isNoneWaiting;
    return {{QStringLiteral("unsentCount"),
                isFirstTold ? QJsonValue() : QJsonValue(std::max(0, status.firstUnsentNumber))},
        {QStringLiteral("firstUnsentNumber"),
            isFirstTold ? QJsonValue(status.firstUnsentNumber) : QJsonValue()},
        {QStringLiteral("firstUnsentTime"),
            isFirstTold ? timeOrNull(status.firstUnsentDateTime) : QJsonValue()},
        // Over XML the driver says by it that nothing waits for too long.
        {QStringLiteral("connected"), isHex ? QJsonValue(status.isConnected != 0) : QJsonValue()},
        {QStringLiteral("waitExceeded"), (info.fnStatus.warningFlags & drivewarnings::ofdIsSilent) != 0}};
}

QStringList ofdLines(const QJsonObject& fields)
{
    QStringList lines;
    for (const char* const name :
        {"unsentCount", "firstUnsentNumber", "firstUnsentTime", "connected", "waitExceeded"})
        lines.append(
            QStringLiteral("%1: %2").arg(QLatin1String(name), shownValue(fields.value(QLatin1String(name)))));
    return lines;
}

Output ofd(AbstractFrDriver& driver, const Options& options)
{
    const FnInfo info = driver.getFnInfo();
    options.answer->drive = info.fnStatus.fnNumber;
    const QJsonObject fields = ofdFields(info, options.isHex());
    return {ofdLines(fields), fields};
}

/// What the XML driver does not know is null there.
void addHexFields(QJsonObject& json, const FnInfo& info, bool isHex)
{
    const auto add = [&](const QString& name, const QJsonValue& value) {
        json.insert(name, isHex ? value : QJsonValue());
    };
    add(QStringLiteral("availableRegistrations"), info.validityDate.availableRegistrations);
    add(QStringLiteral("registrationsMade"), info.validityDate.registrationsMade);
    add(QStringLiteral("formatVersion"), info.ffdVersion);
    add(QStringLiteral("unsentNotifications"), info.unsentNotifications);
}

Output fiscalDrive(AbstractFrDriver& driver, const Options& options)
{
    const bool isHex = options.isHex();
    const FnInfo info = driver.getFnInfo();
    options.answer->drive = info.fnStatus.fnNumber;
    const QDate validTo = info.validityDate.date;
    Output output;
    output.lines = driver.getFnStateDescription();
    output.json = statusFields(info.fnStatus);
    output.json.insert(QStringLiteral("description"), QJsonArray::fromStringList(output.lines));
    output.json.insert(QStringLiteral("ofd"), ofdFields(info, isHex));
    output.json.insert(QStringLiteral("validTo"),
        validTo.isValid() ? QJsonValue(validTo.toString(Qt::ISODate)) : QJsonValue());
    output.json.insert(QStringLiteral("version"), info.fnVersion);
    addHexFields(output.json, info, isHex);
    output.lines += ofdLines(ofdFields(info, isHex));
    return output;
}

QList<TaxSystemType> taxSystemsFromText(const QString& text)
{
    QStringList known;
    for (const receipt::NamedValue& system : receipt::names::taxSystems())
        known.append(QLatin1String(system.name));
    QList<TaxSystemType> systems;
    for (const QString& name : text.split(QLatin1Char(','))) {
        const qsizetype index = known.indexOf(name.trimmed());
        if (index < 0)
            throw UsageError(
                tr("--tax-systems: \"%1\" is none of %2").arg(name, known.join(QStringLiteral(", "))));
        systems.append(
            static_cast<TaxSystemType>(receipt::names::taxSystems()[static_cast<std::size_t>(index)].value));
    }
    return systems;
}

Output registration(sale::CashDesk& desk, const Options& options, const QList<TaxSystemType>& systems)
{
    AbstractFrDriver& driver = desk.driver();
    QStringList registered;
    const auto registerAnew = [&] {
        driver.registration(systems, systems.constFirst(), options.cashier.name, {ReasonSettingsChange}, {});
    };
    const auto askBack = [&] {
        for (const TaxSystemType system : driver.getAllTaxSystems())
            registered.append(TaxSystem::getDescription(system));
    };
    const sale::Verdict verdict = verdictOf(options,
        desk.issueReport(QStringLiteral("registration"), {{QStringLiteral("taxSystems"), options.taxSystems}},
            {.close = registerAnew, .finish = askBack}));
    options.answer->more.insert(QStringLiteral("taxSystems"), QJsonArray::fromStringList(registered));
    return {{tr("registered: ") + registered.join(QStringLiteral(", "))}, {}, ExitSuccess, verdict};
}

} // namespace

Task prepareFn(const Options& options)
{
    return onRegister([options](AbstractFrDriver& driver) { return fiscalDrive(driver, options); });
}

Task prepareOfd(const Options& options)
{
    return onRegister([options](AbstractFrDriver& driver) { return ofd(driver, options); });
}

Task prepareRegistration(const Options& options)
{
    if (options.taxSystems.isEmpty())
        throw UsageError(tr("registration needs --tax-systems"));
    const QList<TaxSystemType> systems = taxSystemsFromText(options.taxSystems);
    options.requireCashierOption();
    return onDesk([options, systems](sale::CashDesk& desk) { return registration(desk, options, systems); });
}

} // namespace frctl

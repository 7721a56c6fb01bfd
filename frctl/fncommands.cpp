#include "fncommands.h"

#include "abstractfrdriver.h"
#include "errors.h"
#include "receiptnames.h"
#include "witnesseddocument.h"

#include <QJsonArray>

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
    return {{QStringLiteral("number"), status.fnNumber},
        {QStringLiteral("lastDocument"), static_cast<qint64>(status.lastFdNumber)},
        {QStringLiteral("lastDocumentTime"), timeOrNull(status.lastFdDateTime)},
        {QStringLiteral("lifePhase"), status.lifePhase},
        {QStringLiteral("currentDocumentType"), status.currentDocType},
        {QStringLiteral("currentDocumentHasData"), status.hasDocData},
        {QStringLiteral("warningFlags"), status.warningFlags},
        {QStringLiteral("shiftOpen"), status.isShiftOpen}};
}

QJsonObject exchangeFields(const OfdStatusInfo& status, bool isHex)
{
    // The drivers put different things into one field.
    const QString number = isHex ? QStringLiteral("firstUnsentDocument") : QStringLiteral("queueLength");
    return {{QStringLiteral("connected"), status.isConnected != 0},
        {QStringLiteral("firstUnsentTime"), timeOrNull(status.firstUnsentDateTime)},
        {number, status.firstUnsentNumber}};
}

Output fiscalDrive(AbstractFrDriver& driver, bool isHex)
{
    const FnInfo info = driver.getFnInfo();
    const QDate validTo = info.validityDate.date;
    Output output;
    output.lines = driver.getFnStateDescription();
    output.lines.append(isHex
            ? info.ofdStatus.toString()
            : QStringLiteral("documents that wait for the OFD: %1").arg(info.ofdStatus.firstUnsentNumber));
    output.json = statusFields(info.fnStatus);
    output.json.insert(QStringLiteral("ofd"), exchangeFields(info.ofdStatus, isHex));
    output.json.insert(QStringLiteral("validTo"),
        validTo.isValid() ? QJsonValue(validTo.toString(Qt::ISODate)) : QJsonValue());
    output.json.insert(QStringLiteral("version"), info.fnVersion);
    if (isHex) {
        // The XML driver does not know them.
        output.json.insert(
            QStringLiteral("availableRegistrations"), info.validityDate.availableRegistrations);
        output.json.insert(QStringLiteral("registrationsMade"), info.validityDate.registrationsMade);
        output.json.insert(QStringLiteral("formatVersion"), info.ffdVersion);
        output.json.insert(QStringLiteral("unsentNotifications"), info.unsentNotifications);
    }
    output.json.insert(QStringLiteral("description"), QJsonArray::fromStringList(output.lines));
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
            throw UsageError(QStringLiteral("--tax-systems: \"%1\" is none of %2")
                                 .arg(name, known.join(QStringLiteral(", "))));
        systems.append(
            static_cast<TaxSystemType>(receipt::names::taxSystems()[static_cast<std::size_t>(index)].value));
    }
    return systems;
}

Output registration(AbstractFrDriver& driver, const Options& options, const QList<TaxSystemType>& systems)
{
    QStringList registered;
    const auto registerAnew = [&] {
        driver.registration(systems, systems.constFirst(), options.cashier.name, {ReasonSettingsChange}, {});
    };
    const auto askBack = [&] {
        for (const TaxSystemType system : driver.getAllTaxSystems())
            registered.append(TaxSystem::getDescription(system));
    };
    const sale::Verdict verdict = issueNumbered(driver, options,
        {QStringLiteral("registration"), {{QStringLiteral("taxSystems"), options.taxSystems}}},
        sale::DocumentKind::Report, registerAnew, askBack);
    options.answer->more.insert(QStringLiteral("taxSystems"), QJsonArray::fromStringList(registered));
    return {
        {QStringLiteral("registered: ") + registered.join(QStringLiteral(", "))}, {}, ExitSuccess, verdict};
}

} // namespace

Task prepareFn(const Options& options)
{
    const bool isHex = options.isHex();
    return onRegister([isHex](AbstractFrDriver& driver) { return fiscalDrive(driver, isHex); });
}

Task prepareRegistration(const Options& options)
{
    if (options.taxSystems.isEmpty())
        throw UsageError(QStringLiteral("registration needs --tax-systems"));
    const QList<TaxSystemType> systems = taxSystemsFromText(options.taxSystems);
    options.requireCashier();
    return documentOnRegister(
        [options, systems](AbstractFrDriver& driver) { return registration(driver, options, systems); });
}

} // namespace frctl

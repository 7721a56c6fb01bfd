// Requisites of a receipt, registration, tax systems, fiscal drive.

#include "frspf.h"

#include <drivertexts.h>
#include <fdrequisite.h>
#include <fninfo.h>

#include <QDateTime>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

RequestParams customerBlock(const FdRequisite& requisite)
{
    const FdRequisiteMap fields = requisite.toMap();
    QList<RequestParams> params;
    for (const EFrDriver::RequisiteTypes tag : {EFrDriver::CustomerName, EFrDriver::CustomerInn})
        params.append({ParamType::Text, tag, fields.value(tag).getSourceData()});
    return {ParamType::Structure, EFrDriver::CustomerBlock, params};
}

QDateTime parsedTime(const QString& text)
{
    return QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

quint8 warningFlags(const FnStatus& status)
{
    const auto bits = [](int warning, unsigned weight) { return static_cast<unsigned>(warning) * weight; };
    return static_cast<quint8>(bits(status.needChange, 1) | bits(status.endingResource, 2)
        | bits(status.overflow, 4) | bits(status.ofdWaitExceeded, 8));
}

FnStatusInfo fnStatusInfo(const FnStatus& status)
{
    FnStatusInfo info;
    info.lastFdNumber = static_cast<quint32>(status.lastDocNumber);
    info.lifePhase = static_cast<quint8>(status.lifePhase);
    info.currentDocType = static_cast<quint8>(status.currentDocType);
    info.warningFlags = warningFlags(status);
    info.hasDocData = status.currentDocData != 0;
    info.isShiftOpen = status.isShiftOpen;
    info.lastFdDateTime = parsedTime(status.lastDocDateTime);
    info.fnNumber = status.fnNumber;
    return info;
}

} // namespace

void FrSpf::setRequisite(const FdRequisite& requisite)
{
    BasicFrDriver::setRequisite(requisite);
    const EFrDriver::RequisiteTypes tag = requisite.getTag();
    switch (tag) {
    case EFrDriver::CustomerAddress:
    case EFrDriver::SupplierPhone:
    case EFrDriver::SettlementPlace:
    case EFrDriver::AdditionalReceiptRequisite:
    case EFrDriver::CashierInn:
        requisites.append({ParamType::Text, tag, requisite.getSourceData()});
        break;
    case EFrDriver::CustomerBlock:
        requisites.append(customerBlock(requisite));
        break;
    case EFrDriver::TaxSystem:
        // It is meant to stay for all later receipts until another one comes.
        taxSystem = requisite.getSourceData().toInt();
        logger->debug(QStringLiteral("Установка системы налогообложения для чека: %1")
                          .arg(hw::fr::common::TaxSystem::getDescription(
                              static_cast<hw::fr::common::TaxSystemType>(taxSystem))));
        break;
    default:
        logger->warn(QStringLiteral("Тип реквизита не поддерживается"));
        break;
    }
}

void FrSpf::registration(const QList<hw::fr::common::TaxSystemType>& taxSystems,
    hw::fr::common::TaxSystemType, const QString&, const QList<RegistrationReason>&,
    const QMap<QString, QVariant>&)
{
    logger->info(QStringLiteral("Регистрация/перерегистрация ФР"));
    isPortReady();
    withLoggedFailure([this, &taxSystems] {
        if (command->getShiftStatus().opened)
            throw FrCommandException(QStringLiteral("Регистрация невозможна - смена открыта в ФР"));
        command->registration(taxSystems);
    });
}

QList<hw::fr::common::TaxSystemType> FrSpf::getAllTaxSystems() const
{
    logger->info(QStringLiteral("Получение применяемой системы налогообложения"));
    return command->getAllTaxSystems();
}

hw::fr::common::TaxSystemType FrSpf::getDefaultTaxSystem() const
{
    const QList<hw::fr::common::TaxSystemType> registered = command->getAllTaxSystems();
    // A receipt without tax system must not go out.
    if (registered.isEmpty())
        throw FrCommandException(drivertexts::badAnswer());
    return registered.constFirst();
}

QString FrSpf::getFfdVersion()
{
    logger->info(QStringLiteral("Получение версии ФФД"));
    return command->getFFDVersion();
}

FnInfo FrSpf::getFnInfo()
{
    return withLoggedFailure([this] {
        logger->info(QStringLiteral("Получение данных о состоянии фискального накопителя"));
        isPortReady();
        const SpfStatus status = command->getStatus();
        FnInfo info;
        info.validityDate.date = parsedTime(status.fn.expirationDate).date();
        info.fnStatus = fnStatusInfo(status.fn);
        info.ofdStatus.isConnected = status.fn.ofdWaitExceeded == 0 ? 1 : 0;
        // The length of the queue stands where HEX has the number of the first document: it is meant.
        info.ofdStatus.firstUnsentNumber = status.ofd.queueLength;
        info.fnVersion = status.fn.fwVersion;
        logDone();
        return info;
    });
}

} // namespace spfxml

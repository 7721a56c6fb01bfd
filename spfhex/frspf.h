#pragma once

#include "abstractregisterparameters.h"
#include "basicfrdriver.h"

#include <QMap>
#include <QSharedPointer>
#include <QString>

class FrSpfSettings;

namespace spfhex {

class Command;

namespace utils {
class TableParameter;
}

/// The driver of the HEX protocol. The device holds the open document: each step of a receipt goes to it as
/// it comes, and whether the step fits is the device's judgement.
///
/// Requisites of a receipt never reach the device on this protocol, and the objects of the closing operations
/// are always empty. Cancelling needs the device, too: a failed receipt stays open until checkCancel or init.
class FrSpf : public BasicFrDriver, public hw::AbstractRegisterParameters
{
public:
    FrSpf(AbstractSerialDriver* serialDriver, FrSpfSettings* driverSettings);
    ~FrSpf() override;

    void portOpen() override;
    void portClose() override;
    void init() override;
    bool setDefaults() override;
    QStringList getDeviceStateDescription() override;
    QStringList getFnStateDescription() override;
    void printFnDocument(long documentNumber) override;
    QStringList getCountersDescription() override;
    QStringList getParametersDescription() override;
    void setFont(const QList<EFrDriver::FontTypes>& fonts) override;
    void resetFont() override;
    void drawerOpen() override;
    void checkOpen(const FiscalDocument& document) override;
    QJsonObject checkClose(const FiscalDocument& document) override;
    void checkCancel() override;
    void checkWaitForPrint() override;
    void checkAddPosition(const FrPosition& position) override;
    void checkTotal() override;
    void checkPay(const FrPayment& payment) override;
    void checkPrint(const QList<QString>& lines) override;
    void moneyCheckOpen(hw::fr::CheckType type, const QString& text) override;
    void moneyCheckPrint(const QList<QString>& lines) override;
    QJsonObject moneyCheckClose(double sum) override;
    void textDocOpen(hw::fr::CheckType type) override;
    void textDocPrint(const QList<QString>& lines) override;
    void textDocClose() override;
    void barcodePrint(const Barcode& barcode) override;
    QJsonObject zReport() override;
    QJsonObject xReport() override;
    MoneyCounters getMoneyCounters(hw::fr::CheckType type) override;
    QMap<int, double> getCheckCounters(hw::fr::CheckType type) override;
    int getLastShiftNumber() override;
    int getDefaultPaymentType() override;
    bool setDateTime(const QDateTime& dateTime) override;
    QDateTime getDateTime() override;
    bool setCliche(const QList<QString>& lines) override;
    bool setTail(const QList<QString>& lines) override;
    KkmRegisterBeg getKkmRegisterBeg() override;
    KkmRegisterEnd getKkmRegisterEnd() override;
    QMap<EFrDriver::FontTypes, unsigned> getBandWidthFonts() override;
    QString getInn() override;
    bool setGraphicCliche(const QString& fileName) override;
    void clearGraphicCliche() override;
    QString getFrDocNum() override;
    void cashierLogin(const FrUser& user) override;
    void openShift() override;
    bool isShiftOpen() override;
    void accountingReport() override;
    OfdStatusInfo getOfdStatusInfo() override;
    FnInfo getFnInfo() override;
    QString getFfdVersion() override;
    hw::fr::common::TaxSystemType getDefaultTaxSystem() const override;
    QList<hw::fr::common::TaxSystemType> getAllTaxSystems() const override;
    void registration(const QList<hw::fr::common::TaxSystemType>& taxSystems,
        hw::fr::common::TaxSystemType defaultTaxSystem, const QString& name,
        const QList<RegistrationReason>& reasons, const QMap<QString, QVariant>& parameters) override;
    int checkMarkingCode(const MarkedPosition& position, bool recheck) override;
    void clearMarkingCodes() override;
    bool isCashDrawerOpened() const override;
    bool setParams(const QList<FrParameter>& parameters) override;

protected:
    void setConnection() override;
    /// Reads the device's identity.
    virtual void fillDeviceInfo();
    virtual void closeCheckOrTextDocument(const QString& message) const;
    virtual void printLines(const QList<QString>& lines) const;
    void openDocument(hw::fr::CheckType type) const;

    QSharedPointer<Command> command;
    QString cashierName;
    QString cashierInn;
    /// Is read but never filled, and meant so: a verdict goes to the host and is not kept here.
    QMap<QString, int> checkedMarkingCodes;
    bool agentDataBound = false;

public:
    // Behind the operations of the driver, whose places in the table of virtual ones stay as they are.
    QList<hw::fr::RegisterParameter> knownParameters() const override;
    QList<hw::fr::RegisterParameter> readParameters(const QStringList& names) override;
    std::optional<FrParameter> assignment(const QString& name, const QString& value) const override;

private:
    bool programLines(unsigned short parameter, const QString& message, const QList<QString>& lines);
    QStringList countersLines(hw::fr::CheckType type);
    QStringList parameterLines(int parameterNumber, const utils::TableParameter& parameter, int width) const;
};

} // namespace spfhex

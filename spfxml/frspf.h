#pragma once

#include "requestparams.h"
#include "spffrcommand.h"

#include <abstractregisterparameters.h>
#include <basicfrdriver.h>
#include <checktype.h>
#include <exceptions.h>
#include <frposition.h>
#include <frprintdata.h>
#include <log4qt/logger.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>

class FrSpfSettings;

namespace spfxml {

/// The driver of the XML protocol. What only gathers a document or keeps a setting does no exchange. The
/// others call the command object, most of them behind a line in the log and a check that the port is ready;
/// without that check a closed port fails in the exchange. The state of the shift is asked anew each time.
///
/// A document is gathered here between its opening and its closing call and leaves as one request. Failures
/// of the exchange pass through as SpfFrCommand::requestData throws them.
class FrSpf : public BasicFrDriver, public hw::AbstractRegisterParameters
{
public:
    FrSpf(AbstractSerialDriver* serialDriver, FrSpfSettings* driverSettings);
    ~FrSpf() override;

    /// Throws FrNoConnectionException without a transport and when the port cannot be opened.
    void portOpen() override;
    void portClose() override;
    /// Asks the device who it is, unless a connection has done so, and reads the advertising text.
    void init() override;
    /// Makes the device give the totals of the fiscal drive with its counters.
    bool setDefaults() override;
    QStringList getDeviceStateDescription() override;
    QStringList getFnStateDescription() override;
    void printLastFnDocument() override;
    void printFnDocument(long documentNumber) override;
    QStringList getCountersDescription() override;
    QStringList getParametersDescription() override;
    void drawerOpen() override;
    /// Closes the shift; sends nothing when it is closed. The object is empty.
    QJsonObject zReport() override;
    QJsonObject xReport() override;
    /// Zeros when the shift is closed.
    MoneyCounters getMoneyCounters(hw::fr::CheckType type) override;
    /// Empty when the shift is closed; throws FrCommandException for other types than sale and return.
    QMap<int, double> getCheckCounters(hw::fr::CheckType type) override;
    /// False when the shift is open: the register takes a new time in a closed shift only.
    bool setDateTime(const QDateTime& dateTime) override;
    QDateTime getDateTime() override;
    /// At most 4 lines; the others are dropped.
    bool setCliche(const QList<QString>& lines) override;
    KkmRegisterBeg getKkmRegisterBeg() override;
    KkmRegisterEnd getKkmRegisterEnd() override;
    QMap<EFrDriver::FontTypes, unsigned> getBandWidthFonts() override;
    /// Scales the picture to what the device takes.
    bool setGraphicCliche(const QString& fileName) override;
    /// Keeps the cashier for the documents that follow; nothing is sent.
    void cashierLogin(const FrUser& user) override;
    /// Opens the shift; sends nothing when it is open.
    void openShift() override;
    /// Throws FrCommandException when the shift is closed.
    void accountingReport() override;
    bool isCashDrawerOpened() const override;

    /// Values are paths: "section.subsection.parameter.value".
    bool setParams(const QList<FrParameter>& parameters) override;

    /// Opens the shift when it is closed and drops what was gathered before. Requisites of the receipt must
    /// be set after it. The tax system and the checked marking codes outlive it.
    void checkOpen(const FiscalDocument& document) override;
    void checkAddPosition(const FrPosition& position) override;
    /// Payments of one kind add up.
    void checkPay(const FrPayment& payment) override;
    void checkPrint(const QList<QString>& lines) override;
    /// Asks for the tax system when no requisite has named one, then sends the receipt, once. The object is
    /// empty: nothing is read from the answer. What was gathered stays until the next checkOpen, so another
    /// call sends it again, with the tax system a second time.
    QJsonObject checkClose(const FiscalDocument& document) override;
    void moneyCheckOpen(hw::fr::CheckType type, const QString& text) override;
    void moneyCheckPrint(const QList<QString>& lines) override;
    QJsonObject moneyCheckClose(double sum) override;
    void textDocOpen(hw::fr::CheckType type) override;
    void textDocPrint(const QList<QString>& lines) override;
    void textDocClose() override;
    /// EAN-13 and QR; any other barcode is left out with an error in the log.
    void barcodePrint(const Barcode& barcode) override;
    void setFont(const QList<EFrDriver::FontTypes>& fonts) override;
    void resetFont() override;

    /// Answers from memory for a code that was checked before, unless a recheck is wanted; otherwise it opens
    /// the shift when that is closed. A closed receipt and clearMarkingCodes empty the memory, a new or
    /// failed receipt does not.
    int checkMarkingCode(const MarkedPosition& position, bool recheck) override;
    void clearMarkingCodes() override;

    /// Keeps a requisite for the open receipt; one that the register does not take is left out with a warning
    /// in the log. The tax system stays for later receipts too.
    void setRequisite(const FdRequisite& requisite) override;
    /// Of what is given only the tax systems are used; the name of the cashier who is logged in and a reason
    /// of the driver's own go with them. Throws FrCommandException when the shift is open.
    void registration(const QList<hw::fr::common::TaxSystemType>& taxSystems,
        hw::fr::common::TaxSystemType defaultTaxSystem, const QString& cashierName,
        const QList<RegistrationReason>& reasons, const QMap<QString, QVariant>& parameters) override;
    QList<hw::fr::common::TaxSystemType> getAllTaxSystems() const override;
    /// The first registered one, asked from the register each time. Throws FrCommandException when none is.
    hw::fr::common::TaxSystemType getDefaultTaxSystem() const override;
    QString getFfdVersion() override;
    FnInfo getFnInfo() override;

    /// Asks the device who it is: the exchange by which BasicFrDriver::connect knows that it is there.
    void setConnection() override;

    /// Reads the status and fills the device's identity from it.
    virtual void setDeviceInfo();
    /// Hands the advertising text of the host's settings to the command object, without the empty lines at
    /// its end.
    void loadTail();
    /// The requisite under which the device counts receipts of that type.
    static EFrDriver::RequisiteTypes getCountersTypeRequisite(hw::fr::CheckType type);

protected:
    /// Runs the operation and logs its failure, a failed command unless told otherwise, on its way to the
    /// host.
    template <typename Exception = FrCommandException, typename Operation>
    auto withLoggedFailure(const Operation& operation) const
    {
        try {
            return operation();
        } catch (const Exception& exception) {
            logger->error(exception.tr().ru());
            throw;
        }
    }
    /// The same, but the host gets a plain FrCommandException with the text, whatever kind it was.
    template <typename Operation>
    auto withCopiedFailure(const Operation& operation) const
    {
        try {
            return operation();
        } catch (const FrCommandException& exception) {
            const QString text = exception.tr().ru();
            logger->error(text);
            throw FrCommandException(text);
        }
    }

    QSharedPointer<SpfFrCommand> command;
    QString cashierDisplayName;
    hw::fr::CheckType moneyCheckType = hw::fr::CheckNone;
    /// Roubles by payment kind.
    QMap<int, double> payments;
    QList<FrPosition> positions;
    /// Of all three kinds of documents.
    QList<FrPrintData> printLines;
    /// As they go out.
    QList<RequestParams> requisites;
    /// Verdicts by marking code.
    QMap<QString, int> checkedMarkingCodes;
    /// 0 while no requisite has named one.
    qint32 taxSystem = 0;

public:
    // Behind the operations of the driver, whose places in the table of virtual ones stay as they are.
    QList<hw::fr::RegisterParameter> knownParameters() const override;
    QList<hw::fr::RegisterParameter> readParameters(const QStringList& names) override;
    std::optional<FrParameter> assignment(const QString& name, const QString& value) const override;

private:
    bool isShiftClosedForCounters();
    void writeHeader(const SpfFrCommand::ParameterMap& values);
};

} // namespace spfxml

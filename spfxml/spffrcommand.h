#pragma once

#include "kktcounters.h"
#include "requestparams.h"
#include "shiftstatus.h"
#include "spfstatus.h"

#include <checkprintmode.h>
#include <checktype.h>
#include <excisemarktype.h>
#include <taxsystem.h>

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

class AbstractSerialDriver;
class FrPosition;
class QDomDocument;
class FrPrintData;
struct MarkedPosition;

namespace Log4Qt {
class Logger;
}

namespace spfxml {

/// The commands of the XML protocol: builds the request of each, does the exchange and takes what is wanted
/// from the answer. Every operation throws what requestData throws.
///
/// The wire has no framing: a request is one text, an answer ends with its closing root tag and holds the id
/// of its request. Nothing of an exchange is kept, so an answer that comes too late is known by its foreign
/// id and dropped by the next command.
class SpfFrCommand
{
public:
    /// The register's numbers of the commands.
    enum class ECommandCode : int {
        GetState = 2,
        OpenShift = 4,
        CloseShift = 6,
        CloseReceipt = 8,
        AccountingReport = 12,
        PrintFnDocument = 16,
        Registration = 18,
        GetDateTime = 22,
        SetDateTime = 24,
        PrintLastFnDocument = 28,
        NonFiscalDocument = 30,
        OpenDrawer = 36,
        MoneyOperation = 38,
        GetCounters = 40,
        GetShiftStatus = 44,
        PrintXReport = 46,
        GetTaxSystems = 50,
        GetDrawerStatus = 52,
        GetParameters = 54,
        SetParameters = 56,
        GetDeviceInformation = 58,
        CheckMarkingCode = 76,
        ClearMarkingCodes = 90
    };

    /// Values of settings by section, subsection and parameter.
    using ParameterMap = QMap<QString, QMap<QString, QMap<QString, QString>>>;

    /// Owns neither of the two. The protocol version goes into each request.
    SpfFrCommand(
        AbstractSerialDriver* serialDriver, const Log4Qt::Logger* driverLogger, const QString& version);
    SpfFrCommand(const SpfFrCommand&) = delete;
    SpfFrCommand& operator=(const SpfFrCommand&) = delete;
    virtual ~SpfFrCommand();

    /// The clock of the register; invalid when its answer cannot be read as a time.
    virtual QDateTime getDateTime() const;
    virtual void setDateTime(const QDateTime& dateTime) const;
    /// Prints the report of the shift without closing it.
    virtual void printXReport() const;
    virtual ShiftStatus getShiftStatus() const;
    /// Two exchanges: the device information, then the state.
    virtual SpfStatus getStatus() const;
    /// True when the drawer is open; false also when the register does not say.
    virtual bool getCashDrawerStatus() const;
    virtual void openDrawer() const;
    /// The settings as the device gives them; all of the catalogue is asked for.
    virtual RequestParams getParameters() const;
    /// Writes settings in one exchange. Throws FrCommandException for a name that the catalogue lacks, before
    /// anything is sent.
    virtual void setParameters(const ParameterMap& values) const;
    virtual void shiftOpen() const;
    virtual void shiftClose() const;
    /// Figures of sales (requisite 1129) or returns (1130).
    virtual KktCounters getCheckCounters(EFrDriver::RequisiteTypes requisite) const;
    /// Cash put in or taken out in the shift.
    virtual MoneyCounters getMoneyCounters(hw::fr::CheckType type) const;
    virtual double getCashInDrawer() const;
    /// Registers and prints a receipt in one request, which is sent once: after a failure it may or may not
    /// be in the fiscal drive. Sums in roubles by payment kind; kinds above 4 are left out. The change is
    /// always taken from the cash. The requisites go out as they are.
    virtual void checkClose(hw::fr::CheckType type, const QMap<int, double>& payments,
        const QList<FrPosition>& positions, const QList<FrPrintData>& printData,
        const QList<RequestParams>& requisites) const;
    /// Takes cash out for that type of document, puts it in for any other.
    virtual void moneyOperation(
        hw::fr::CheckType type, double sum, const QList<FrPrintData>& printData) const;
    virtual void nonFiscalDocument(const QList<FrPrintData>& printData) const;
    /// The registered tax systems in ascending order of their bits; throws FrCommandException when the
    /// register does not name them.
    virtual QList<hw::fr::common::TaxSystemType> getAllTaxSystems() const;
    /// Always "1.2"; the device is not asked.
    virtual QString getFFDVersion() const;
    /// The register's verdict on a marking code (tag 2106); throws FrCommandException when it gives none.
    virtual int checkMarkingCode(const MarkedPosition& position);
    /// Prints the report on the current state of settlements.
    virtual void accountingReport() const;
    /// Prints the document of that number from the fiscal drive.
    virtual void printFNDocument(unsigned int number) const;
    virtual void printLastFNDocument() const;
    /// Drops the codes that the register has checked so far.
    virtual void clearMarkingCodes() const;
    /// Changes the registration. The register gets the cashier's name (tag 1021), reason 8 (tag 1205) and the
    /// tax systems.
    virtual void registration(const QList<hw::fr::common::TaxSystemType>& taxSystems) const;
    /// Advertising text behind each receipt; kept here, nothing is sent.
    virtual void setTail(const QList<QString>& lines);

    /// The whole exchange. Sends the request up to that many times, always the very same bytes, while the
    /// device stays silent for 15 seconds, and gives the document inside the answer, empty when there is
    /// none.
    ///
    /// Throws FrCommandException when no answer came, it cannot be read, or the register reports an error;
    /// FrWaitForPaperException when the paper is out; ComDriverException when the port fails.
    virtual QDomDocument requestData(ECommandCode code, const RequestParams& params, int attempts) const;
    /// A new request id.
    virtual QByteArray getUuid() const;

    /// Name and tax number (INN) that go out with what the cashier does.
    void setCashierInfo(const QString& name, const QString& taxNumber);
    /// How the following receipts are to be printed.
    void setPrintMode(CheckPrintMode mode);

    /// The fields of one line of a receipt.
    QList<RequestParams> getPositionRequisites(const FrPosition& position, hw::fr::CheckType type) const;
    /// The block with the code of marked goods; always one node.
    QList<RequestParams> getNomenclatureCodeRequisite(const QString& code, ExciseMarkType type) const;
    /// Three nodes, or none for a position without supplier.
    QList<RequestParams> getSupplierRequisites(const FrPosition& position) const;
    /// One node, or none for a position without data of the payment agent.
    QList<RequestParams> getAgentRequisites(const FrPosition& position) const;
    /// One node, or none for a position without industry requisite.
    QList<RequestParams> getIndustryRequisites(const FrPosition& position) const;
    /// Lines to print, with the register's sequences for fonts and barcodes in them.
    static QList<QString> getTextLines(const QList<FrPrintData>& printData);

    /// The request as it goes over the wire.
    QByteArray createCommand(
        const QByteArray& requestId, ECommandCode code, const RequestParams& params) const;
    /// True when the data hold the end of an answer and the id.
    bool isValidPackage(const QByteArray& data, const QByteArray& requestId) const;
    /// One line with the whole document; only when the trace level is on.
    void logTraceData(const QByteArray& data, bool sending) const;
    /// Returns when the answer reports success, throws what it reports otherwise.
    void checkForErrors(const QDomDocument& document) const;
    /// The document inside the answer, empty when there is none.
    QDomDocument getResponseData(const QDomDocument& document) const;

protected:
    /// A receipt is the one command that is never repeated; all others may be.
    static constexpr int repeatableAttempts = 5;

    AbstractSerialDriver* const serial;
    const Log4Qt::Logger* const logger;
    QString cashierName;
    QString cashierInn;
    QString tailText;
    CheckPrintMode printMode = CheckPrintNormal;

private:
    const QString m_protocolVersion;

    /// Logs the field of an answer that is not as it should be and throws FrCommandException.
    [[noreturn]] void refuseParameter(const QString& tag, const QString& text) const;
    QByteArray exchange(const QByteArray& request, const QByteArray& requestId, int attempts) const;
    QByteArray receiveAnswer(const QByteArray& requestId) const;
    QDomDocument parseAnswer(const QByteArray& answer) const;
    RequestParams cashierParam() const;
    QList<RequestParams> cashierParams() const;
    QDomDocument requestCounters(const QString& message) const;
    QList<RequestParams> receiptFields(
        hw::fr::CheckType type, const QMap<int, double>& payments, double change) const;
    QList<RequestParams> markingRequisites(const FrPosition& position, hw::fr::CheckType type) const;
    /// The value of a field that the answer must hold.
    QVariant answerValue(const QDomDocument& answer, EFrDriver::RequisiteTypes tag) const;
    void sendStructure(ECommandCode code, const QString& name, const QList<RequestParams>& params) const;
};

} // namespace spfxml

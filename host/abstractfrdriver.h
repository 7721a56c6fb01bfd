#pragma once

#include "barcode.h"
#include "checktype.h"
#include "deviceinfo.h"
#include "driveroptions.h"
#include "efrdriver.h"
#include "fdrequisite.h"
#include "fiscaldocument.h"
#include "fiscalinfo.h"
#include "fndocument.h"
#include "fninfo.h"
#include "font.h"
#include "frhost_export.h"
#include "frparameter.h"
#include "frpayment.h"
#include "frposition.h"
#include "frprintdata.h"
#include "fruser.h"
#include "kkmregisterbeg.h"
#include "kkmregisterend.h"
#include "logo.h"
#include "markedposition.h"
#include "moneycounters.h"
#include "ofdstatusinfo.h"
#include "registrationreason.h"
#include "taxsystem.h"
#include "tr.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <iosfwd>

class BasicFrSettings;

/// The contract between a host and the driver of a fiscal register.
///
/// Order of work: portOpen, connect, init, then documents, shifts and queries in any order that the register
/// accepts, portClose at the end. After a FrNoConnectionException the host calls connect again. One thread at
/// a time; every call blocks until its exchange with the device has ended.
///
/// A failed operation throws a child of BasicException whose tr().ru() is the message for the cashier.
/// Results of type bool are refusals, not failures. An operation that a device cannot do logs and answers
/// empty; it never throws. Sums are roubles.
class FRHOST_EXPORT AbstractFrDriver
{
public:
    virtual ~AbstractFrDriver();

    /// Opens the port with the driver's line settings. Throws FrNoConnectionException.
    virtual void portOpen() = 0;
    /// Closes the port.
    virtual void portClose() = 0;
    /// Establishes the connection: the first time, and again after each FrNoConnectionException.
    virtual void connect() = 0;
    /// First exchange after a connection. Cleans up a document that was left open.
    virtual void init() = 0;
    /// Technological zeroing of the device.
    virtual void reinitialize() = 0;
    virtual void reboot(EFrDriver::RebootMode mode) = 0;
    /// Writes the driver's default device parameters; false when the device refused one.
    virtual bool setDefaults() = 0;
    /// Lines that describe the device for a service screen.
    virtual QStringList getDeviceStateDescription() = 0;
    /// Lines that describe the fiscal drive.
    virtual QStringList getFnStateDescription() = 0;
    /// Reprints the last document of the fiscal drive.
    virtual void printLastFnDocument() = 0;
    /// Prints the fiscal drive's document of that number.
    virtual void printFnDocument(long number) = 0;
    /// Reads the fiscal drive's document of that number.
    virtual FnDocument getFnDocument(unsigned long long number) = 0;
    /// Lines with the device's counters.
    virtual QStringList getCountersDescription() = 0;
    /// Lines with the device's parameters.
    virtual QStringList getParametersDescription() = 0;
    /// Writes a dump of the device to the stream and returns it.
    virtual std::ostream& getDump(int first, int last, std::ostream& stream) = 0;
    virtual DeviceInfo getDeviceInfo() = 0;
    virtual BasicFrSettings* getDeviceSettings() const = 0;
    /// Font for the lines that follow; drivers take the first of the list, which must not be empty.
    virtual void setFont(const QList<EFrDriver::FontTypes>& fonts) = 0;
    /// Line spacing; -1 leaves it unchanged.
    virtual void setLineSpacing(int spacing) = 0;
    /// Back to the normal font.
    virtual void resetFont() = 0;
    virtual bool loadFont(const Font& font) = 0;
    virtual void beep() = 0;
    virtual void drawerOpen() = 0;
    /// Opens a receipt: sale or return of a sale.
    virtual void checkOpen(const FiscalDocument& document) = 0;
    /// Closes a receipt. The object carries the document's fiscal data where the device gives them.
    virtual QJsonObject checkClose(const FiscalDocument& document) = 0;
    /// Cancels the open receipt.
    virtual void checkCancel() = 0;
    /// Waits until the receipt is printed.
    virtual void checkWaitForPrint() = 0;
    virtual void cutAfterChecksClosing() = 0;
    virtual void cutPaper() = 0;
    /// Adds a position to the open receipt.
    virtual void checkAddPosition(const FrPosition& position) = 0;
    /// Cancels a position of the open receipt.
    virtual void checkStornoPosition(const FrPosition& position) = 0;
    /// Subtotal of the open receipt.
    virtual void checkTotal() = 0;
    /// Adds a payment to the open receipt.
    virtual void checkPay(const FrPayment& payment) = 0;
    /// Text lines within the open receipt.
    virtual void checkPrint(const QList<QString>& lines) = 0;
    /// Opens a cash-in or cash-out document.
    virtual void moneyCheckOpen(hw::fr::CheckType type, const QString& text) = 0;
    virtual void moneyCheckPrint(const QList<QString>& lines) = 0;
    /// Closes it with the sum.
    virtual QJsonObject moneyCheckClose(double sum) = 0;
    virtual void moneyCheckWaitForPrint() = 0;
    /// Opens a document with no fiscal meaning.
    virtual void textDocOpen(hw::fr::CheckType type) = 0;
    virtual void textDocPrint(const QList<QString>& lines) = 0;
    virtual void textDocClose() = 0;
    /// Prints a barcode in the current document.
    virtual void barcodePrint(const Barcode& barcode) = 0;
    virtual void vatReport() = 0;
    /// Closes the shift and prints its report.
    virtual QJsonObject zReport() = 0;
    /// Prints the report without closing the shift.
    virtual QJsonObject xReport() = 0;
    /// Report by departments.
    virtual QJsonObject xReportDept() = 0;
    /// Count and sum of a document type.
    virtual MoneyCounters getMoneyCounters(hw::fr::CheckType type) = 0;
    /// Sums of a document type by payment kind.
    virtual QMap<int, double> getCheckCounters(hw::fr::CheckType type) = 0;
    virtual QMap<int, double> getPositionCounters(hw::fr::CheckType type) const = 0;
    virtual int getLastShiftNumber() = 0;
    virtual int getDefaultPaymentType() = 0;
    virtual QString getSendLinesTemplate() const = 0;
    virtual void fpReportInDatesRange(const QString& password, long from, long to, bool full) = 0;
    virtual void fpReportInShiftsRange(const QString& password, long from, long to, bool full) = 0;
    /// Fiscalisation of devices without a fiscal drive.
    virtual void fiscalization(const QString& oldPassword, const QString& registrationNumber,
        const QString& inn, const QString& newPassword)
        = 0;
    /// Sets the device's clock; false when it may not be set now.
    virtual bool setDateTime(const QDateTime& dateTime) = 0;
    virtual QDateTime getDateTime() = 0;
    /// Allowed difference between the clocks in hours; -1 means none.
    virtual int getHoursDifferenceLimit() const = 0;
    /// Programs the header of the receipts; false when the device refused it.
    virtual bool setCliche(const QList<QString>& lines) = 0;
    /// Programs the advertising text at the end of the receipts; false when the device refused it.
    virtual bool setTail(const QList<QString>& lines) = 0;
    virtual void setDefaultBaudrate() = 0;
    virtual QString getFrModeString() const = 0;
    virtual void printLogo(const Logo& logo) = 0;
    /// Checks that the device answers.
    virtual void ping() = 0;
    virtual KkmRegisterBeg getKkmRegisterBeg() = 0;
    virtual KkmRegisterEnd getKkmRegisterEnd() = 0;
    /// Characters on a line by font.
    virtual QMap<EFrDriver::FontTypes, unsigned> getBandWidthFonts() = 0;
    /// Tax number of the owner.
    virtual QString getInn() = 0;
    /// Programs the picture of that file as header; false when it cannot be loaded or the device refused it.
    virtual bool setGraphicCliche(const QString& fileName) = 0;
    virtual void clearGraphicCliche() = 0;
    virtual QString getFrDocNum() = 0;
    virtual QString getFrDocNumAfterClosing() = 0;
    virtual QString getFrDocCopy(long number) = 0;
    /// Offset between the numbers of host and device documents; -1 when there is none.
    virtual int getFrDocOffset() = 0;
    /// The four steps in which a closed receipt is cancelled.
    virtual void cancelCheckOpen(const FiscalDocument& document) = 0;
    virtual void cancelCheckTotal(const FiscalDocument& document) = 0;
    virtual void cancelCheckPay(const FiscalDocument& document) = 0;
    virtual QJsonObject cancelCheckClose(const FiscalDocument& document) = 0;
    /// Sets the cashier for the documents that follow.
    virtual void cashierLogin(const FrUser& user) = 0;
    virtual void cashierLogout(const FrUser& user) = 0;
    /// The device works with an SKNO unit.
    virtual bool useSKNO() = 0;
    virtual bool isSKNOConnectedToServer() = 0;
    /// True when all bits of the option are set.
    virtual bool checkOption(hw::fr::Option option) const = 0;
    /// Sets or clears an option; one that is configured in the settings stays as configured.
    virtual void setOption(hw::fr::Option option, bool enable) = 0;
    virtual void d2dReport(const QDateTime& from, const QDateTime& to, bool full) = 0;
    virtual void z2zReport(unsigned int from, unsigned int to, bool full) = 0;
    virtual void openShift() = 0;
    virtual bool isShiftOpen() = 0;
    /// The device has a fiscal drive.
    virtual bool useFN() = 0;
    virtual void printEj() = 0;
    virtual QString getEj(int shift) = 0;
    /// Report on the current state of settlements.
    virtual void accountingReport() = 0;
    /// Sets a requisite for the open receipt.
    virtual void setRequisite(const FdRequisite& requisite) = 0;
    /// State of the exchange with the OFD.
    virtual OfdStatusInfo getOfdStatusInfo() = 0;
    /// State of the fiscal drive.
    virtual FnInfo getFnInfo() = 0;
    /// Registration data of the device.
    virtual FiscalInfo getFiscalInfo(int index, bool full) = 0;
    virtual QString getFfdVersion() = 0;
    virtual int getMainPaymentType(int type) = 0;
    virtual void setCheckTemplate(int number, const QString& text) = 0;
    /// How often a host may try to read the receipt counters.
    virtual int getCheckCountersTries() const = 0;
    virtual hw::fr::common::TaxSystemType getDefaultTaxSystem() const = 0;
    /// The registered tax systems.
    virtual QList<hw::fr::common::TaxSystemType> getAllTaxSystems() const = 0;
    /// Stores the register's number.
    virtual void setNumber(int number) = 0;
    virtual int getNumber() const = 0;
    virtual QMap<int, QString> getRelatedCounters() const = 0;
    /// Resumes printing of a closed document.
    virtual void continuePrintClosedDoc() = 0;
    /// Registers or re-registers the device with the tax authority.
    virtual void registration(const QList<hw::fr::common::TaxSystemType>& taxSystems,
        hw::fr::common::TaxSystemType defaultTaxSystem, const QString& cashierName,
        const QList<RegistrationReason>& reasons, const QMap<QString, QVariant>& parameters)
        = 0;
    /// Periodic maintenance work.
    virtual void maintenance() = 0;
    /// Loads a picture into a memory slot.
    virtual QJsonObject loadImage(int slot, const QString& fileName) = 0;
    /// Checks a marking code and gives the register's verdict; recheck asks again though the verdict is
    /// known.
    virtual int checkMarkingCode(const MarkedPosition& position, bool recheck) = 0;
    /// Compares registration parameters with the device's.
    virtual bool isRegistrationParametersChanged(const QMap<QString, QVariant>& parameters) const = 0;
    /// Throws a FrPaperException when the paper is out.
    virtual void checkPaper() const = 0;
    /// Drops the marking codes checked so far.
    virtual void clearMarkingCodes() = 0;
    virtual int getAnnulationCounter() = 0;
    virtual void setSymbolsMapping(const QMap<QChar, QChar>& mapping) = 0;
    /// Header that the program keeps and prints itself.
    virtual void setProgramCliche(const QList<QString>& lines) = 0;
    virtual bool isCashDrawerOpened() const = 0;
    /// Writes device parameters in their order; false at the first that was refused.
    virtual bool setParams(const QList<FrParameter>& parameters) = 0;
    virtual bool isLastCheckWithNumber(const QString& number) = 0;
    /// Fiscal data of the last receipt.
    virtual QJsonObject getLastCheck(const FiscalDocument& document) = 0;
    /// Service print of a code page.
    virtual void printCodePageSymbols(int codePage) = 0;
    /// Extra print items at the close of a receipt.
    virtual void addPostLines(const QList<FrPrintData>& items) = 0;
    virtual void clearLinesForPrint() = 0;
    /// Stores the host's callback for errors.
    virtual void setErrorNotificationHandler(
        const std::function<void(const tr::Tr&, const QString&)>& handler)
        = 0;
    /// Stores the host's callback for the exchange with the OFD.
    virtual void setOfdNotificationHandler(
        const std::function<void(bool, const tr::Tr&, const QDateTime&)>& handler)
        = 0;
    /// Answers a named query.
    virtual QString queryData(const QString& name) const = 0;
    /// Reprints the last shift report.
    virtual void printLastZReport() = 0;
};

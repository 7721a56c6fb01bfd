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
/// A failed operation throws a child of BasicException whose tr().ru() is the message for the cashier: every
/// operation that asks the device may throw FrNoConnectionException (no contact, or the port is not open),
/// ComDriverException (trouble with the port) and FrCommandException with its children (refused, or the
/// exchange failed). Results of type bool are refusals, not failures. An operation that a device cannot do
/// logs and answers empty; it never throws.
///
/// Sums are roubles, times local; where a list or an object is said to be empty on a device, the operation is
/// there for other devices of the host.
class FRHOST_EXPORT AbstractFrDriver
{
public:
    virtual ~AbstractFrDriver();

    /// Opens the port with the driver's line settings: 115200 baud, 8 data bits, no parity, 1 stop bit, on
    /// HEX with software flow control and DTR off. Throws FrNoConnectionException without a device or when
    /// the device does not open.
    virtual void portOpen() = 0;
    /// Closes the port; one that is closed already stays so.
    virtual void portClose() = 0;
    /// Establishes the connection: the first time, and again after each FrNoConnectionException. The port
    /// must be open. Throws FrNoConnectionException when the port fails or no register answers on HEX; a
    /// register that is silent on XML shows as FrCommandException after its 75 seconds.
    virtual void connect() = 0;
    /// First exchange after a connection. HEX finishes or cancels a document that was left open; XML writes
    /// the advertising text that the host keeps.
    virtual void init() = 0;
    /// Technological zeroing of the device.
    virtual void reinitialize() = 0;
    /// Restarts the device; those of this family cannot.
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
    /// Writes a dump of the device, from the first to the last block, to the stream and returns it.
    virtual std::ostream& getDump(int first, int last, std::ostream& stream) = 0;
    /// A copy of the identity that connect has read; empty before. Asks nothing.
    virtual DeviceInfo getDeviceInfo() = 0;
    /// The settings that driver and device object share; they stay the property of the device object.
    virtual BasicFrSettings* getDeviceSettings() const = 0;
    /// Font for the lines that follow; drivers take the first of the list, which must not be empty.
    virtual void setFont(const QList<EFrDriver::FontTypes>& fonts) = 0;
    /// Line spacing in dots; -1 leaves it unchanged.
    virtual void setLineSpacing(int spacing) = 0;
    /// Back to the normal font.
    virtual void resetFont() = 0;
    /// Loads a font into the device; false when it does not take one.
    virtual bool loadFont(const Font& font) = 0;
    /// Sounds the signal of the device.
    virtual void beep() = 0;
    /// Opens the cash drawer.
    virtual void drawerOpen() = 0;
    /// Opens a receipt: sale or return of a sale. HEX sends the document's cashier, tax system and customer
    /// address now, and the shift must be open; any other type throws FrCommandException. XML takes the print
    /// mode from it, opens the shift if need be and gathers the receipt in the driver.
    virtual void checkOpen(const FiscalDocument& document) = 0;
    /// Closes a receipt, with the document that opened it; XML takes the type from here. The object carries
    /// the document's fiscal data where the device gives them; it is empty on this family. A close that fails
    /// may have issued the receipt all the same: getFnInfo tells by the number of the last document.
    virtual QJsonObject checkClose(const FiscalDocument& document) = 0;
    /// Cancels the open receipt. On XML the register has seen nothing of it yet, and nothing is sent.
    virtual void checkCancel() = 0;
    /// Waits until the receipt is printed; HEX finishes it when the register still wants that.
    virtual void checkWaitForPrint() = 0;
    /// Cuts the paper behind a closed receipt.
    virtual void cutAfterChecksClosing() = 0;
    /// Cuts the paper.
    virtual void cutPaper() = 0;
    /// Adds a position to the open receipt.
    virtual void checkAddPosition(const FrPosition& position) = 0;
    /// Cancels a position of the open receipt.
    virtual void checkStornoPosition(const FrPosition& position) = 0;
    /// Subtotal of the open receipt. HEX takes no payment before it.
    virtual void checkTotal() = 0;
    /// Adds a payment to the open receipt. Payments of one kind add up.
    virtual void checkPay(const FrPayment& payment) = 0;
    /// Text lines within the open receipt.
    virtual void checkPrint(const QList<QString>& lines) = 0;
    /// Opens a document of type CheckCashIn or CheckCashOut.
    virtual void moneyCheckOpen(hw::fr::CheckType type, const QString& text) = 0;
    /// Text lines within it.
    virtual void moneyCheckPrint(const QList<QString>& lines) = 0;
    /// Closes it with the sum in roubles, positive for both directions. The object is empty on this family.
    virtual QJsonObject moneyCheckClose(double sum) = 0;
    /// Waits until it is printed.
    virtual void moneyCheckWaitForPrint() = 0;
    /// Opens a document with no fiscal meaning, of type CheckNonFiscal.
    virtual void textDocOpen(hw::fr::CheckType type) = 0;
    /// Text lines within it.
    virtual void textDocPrint(const QList<QString>& lines) = 0;
    /// Closes it; its lines are printed now at the latest.
    virtual void textDocClose() = 0;
    /// Prints a barcode in the current document.
    virtual void barcodePrint(const Barcode& barcode) = 0;
    /// Tax report.
    virtual void vatReport() = 0;
    /// Closes the shift and prints its report. The object is empty on this family, as are those of the
    /// reports below.
    virtual QJsonObject zReport() = 0;
    /// Prints the report without closing the shift.
    virtual QJsonObject xReport() = 0;
    /// Report by departments.
    virtual QJsonObject xReportDept() = 0;
    /// Count and sum of the shift for CheckCashIn or CheckCashOut. On HEX any other type reads as
    /// CheckCashOut; on XML a closed shift reads as zeros.
    virtual MoneyCounters getMoneyCounters(hw::fr::CheckType type) = 0;
    /// Sums of the shift for CheckSale or CheckSaleReturn, in roubles by payment kind (FrPayment::kind).
    /// Empty for a type that the device does not count and, on XML, while the shift is closed.
    virtual QMap<int, double> getCheckCounters(hw::fr::CheckType type) = 0;
    /// The same by position; empty on this family.
    virtual QMap<int, double> getPositionCounters(hw::fr::CheckType type) const = 0;
    /// Number of the shift that is open or was the last one; 0 where the device does not tell.
    virtual int getLastShiftNumber() = 0;
    /// The payment kind that a host offers first.
    virtual int getDefaultPaymentType() = 0;
    /// Template for the lines that say where a receipt was sent to.
    virtual QString getSendLinesTemplate() const = 0;
    /// Reports of a fiscal memory, by days and by shifts, for devices that have one.
    virtual void fpReportInDatesRange(const QString& password, long from, long to, bool full) = 0;
    virtual void fpReportInShiftsRange(const QString& password, long from, long to, bool full) = 0;
    /// Fiscalisation of devices without a fiscal drive.
    virtual void fiscalization(const QString& oldPassword, const QString& registrationNumber,
        const QString& inn, const QString& newPassword)
        = 0;
    /// Sets the device's clock to that local time; false on XML while a shift is open or when it failed. HEX
    /// lets the register judge, and its refusal is an exception.
    virtual bool setDateTime(const QDateTime& dateTime) = 0;
    /// The device's clock, local time.
    virtual QDateTime getDateTime() = 0;
    /// Allowed difference between the clocks in hours; -1 means none.
    virtual int getHoursDifferenceLimit() const = 0;
    /// Programs the header of the receipts; false when the device refused it.
    virtual bool setCliche(const QList<QString>& lines) = 0;
    /// Programs the advertising text at the end of the receipts; false when the device refused it.
    virtual bool setTail(const QList<QString>& lines) = 0;
    /// Puts the device at its default speed.
    virtual void setDefaultBaudrate() = 0;
    /// The mode that the device is in, as text.
    virtual QString getFrModeString() const = 0;
    /// Prints a picture.
    virtual void printLogo(const Logo& logo) = 0;
    /// Checks that the device answers.
    virtual void ping() = 0;
    /// Registers as they stand when a shift begins.
    virtual KkmRegisterBeg getKkmRegisterBeg() = 0;
    /// Registers as they stand when a shift ends; to be asked for before it is closed.
    virtual KkmRegisterEnd getKkmRegisterEnd() = 0;
    /// Characters on a line by font.
    virtual QMap<EFrDriver::FontTypes, unsigned> getBandWidthFonts() = 0;
    /// Tax number of the owner.
    virtual QString getInn() = 0;
    /// Programs the picture of that file as header; false when it cannot be loaded or the device refused it.
    virtual bool setGraphicCliche(const QString& fileName) = 0;
    /// Removes the picture from the header.
    virtual void clearGraphicCliche() = 0;
    /// Number of the next fiscal document in decimal; empty where the device does not tell.
    virtual QString getFrDocNum() = 0;
    /// Number of the document that was closed last; empty where the device does not tell.
    virtual QString getFrDocNumAfterClosing() = 0;
    /// Text of the document of that number; empty where the device does not keep it.
    virtual QString getFrDocCopy(long number) = 0;
    /// Offset between the numbers of host and device documents; -1 when there is none.
    virtual int getFrDocOffset() = 0;
    /// The first of the four steps in which a closed receipt is cancelled.
    virtual void cancelCheckOpen(const FiscalDocument& document) = 0;
    /// The second step.
    virtual void cancelCheckTotal(const FiscalDocument& document) = 0;
    /// The third step.
    virtual void cancelCheckPay(const FiscalDocument& document) = 0;
    /// The last step.
    virtual QJsonObject cancelCheckClose(const FiscalDocument& document) = 0;
    /// Sets the cashier for the documents and reports that follow. Asks nothing.
    virtual void cashierLogin(const FrUser& user) = 0;
    /// Ends the cashier's turn.
    virtual void cashierLogout(const FrUser& user) = 0;
    /// The device works with an SKNO unit.
    virtual bool useSKNO() = 0;
    /// That unit reaches its server.
    virtual bool isSKNOConnectedToServer() = 0;
    /// True when all bits of the option are set.
    virtual bool checkOption(hw::fr::Option option) const = 0;
    /// Sets or clears an option; one that is configured in the settings stays as configured.
    virtual void setOption(hw::fr::Option option, bool enable) = 0;
    /// Report between two days; full for all shifts of it.
    virtual void d2dReport(const QDateTime& from, const QDateTime& to, bool full) = 0;
    /// Report between two shifts by their numbers; full for all shifts of it.
    virtual void z2zReport(unsigned int from, unsigned int to, bool full) = 0;
    /// Opens the shift; one that is open stays so.
    virtual void openShift() = 0;
    /// The shift is open, also when it has lasted too long.
    virtual bool isShiftOpen() = 0;
    /// The device has a fiscal drive.
    virtual bool useFN() = 0;
    /// Prints the electronic journal.
    virtual void printEj() = 0;
    /// The electronic journal of a shift.
    virtual QString getEj(int shift) = 0;
    /// Report on the current state of settlements.
    virtual void accountingReport() = 0;
    /// Sets a requisite for the open receipt. HEX only logs it. XML takes the tags 1008, 1171, 1187, 1192,
    /// 1203, 1256 and, for this and all later receipts, 1055; others are logged and dropped.
    virtual void setRequisite(const FdRequisite& requisite) = 0;
    /// State of the exchange with the OFD.
    virtual OfdStatusInfo getOfdStatusInfo() = 0;
    /// State of the fiscal drive.
    virtual FnInfo getFnInfo() = 0;
    /// Registration data of the device.
    virtual FiscalInfo getFiscalInfo(int index, bool full) = 0;
    /// Version of the fiscal data format, such as "1.2".
    virtual QString getFfdVersion() = 0;
    /// The main payment kind that a kind belongs to.
    virtual int getMainPaymentType(int type) = 0;
    /// Sets the template of that number for receipts.
    virtual void setCheckTemplate(int number, const QString& text) = 0;
    /// How often a host may try to read the receipt counters.
    virtual int getCheckCountersTries() const = 0;
    /// The first of the registered tax systems; throws FrCommandException when there is none.
    virtual hw::fr::common::TaxSystemType getDefaultTaxSystem() const = 0;
    /// The registered tax systems.
    virtual QList<hw::fr::common::TaxSystemType> getAllTaxSystems() const = 0;
    /// Stores the register's number.
    virtual void setNumber(int number) = 0;
    /// The number that setNumber has stored, 0 at first.
    virtual int getNumber() const = 0;
    /// Names of counters that belong together, by number.
    virtual QMap<int, QString> getRelatedCounters() const = 0;
    /// Resumes printing of a closed document.
    virtual void continuePrintClosedDoc() = 0;
    /// Registers or re-registers the device with the tax authority. This family takes the tax systems alone,
    /// and the cashier from cashierLogin; the rest is for other devices. XML throws FrCommandException while
    /// a shift is open, on HEX the register judges.
    virtual void registration(const QList<hw::fr::common::TaxSystemType>& taxSystems,
        hw::fr::common::TaxSystemType defaultTaxSystem, const QString& cashierName,
        const QList<RegistrationReason>& reasons, const QMap<QString, QVariant>& parameters)
        = 0;
    /// Periodic maintenance work.
    virtual void maintenance() = 0;
    /// Loads the picture of that file into a memory slot.
    virtual QJsonObject loadImage(int slot, const QString& fileName) = 0;
    /// Checks a marking code and gives the register's verdict as it stands (on XML tag 2106, a mask of bits:
    /// 1 checked in the fiscal drive, 2 good there, 4 checked by the state's system, 8 good there). A bad
    /// code is a verdict, no exception. XML keeps the verdict until the receipt closes, and recheck asks
    /// again all the same; HEX asks each time.
    virtual int checkMarkingCode(const MarkedPosition& position, bool recheck) = 0;
    /// Compares registration parameters with the device's.
    virtual bool isRegistrationParametersChanged(const QMap<QString, QVariant>& parameters) const = 0;
    /// Throws a FrPaperException when the paper is out. This family does not look.
    virtual void checkPaper() const = 0;
    /// Drops the marking codes checked so far, in the driver and in the fiscal drive.
    virtual void clearMarkingCodes() = 0;
    /// Number of cancelled documents.
    virtual int getAnnulationCounter() = 0;
    /// Characters that are to be replaced in printed texts.
    virtual void setSymbolsMapping(const QMap<QChar, QChar>& mapping) = 0;
    /// Header that the program keeps and prints itself.
    virtual void setProgramCliche(const QList<QString>& lines) = 0;
    /// The drawer is open. Asks the device.
    virtual bool isCashDrawerOpened() const = 0;
    /// Writes device parameters. HEX writes them in their order and answers false at the first that is
    /// refused, with those before it written. XML writes all at once; false when one is badly formed, with
    /// none written, or when the device refused them.
    virtual bool setParams(const QList<FrParameter>& parameters) = 0;
    /// The last receipt has this number.
    virtual bool isLastCheckWithNumber(const QString& number) = 0;
    /// Fiscal data of the last receipt.
    virtual QJsonObject getLastCheck(const FiscalDocument& document) = 0;
    /// Service print of a code page.
    virtual void printCodePageSymbols(int codePage) = 0;
    /// Extra print items at the close of a receipt.
    virtual void addPostLines(const QList<FrPrintData>& items) = 0;
    /// Drops the lines that wait for printing.
    virtual void clearLinesForPrint() = 0;
    /// Stores the host's callback for errors (text, details). The drivers of this family never call it.
    virtual void setErrorNotificationHandler(
        const std::function<void(const tr::Tr&, const QString&)>& handler)
        = 0;
    /// Stores the host's callback for the exchange with the OFD (connected, text, time). The drivers of this
    /// family never call it.
    virtual void setOfdNotificationHandler(
        const std::function<void(bool, const tr::Tr&, const QDateTime&)>& handler)
        = 0;
    /// Answers a named query.
    virtual QString queryData(const QString& name) const = 0;
    /// Reprints the last shift report.
    virtual void printLastZReport() = 0;
};

#pragma once

#include "efrdriver.h"
#include "fnstatusinfo.h"
#include "protocol.h"
#include "statestatus.h"
#include "taxsystem.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>

class AbstractSerialDriver;
class FiscalDocument;
class FrParameter;
class FrPosition;
struct Barcode;
struct FrPayment;
struct MarkedPosition;

namespace Log4Qt {
class Logger;
}

namespace spfhex {

/// The device's commands: each operation builds its fields, does one exchange and reads the answer's fields.
///
/// Every operation is a virtual, so that any of them can be replaced. A refusal of the device is the
/// exception of its answer code; a dead line is FrNoConnectionException; an answer with too few fields is
/// FrCommandException.
class Command
{
public:
    using CommandCode = protocol::CommandCode;
    using enum protocol::CommandCode;

    /// Neither the transport nor the logger is owned.
    Command(AbstractSerialDriver* serialPort, const Log4Qt::Logger* commandLogger);
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command();

    virtual StateStatus requestStateStatus() const;
    /// Starts the device after power-on with its own clock, so that it cannot refuse a difference of time.
    virtual void initialize() const;
    /// Sends back the device's own registration data with the cashier and the tax systems new.
    virtual void registration(
        const QString& cashierName, const QList<hw::fr::common::TaxSystemType>& taxSystems) const;
    /// Opens a document of any type; without a tax system it asks for the device's first one.
    virtual void openDocument(const FiscalDocument& document, const QString& cashierInn) const;
    virtual void finishDocument() const;
    virtual void cancelDocument() const;
    /// The marking status is the checked status of the position's code, a null variant when there is none.
    virtual void addPaymentObject(const FrPosition& position, const QVariant& markingStatus) const;
    virtual void subtotal() const;
    virtual void payment(const FrPayment& payment) const;
    virtual void printText(const QString& text, EFrDriver::FontTypes font) const;
    /// Sum of a cash-in or cash-out document, roubles.
    virtual void sumInOut(double sum) const;
    /// Agent and supplier data for the position that follows; false when it has none and nothing was sent.
    virtual bool bindAgentData(const FrPosition& position) const;
    /// The device's verdict on the code, as a number that the host interprets.
    virtual int checkMarkingCode(const MarkedPosition& position) const;
    virtual void clearMarkingCodes() const;
    virtual void printBarcode(const Barcode& barcode) const;
    virtual void printQrCode(const Barcode& barcode) const;
    /// The marking code, with its group separators, for the position that follows.
    virtual void bindMarkingCode(const QString& code) const;
    virtual void printShiftCurrentTotals(const QString& cashierName) const;
    virtual void printShiftCloseReport(const QString& cashierName, const QString& cashierInn) const;
    virtual void printFnDocument(long number) const;
    virtual void accountingReport(const QString& cashierName) const;
    virtual void setDateTime(const QDateTime& dateTime) const;
    virtual QDateTime getDateTime() const;
    virtual bool isDrawerOpened() const;
    virtual void openShift(const QString& cashierName, const QString& cashierInn) const;
    virtual void openDrawer() const;
    virtual QList<hw::fr::common::TaxSystemType> getTaxSystems() const;
    /// Life phase, document and flags; the numbers and dates have queries of their own.
    virtual FnStatusInfo getFnState() const;
    virtual quint32 getLastFdNumber() const;
    virtual QDateTime getLastFdDateTime() const;
    virtual QString getFnNumber() const;
    virtual QDate getFnExpirationDate() const;
    virtual quint32 getAvailableRegistrationsCount() const;
    virtual quint32 getRegistrationsCount() const;
    virtual bool getOfdConnectionStatus() const;
    virtual quint32 getFirstUnsendFdNumber() const;
    virtual QDateTime getFirstUnsendFdDateTime() const;
    virtual QString getFfdVersion() const;
    virtual quint32 getIsmNotSentCount() const;
    virtual QString getFnVersion() const;
    virtual int getModelVersionNumber() const;
    virtual int getReleaseVersionNumber() const;
    virtual int getCurrentShiftNumber() const;
    /// Sums of sales by payment kind, roubles.
    virtual QList<double> getSaleCounters() const;
    /// Sums of returns by payment kind, roubles.
    virtual QList<double> getBackCounters() const;
    virtual double getDrawerSum() const;
    virtual QString getNextFdNumber() const;
    virtual QString getInn() const;
    virtual QString getRegistrationNumber() const;
    /// Numbers of the shift's documents by the device's own index.
    virtual QList<int> getDocumentCounters() const;
    /// Sums of the shift's documents by the device's own index, roubles.
    virtual QList<double> getDocumentSums() const;
    virtual QString getSerialNumber() const;
    /// Value of a parameter; empty when the device refused it or the line failed.
    virtual QString getParameter(int field, int row) const;
    virtual void setParameter(const FrParameter& parameter) const;
    /// The picture is a whole BMP file.
    virtual void setLogo(const QByteArray& bitmap) const;
    virtual void clearLogo() const;
    /// All registration data as the device gives them.
    virtual QList<QByteArray> getRegistrationData() const;

    /// One whole exchange: the request is written once, the answer's data block comes back. The follow-up is
    /// a raw block for the device's first ACK.
    virtual QByteArray sendCommand(
        CommandCode code, const QList<QVariant>& fields, const QByteArray& followUp = QByteArray()) const;
    virtual QByteArray formCommand(CommandCode code, const QList<QVariant>& fields) const;
    /// The next packet id: 0x20 to 0xFD in a circle, one count for the whole process.
    virtual quint8 getCommandId() const;
    /// Reads one answer frame, asking a silent device with ENQ. Empty after 1 MiB that holds none.
    virtual QByteArray receiveAnswer(QByteArray followUp) const;
    virtual bool isAnswerValid(const QByteArray& answer) const;
    /// The answer carries the id of the last request.
    virtual bool isCurrentAnswer(const QByteArray& answer) const;
    /// Throws the exception of the answer code unless it is 0.
    virtual void checkAnswer(const QByteArray& answer) const;

protected:
    static quint8 commandId;

private:
    struct AnswerReader;

    QByteArray askFn(protocol::FnQuery query) const;
    QByteArray askKkt(protocol::KktQuery query) const;
    QList<QByteArray> queryFields(CommandCode code, const QList<QVariant>& fields) const;
    void receiveByte(AnswerReader& reader) const;
    void askSilentDevice(AnswerReader& reader) const;
    void takeAck(AnswerReader& reader) const;
    void trace(const QString& label, const QByteArray& bytes) const;
    void traceSending(const QByteArray& bytes) const;

    AbstractSerialDriver* const port;
    const Log4Qt::Logger* const logger;
};

} // namespace spfhex

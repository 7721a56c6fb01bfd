#pragma once

#include "register/clock.h"
#include "register/counters.h"
#include "register/document.h"
#include "register/fiscaldrive.h"
#include "register/journal.h"
#include "register/parameterstore.h"
#include "register/refusal.h"
#include "register/registration.h"
#include "register/tape.h"

#include <QMap>

namespace emulator {

class Page;

/// A marking code that the host asks about.
struct MarkingQuery
{
    QByteArray code;
    /// Tag 2003.
    int plannedStatus = 1;
    double quantity = 1;
    int unit = 0;
};

/// What a register is from the factory.
struct Identity
{
    int model = 3;
    int release = 27;
    QString serialNumber = QStringLiteral("00103000000012345678");
    /// Characters on a line of the tape.
    int width = 44;
};

/// The register itself: its state and its judgement. It knows no protocol and never waits; every operation
/// changes the state and tells at once how it went.
class Register
{
public:
    static constexpr int taxSystemCount = 6;

    explicit Register(const Clock& clock, const Identity& identity = Identity());

    const Identity& identity() const { return m_identity; }
    Tape& tape() { return m_tape; }
    Journal& journal() { return m_journal; }
    ParameterStore& parameters() { return m_parameters; }
    const ParameterStore& parameters() const { return m_parameters; }
    FiscalDrive& drive() { return m_drive; }
    const FiscalDrive& drive() const { return m_drive; }
    const Registration& registration() const { return m_registration; }

    /// @name Power, clock, paper, drawer
    /// @{
    /// Switched off and on: the document and all counters survive. A protocol with a start command asks for
    /// it before it does anything else.
    void powerCycle() { m_started = false; }
    bool isStarted() const { return m_started; }
    Refusal start(const QDateTime& hostTime);
    QDateTime now() const;
    Refusal setTime(const QDateTime& time);
    bool hasPaper() const { return m_paper; }
    void setPaper(bool paper) { m_paper = paper; }
    void openDrawer();
    /// The cashier pushes it shut a few seconds after it sprang open.
    bool isDrawerOpen() const;
    bool isOperatorReachable() const { return m_operatorReachable; }
    /// With the OFD in reach the queue stays empty.
    void setOperatorReachable(bool reachable);
    /// @}

    /// @name Shift
    /// @{
    bool isShiftOpen() const { return m_shiftOpen; }
    bool isShiftTooLong() const;
    int shiftNumber() const { return m_shiftNumber; }
    /// Number that the next receipt of the shift gets.
    int nextReceiptNumber() const { return m_receiptNumber + 1; }
    const ShiftCounters& counters() const { return m_counters; }
    /// Receipts since the fiscal drive was put in.
    const ShiftCounters& grandTotals() const { return m_grandTotals; }
    Money cashInDrawer() const { return m_cash; }
    Refusal openShift(const Cashier& cashier);
    Refusal closeShift(const Cashier& cashier);
    Refusal printTotals(const Cashier& cashier);
    /// @}

    /// @name Documents
    /// @{
    const Document& document() const { return m_document; }
    Refusal openDocument(const Document& head);
    Refusal bindAgent(const QJsonObject& agent);
    Refusal addItem(Item item);
    Refusal subtotal();
    Refusal pay(int kind, Money sum);
    Refusal setMoney(Money sum);
    Refusal finishDocument();
    Refusal cancelDocument();
    /// Forgets a document that came in one piece and was refused: it never existed.
    void dropDocument() { resetDocument(); }
    Refusal printText(const QString& text, int attribute);
    Refusal printPicture(const QString& title, const QString& data);
    /// @}

    /// @name Marked goods
    /// @{
    /// The result has the bits of tag 2106: 1 checked, 2 good, 4 checked by the state's system, 8 good there.
    Refusal checkMarking(const MarkingQuery& query, int& result);
    Refusal bindMarking(const QByteArray& code);
    Refusal clearMarking();
    /// Notifications about sold marked goods that wait for the state's system.
    int unsentNotifications() const { return m_notifications; }
    /// @}

    /// @name Registration, reports, logo
    /// @{
    Refusal changeRegistration(const Registration& registration, const Cashier& cashier, int reasons);
    Refusal printAccounting(const Cashier& cashier, bool shiftMayBeOpen = false);
    Refusal printStored(quint32 number);
    Refusal setLogo(const QByteArray& bitmap);
    Refusal clearLogo();
    /// A picture of any size that the header has room for, or none.
    Refusal setHeaderPicture(const QByteArray& bitmap);
    static bool isHeaderPicture(const QByteArray& bitmap);
    bool hasLogo() const { return !m_logo.isEmpty(); }
    const QByteArray& logo() const { return m_logo; }
    /// @}

    QString taxName(int tax) const;
    QString paymentName(int kind) const;
    static QString taxSystemName(int mask);

private:
    bool isBeforeLastDocument(const QDateTime& time) const;
    Refusal checkReady() const;
    Refusal checkDrive() const;
    Refusal checkBody() const;
    Refusal checkPositions() const;
    Refusal checkMarkingOf(const Item& item) const;
    Refusal closeReceipt();
    Refusal closeMoney();
    void settle(Document& receipt);
    void removeMarking();
    Refusal printOrHold(const QStringList& lines);
    void resetDocument();
    FiscalRecord store(FiscalType type, QJsonObject entry, const Cashier& cashier);
    void addHeader(Page& page) const;
    void addFiscalBlock(Page& page, const FiscalRecord& record, const Cashier& cashier) const;
    void addTotals(Page& page) const;
    QStringList receiptPage(const Document& receipt, const FiscalRecord& record) const;
    QStringList moneyPage(const Document& money) const;
    QStringList textPage(const Document& document) const;
    QStringList reportPage(const QString& title, const FiscalRecord& record, const Cashier& cashier) const;
    QJsonObject receiptEntry(const Document& receipt) const;

    const Clock& m_clock;
    Identity m_identity;
    qint64 m_clockOffset = 0;
    Tape m_tape;
    Journal m_journal;
    ParameterStore m_parameters;
    Registration m_registration;
    FiscalDrive m_drive;
    bool m_started = false;
    bool m_paper = true;
    bool m_operatorReachable = false;
    qint64 m_drawerOpenedAt;
    bool m_shiftOpen = false;
    int m_shiftNumber = 0;
    int m_receiptNumber = 0;
    QDateTime m_shiftOpened;
    ShiftCounters m_counters;
    ShiftCounters m_grandTotals;
    Money m_cash = 0;
    Document m_document;
    QJsonObject m_boundAgent;
    QByteArray m_boundMarking;
    QMap<QByteArray, int> m_checkedMarking;
    int m_notifications = 0;
    QByteArray m_logo;
    /// Lines of a stored document that the paper ran out on.
    QStringList m_heldLines;
};

} // namespace emulator

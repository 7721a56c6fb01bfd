#include "register/register.h"

#include "register/page.h"
#include "register/parametertable.h"

#include <QJsonArray>
#include <QtAlgorithms>

#include <limits>
#include <utility>

namespace emulator {

namespace {

constexpr qsizetype mostPositions = 1000;
constexpr int highestTax = 10;
constexpr int highestPaymentMethod = 7;
constexpr int highestPaymentObject = 33;
constexpr int goodsWithCode = 33;
constexpr int exciseGoodsWithCode = 31;

bool isPlausible(const Item& item)
{
    return !item.name.trimmed().isEmpty() && item.quantity > 0 && item.price >= 0 && item.tax >= 0
        && item.tax <= highestTax && item.paymentMethod >= 1 && item.paymentMethod <= highestPaymentMethod
        && item.paymentObject >= 0 && item.paymentObject <= highestPaymentObject && item.unit >= 0
        && item.unit <= 255;
}

QString documentName(DocumentType type)
{
    switch (type) {
    case DocumentType::Sale:
        return QStringLiteral("sell");
    case DocumentType::SaleReturn:
        return QStringLiteral("sellReturn");
    case DocumentType::CashIn:
        return QStringLiteral("cashIn");
    case DocumentType::CashOut:
        return QStringLiteral("cashOut");
    default:
        return QStringLiteral("nonFiscal");
    }
}

} // namespace

Refusal Register::openDocument(const Document& head)
{
    if (const Refusal refusal = checkReady(); refusal != Refusal::None)
        return refusal;
    if (head.type < DocumentType::NonFiscal || head.type > DocumentType::CashOut)
        return Refusal::BadValue;
    if (head.type != DocumentType::NonFiscal && !m_shiftOpen)
        return Refusal::WrongState;
    if (head.type != DocumentType::NonFiscal && isShiftTooLong())
        return Refusal::ShiftTooLong;
    if (head.isReceipt()) {
        if (const Refusal refusal = checkDrive(); refusal != Refusal::None)
            return refusal;
        if (qPopulationCount(static_cast<quint32>(head.taxSystem)) != 1
            || (head.taxSystem & m_registration.taxSystems) == 0)
            return Refusal::NotRegistered;
    }
    m_document = head;
    m_document.phase = Phase::Open;
    return Refusal::None;
}

Refusal Register::checkBody() const
{
    if (!m_document.isOpen())
        return Refusal::NoDocument;
    return m_document.isStored() ? Refusal::WrongState : Refusal::None;
}

Refusal Register::checkPositions() const
{
    if (!m_document.isOpen())
        return Refusal::NoDocument;
    const bool before = m_document.phase == Phase::Open || m_document.phase == Phase::Positions;
    return m_document.isReceipt() && before ? Refusal::None : Refusal::WrongState;
}

Refusal Register::bindAgent(const QJsonObject& agent)
{
    if (const Refusal refusal = checkPositions(); refusal != Refusal::None)
        return refusal;
    m_boundAgent = agent;
    return Refusal::None;
}

Refusal Register::checkMarkingOf(const Item& item) const
{
    const bool needsCode = item.paymentObject == goodsWithCode || item.paymentObject == exciseGoodsWithCode;
    return needsCode && m_boundMarking.isEmpty() ? Refusal::RequisitesMissing : Refusal::None;
}

Refusal Register::addItem(Item item)
{
    if (const Refusal refusal = checkPositions(); refusal != Refusal::None)
        return refusal;
    if (!isPlausible(item) || m_document.total() + item.sum() > std::numeric_limits<int>::max() * Money{100})
        return Refusal::BadValue;
    if (const Refusal refusal = checkMarkingOf(item); refusal != Refusal::None)
        return refusal;
    if (m_document.items.size() >= mostPositions)
        return Refusal::TooManyPositions;
    item.markingCode = std::exchange(m_boundMarking, {});
    item.agent = std::exchange(m_boundAgent, {});
    Page page(m_identity.width);
    page.text(item.name);
    if (!item.markingCode.isEmpty())
        page.text(
            m_checkedMarking.value(item.markingCode) == 15 ? QStringLiteral("[М+]") : QStringLiteral("[М]"));
    page.pair(QStringLiteral("  %1 x %2").arg(quantityText(item.quantity), moneyText(item.price)),
        QLatin1Char('=') + moneyText(item.sum()));
    page.text(QStringLiteral("  ") + taxName(item.tax));
    m_document.body += page.lines();
    m_document.items.append(item);
    m_document.phase = Phase::Positions;
    return Refusal::None;
}

Refusal Register::subtotal()
{
    if (!m_document.isOpen())
        return Refusal::NoDocument;
    if (m_document.phase != Phase::Positions || !m_boundMarking.isEmpty())
        return Refusal::WrongState;
    m_document.phase = Phase::Subtotal;
    return Refusal::None;
}

Refusal Register::pay(int kind, Money sum)
{
    if (!m_document.isOpen())
        return Refusal::NoDocument;
    if (m_document.phase != Phase::Subtotal && m_document.phase != Phase::Payment)
        return Refusal::WrongState;
    if (kind < 0 || kind >= paymentKinds || sum < 0)
        return Refusal::BadValue;
    const Money total = m_document.total();
    const Money paid = sumOf(m_document.payments);
    if (sum > 0 && paid >= total)
        return Refusal::WrongState;
    // Change is given from cash alone: whatever else is paid must fit into the total.
    if (kind != 0 && paid - m_document.payments[0] + sum > total)
        return Refusal::BadValue;
    m_document.payments[static_cast<size_t>(kind)] += sum;
    m_document.phase = Phase::Payment;
    return Refusal::None;
}

Refusal Register::setMoney(Money sum)
{
    if (!m_document.isOpen())
        return Refusal::NoDocument;
    if (!m_document.isMoney() || m_document.phase != Phase::Open)
        return Refusal::WrongState;
    if (sum <= 0)
        return Refusal::BadValue;
    if (m_document.type == DocumentType::CashOut && sum > m_cash)
        return Refusal::NegativeResult;
    m_document.money = sum;
    m_document.phase = Phase::Payment;
    return Refusal::None;
}

Refusal Register::printText(const QString& text, int attribute)
{
    if (const Refusal refusal = checkBody(); refusal != Refusal::None)
        return refusal;
    if (!m_paper)
        return Refusal::NoPaper;
    Page page(m_identity.width);
    page.attributed(text, attribute);
    (m_document.phase >= Phase::Subtotal ? m_document.footer : m_document.body) += page.lines();
    return Refusal::None;
}

Refusal Register::printPicture(const QString& title, const QString& data)
{
    if (const Refusal refusal = checkBody(); refusal != Refusal::None)
        return refusal;
    if (!m_paper)
        return Refusal::NoPaper;
    Page page(m_identity.width);
    page.frame(title, data);
    (m_document.phase >= Phase::Subtotal ? m_document.footer : m_document.body) += page.lines();
    return Refusal::None;
}

Refusal Register::cancelDocument()
{
    if (!m_document.isOpen())
        return Refusal::WrongState;
    if (m_document.isStored()) {
        m_document.phase = Phase::CancelImpossible;
        return Refusal::WrongState;
    }
    ++m_counters.cancelled;
    Page page(m_identity.width);
    page.append(m_document.body).append(m_document.footer);
    page.centred(QStringLiteral("ДОКУМЕНТ АННУЛИРОВАН")).cut();
    if (m_paper && !m_document.unprinted)
        m_tape.print(page.lines());
    resetDocument();
    return Refusal::None;
}

Refusal Register::finishDocument()
{
    if (!m_document.isOpen())
        return Refusal::NoDocument;
    if (m_document.isStored())
        return printOrHold(m_heldLines);
    if (m_document.isReceipt())
        return closeReceipt();
    if (m_document.isMoney())
        return closeMoney();
    if (!m_paper)
        return Refusal::NoPaper;
    ++m_counters.nonFiscal;
    return printOrHold(textPage(m_document));
}

void Register::settle(Document& receipt)
{
    const bool sale = receipt.type == DocumentType::Sale;
    for (ShiftCounters* const counters : {&m_counters, &m_grandTotals}) {
        Turnover& turnover = sale ? counters->sales : counters->returns;
        ++turnover.count;
        turnover.sum += receipt.total();
        for (size_t kind = 0; kind < turnover.payments.size(); ++kind)
            turnover.payments[kind] += receipt.payments[kind];
        turnover.payments[0] -= receipt.change();
    }
    const Money cash = receipt.payments[0] - receipt.change();
    m_cash += sale ? cash : -cash;
    removeMarking();
}

Refusal Register::closeReceipt()
{
    if (m_document.phase != Phase::Subtotal && m_document.phase != Phase::Payment)
        return Refusal::WrongState;
    if (isShiftTooLong())
        return Refusal::ShiftTooLong;
    Document receipt = m_document;
    const Money missing = receipt.total() - sumOf(receipt.payments);
    if (missing > 0 && !m_parameters.isOn(parameter::automaticPayment))
        return Refusal::WrongState;
    receipt.payments[0] += qMax<Money>(0, missing);
    const Money cash = receipt.payments[0] - receipt.change();
    const bool checked = m_parameters.isOn(parameter::cashControl);
    if (receipt.type == DocumentType::SaleReturn && checked && cash > m_cash)
        return Refusal::NegativeResult;
    m_document = receipt;
    ++m_receiptNumber;
    settle(m_document);
    const FiscalRecord record = store(FiscalType::Receipt, receiptEntry(m_document), m_document.cashier);
    if (cash > 0 && m_parameters.isOn(parameter::drawerOpens))
        openDrawer();
    const QStringList lines = receiptPage(m_document, record);
    m_drive.keepPrint(lines);
    return printOrHold(lines);
}

Refusal Register::closeMoney()
{
    if (m_document.phase != Phase::Payment)
        return Refusal::WrongState;
    const bool incoming = m_document.type == DocumentType::CashIn;
    if (!incoming && m_document.money > m_cash)
        return Refusal::NegativeResult;
    Turnover& turnover = incoming ? m_counters.cashIn : m_counters.cashOut;
    ++turnover.count;
    turnover.sum += m_document.money;
    m_cash += incoming ? m_document.money : -m_document.money;
    // Not a document of the fiscal drive, so it has neither number nor sign.
    m_journal.add({{QStringLiteral("type"), documentName(m_document.type)},
        {QStringLiteral("shift"), m_shiftNumber}, {QStringLiteral("cashier"), m_document.cashier.name},
        {QStringLiteral("dateTime"), now().toString(Qt::ISODate)},
        {QStringLiteral("total"), moneyText(m_document.money)}});
    return printOrHold(moneyPage(m_document));
}

Refusal Register::printOrHold(const QStringList& lines)
{
    if (!m_paper && !m_document.unprinted) {
        // The register has done its work; what is left to do is the printing.
        m_document.phase = Phase::Unprinted;
        m_heldLines = lines;
        return Refusal::NoPaper;
    }
    if (!m_document.unprinted)
        m_tape.print(lines);
    resetDocument();
    return Refusal::None;
}

void Register::resetDocument()
{
    m_document = Document();
    m_boundAgent = QJsonObject();
    m_boundMarking.clear();
    m_heldLines.clear();
}

QJsonObject Register::receiptEntry(const Document& receipt) const
{
    static const QString kindNames[paymentKinds] = {QStringLiteral("cash"), QStringLiteral("electronically"),
        QStringLiteral("prepaid"), QStringLiteral("credit"), QStringLiteral("other")};
    QJsonArray items;
    for (const Item& item : receipt.items)
        items.append(item.toJson());
    QJsonObject payments;
    for (int kind = 0; kind < paymentKinds; ++kind) {
        const Money given = receipt.payments[static_cast<size_t>(kind)];
        const Money sum = kind == 0 ? given - receipt.change() : given;
        if (sum != 0)
            payments[kindNames[kind]] = moneyText(sum);
    }
    QJsonObject entry{{QStringLiteral("type"), documentName(receipt.type)},
        {QStringLiteral("receipt"), m_receiptNumber}, {QStringLiteral("taxSystem"), receipt.taxSystem},
        {QStringLiteral("customer"), receipt.customer}, {QStringLiteral("items"), items},
        {QStringLiteral("total"), moneyText(receipt.total())}, {QStringLiteral("payments"), payments},
        {QStringLiteral("change"), moneyText(receipt.change())}};
    if (!receipt.requisites.isEmpty())
        entry[QStringLiteral("requisites")] = receipt.requisites;
    return entry;
}

} // namespace emulator

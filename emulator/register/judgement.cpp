#include "register/judgement.h"

#include "register/parametertable.h"
#include "register/parts.h"

#include <QtAlgorithms>

#include <algorithm>
#include <limits>

namespace emulator::judgement {

namespace {

constexpr qsizetype mostPositions = 1000;
constexpr Money greatestTotal = std::numeric_limits<int>::max() * Money{100};
constexpr int highestTax = 12;
constexpr int highestPaymentMethod = 7;
constexpr int highestPaymentObject = 33;
constexpr int highestUnit = 255;
constexpr int goodsWithCode = 33;
constexpr int exciseGoodsWithCode = 31;

bool isWithin(int value, int least, int most)
{
    return value >= least && value <= most;
}

bool needsCode(const Item& item)
{
    return item.paymentObject == goodsWithCode || item.paymentObject == exciseGoodsWithCode;
}

bool isInn(const QString& inn)
{
    const bool digits = std::all_of(inn.cbegin(), inn.cend(), [](QChar letter) { return letter.isDigit(); });
    return digits && (inn.size() == 10 || inn.size() == 12);
}

bool isComplete(const Registration& registration)
{
    constexpr int allSystems = (1 << Registration::taxSystemCount) - 1;
    const bool systems = registration.taxSystems > 0 && registration.taxSystems <= allSystems;
    return systems && isInn(registration.userInn) && isInn(registration.operatorInn)
        && !registration.number.isEmpty();
}

Refusal taxSystem(int system, const Registration& registration)
{
    const bool single = qPopulationCount(static_cast<quint32>(system)) == 1;
    return single && (system & registration.taxSystems) != 0 ? Refusal::None : Refusal::NotRegistered;
}

} // namespace

const char* misfit(const Item& item)
{
    if (item.name.trimmed().isEmpty())
        return "a position without a name";
    if (item.quantity <= 0)
        return "a quantity that is not above 0";
    if (item.price < 0)
        return "a price below 0";
    if (!isWithin(item.tax, 0, highestTax))
        return "a tax rate that is none of 0 to 12";
    if (!isWithin(item.paymentMethod, 1, highestPaymentMethod))
        return "a payment method that is none of 1 to 7";
    if (!isWithin(item.paymentObject, 0, highestPaymentObject))
        return "a payment object that is none of 0 to 33";
    return isWithin(item.unit, 0, highestUnit) ? nullptr : "a measure unit that is none of 0 to 255";
}

Refusal printer(const Paper& paper)
{
    // Under an open cover nobody can tell whether there is paper.
    if (paper.isCoverOpen)
        return Refusal::PrinterNotReady;
    return paper.isIn ? Refusal::None : Refusal::NoPaper;
}

Refusal ready(const State& state, bool needsPaper)
{
    if (state.open.document.isOpen())
        return Refusal::WrongState;
    return needsPaper ? printer(state.paper) : Refusal::None;
}

Refusal drive(const Parts& parts)
{
    if (!parts.drive.isInFiscalMode())
        return Refusal::DriveWrongState;
    if (parts.drive.isExpired(parts.clock.now()))
        return Refusal::DriveExpired;
    return parts.drive.isFull() ? Refusal::DriveFull : Refusal::None;
}

Refusal newDocuments(const Parts& parts)
{
    const Refusal refusal = drive(parts);
    const bool silent = refusal == Refusal::None && parts.drive.isOperatorSilent(parts.clock.now());
    return silent ? Refusal::OperatorSilent : refusal;
}

Refusal time(const QDateTime& time, const Parts& parts)
{
    // Hosts tell whole seconds only.
    const bool before = time.toSecsSinceEpoch() < parts.drive.last().dateTime.toSecsSinceEpoch();
    return before ? Refusal::DateTooEarly : Refusal::None;
}

Refusal opening(const Document& head, const Parts& parts)
{
    if (const Refusal refusal = ready(parts.state, !head.unprinted); refusal != Refusal::None)
        return refusal;
    if (head.type < DocumentType::NonFiscal || head.type > DocumentType::CashOut)
        return Refusal::BadValue;
    if (head.type == DocumentType::NonFiscal)
        return Refusal::None;
    if (!parts.drive.isInFiscalMode())
        return Refusal::DriveWrongState;
    if (!parts.state.shift.isOpen)
        return Refusal::WrongState;
    if (parts.state.shift.isTooLong(parts.clock.now()))
        return Refusal::ShiftTooLong;
    if (head.isMoney())
        return Refusal::None;
    if (const Refusal refusal = newDocuments(parts); refusal != Refusal::None)
        return refusal;
    return taxSystem(head.taxSystem, parts.state.registration);
}

Refusal printing(const State& state)
{
    if (!state.open.document.isOpen())
        return Refusal::NoDocument;
    if (state.open.document.isStored())
        return Refusal::WrongState;
    return state.open.document.unprinted ? Refusal::None : printer(state.paper);
}

Refusal positions(const Document& document)
{
    if (!document.isOpen())
        return Refusal::NoDocument;
    const bool before = document.phase == Phase::Open || document.phase == Phase::Positions;
    return document.isReceipt() && before ? Refusal::None : Refusal::WrongState;
}

Refusal item(const Item& item, const OpenDocument& open)
{
    if (const Refusal refusal = positions(open.document); refusal != Refusal::None)
        return refusal;
    if (misfit(item) != nullptr || open.document.total() + item.sum() > greatestTotal)
        return Refusal::BadValue;
    if (needsCode(item) && open.marking.isEmpty())
        return Refusal::RequisitesMissing;
    return open.document.items.size() >= mostPositions ? Refusal::TooManyPositions : Refusal::None;
}

Refusal subtotal(const OpenDocument& open)
{
    if (!open.document.isOpen())
        return Refusal::NoDocument;
    const bool complete = open.document.phase == Phase::Positions && open.marking.isEmpty();
    return complete ? Refusal::None : Refusal::WrongState;
}

Refusal payment(const Document& document, int kind, Money sum)
{
    if (!document.isOpen())
        return Refusal::NoDocument;
    if (document.phase != Phase::Subtotal && document.phase != Phase::Payment)
        return Refusal::WrongState;
    if (kind < 0 || kind >= static_cast<int>(paymentKinds) || sum < 0)
        return Refusal::BadValue;
    const Money total = document.total();
    const Money paid = sumOf(document.payments);
    if (sum > 0 && paid >= total)
        return Refusal::WrongState;
    // Change is given from cash alone: whatever else is paid must fit into the total.
    const bool fits = kind == 0 || paid - document.payments[0] + sum <= total;
    return fits ? Refusal::None : Refusal::BadValue;
}

Refusal closing(const Document& receipt, const Parts& parts)
{
    if (receipt.phase != Phase::Subtotal && receipt.phase != Phase::Payment)
        return Refusal::WrongState;
    if (parts.state.shift.isTooLong(parts.clock.now()))
        return Refusal::ShiftTooLong;
    if (receipt.missing() > 0 && !parts.parameters.isOn(parameter::automaticPayment))
        return Refusal::WrongState;
    const bool controlled
        = receipt.type == DocumentType::SaleReturn && parts.parameters.isOn(parameter::cashControl);
    return controlled && receipt.cash() > parts.state.drawer.cash ? Refusal::NegativeResult : Refusal::None;
}

Refusal money(const State& state, Money sum)
{
    const Document& document = state.open.document;
    if (!document.isOpen())
        return Refusal::NoDocument;
    if (!document.isMoney() || document.phase != Phase::Open)
        return Refusal::WrongState;
    if (sum <= 0)
        return Refusal::BadValue;
    const bool tooMuch = document.type == DocumentType::CashOut && sum > state.drawer.cash;
    return tooMuch ? Refusal::NegativeResult : Refusal::None;
}

Refusal reregistration(const Registration& registration, const Parts& parts)
{
    if (const Refusal refusal = ready(parts.state); refusal != Refusal::None)
        return refusal;
    if (parts.state.shift.isOpen)
        return Refusal::WrongState;
    // The registration is what brings a new drive into fiscal mode.
    const Refusal refusal = parts.drive.isReady() ? Refusal::None : drive(parts);
    if (refusal != Refusal::None)
        return refusal;
    if (!isComplete(registration))
        return Refusal::BadValue;
    return parts.drive.registrationsLeft() == 0 ? Refusal::DriveWrongState : Refusal::None;
}

} // namespace emulator::judgement

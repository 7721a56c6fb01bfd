#include "marknoting.h"

#include "abstractfrdriver.h"
#include "misreading.h"
#include "money.h"

#include <utility>

namespace sale {

namespace {

using receipt::kopecksOf;

// A line on which so many answers in a row differ has no number to tell.
constexpr int mostReadings = 20;

hw::fr::CheckType checkTypeOf(DocumentKind kind)
{
    switch (kind) {
    case DocumentKind::SaleReturn:
        return hw::fr::CheckSaleReturn;
    case DocumentKind::CashIn:
        return hw::fr::CheckCashIn;
    case DocumentKind::CashOut:
        return hw::fr::CheckCashOut;
    default:
        return hw::fr::CheckSale;
    }
}

constexpr bool hasSums(DocumentKind kind)
{
    return kind == DocumentKind::Sale || kind == DocumentKind::SaleReturn;
}

/// The questions of the contract, each into its fields of the mark.
class Reading
{
public:
    explicit Reading(AbstractFrDriver& driver)
        : m_driver(driver)
    {
    }

    void askDrive()
    {
        const FnStatusInfo status = m_driver.getFnInfo().fnStatus;
        mark.drive = status.fnNumber;
        mark.lastDocument = status.lastFdNumber;
        mark.isShiftOpen = status.isShiftOpen;
    }

    void askRegisters()
    {
        const KkmRegisterBeg registers = m_driver.getKkmRegisterBeg();
        mark.drive = registers.fnNumber;
        // One more than the number of the open shift over HEX, the number itself over XML: another one for
        // another shift on both.
        mark.shift = registers.shiftNumber;
        if (registers.cashInDrawer.isValid())
            mark.drawer = kopecksOf(registers.cashInDrawer.toDouble());
    }

    void askNextReceipt()
    {
        bool ok = false;
        const qint64 number = m_driver.getFrDocNum().toLongLong(&ok);
        if (ok)
            mark.nextReceipt = number;
    }

    void askSums(DocumentKind kind)
    {
        // The other kinds have no counters: XML refuses the question, HEX does not ask.
        if (!hasSums(kind))
            return;
        const QMap<int, double> counters = m_driver.getCheckCounters(checkTypeOf(kind));
        // Over XML a closed shift answers nothing at all.
        if (counters.isEmpty())
            return;
        PaymentSums& sums = mark.sums[kind];
        for (auto counter = counters.cbegin(); counter != counters.cend(); ++counter)
            sums.insert(counter.key(), kopecksOf(counter.value()));
    }

    void askCash(DocumentKind kind)
    {
        const MoneyCounters counters = m_driver.getMoneyCounters(checkTypeOf(kind));
        mark.cash[kind] = {counters.count, kopecksOf(counters.sum)};
    }

    DriveMark mark;

private:
    AbstractFrDriver& m_driver;
};

DriveMark readOnce(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind)
{
    Reading reading(driver);
    if (isCash(kind)) {
        reading.askRegisters();
        reading.askCash(kind);
    } else if (isReceipt(kind) && line.isChecked()) {
        reading.askRegisters();
        reading.askNextReceipt();
        reading.askSums(kind);
    } else {
        reading.askDrive();
        // The driver takes the question to a closed shift for a mistake.
        if (isReceipt(kind) && reading.mark.isShiftOpen == true)
            reading.askSums(kind);
    }
    return reading.mark;
}

/// Also the number of the drive's last document, and whether the shift is open still.
DriveMark readAll(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind)
{
    DriveMark mark = readOnce(driver, line, kind);
    if (mark.isShiftOpen)
        return mark;
    Reading reading(driver);
    reading.askDrive();
    if (reading.mark.drive != mark.drive)
        return {};
    mark.lastDocument = reading.mark.lastDocument;
    mark.isShiftOpen = reading.mark.isShiftOpen;
    return mark;
}

using Read = DriveMark (*)(AbstractFrDriver&, const RegisterLine&, DocumentKind);

DriveMark readUntilTwoAgree(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind, Read read)
{
    DriveMark mark = read(driver, line, kind);
    if (line.isChecked())
        return mark;
    for (int readings = 1; readings < mostReadings; ++readings) {
        DriveMark again = read(driver, line, kind);
        if (again == mark)
            return mark;
        mark = std::move(again);
    }
    return {};
}

bool isToldWhole(const DriveMark& mark, DocumentKind kind)
{
    return mark.isKnown() && (!hasSums(kind) || mark.sums.contains(kind));
}

} // namespace

DriveMark noteMark(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind)
{
    // Nothing but the number tells of the others.
    if (!isReceipt(kind) && !isCash(kind))
        return noteMarkTwice(driver, line, kind);
    const DriveMark mark = readOnce(driver, line, kind);
    // A byte that changed on the line makes the open shift look closed, or the number like none.
    const bool isAskedAgain
        = isReceipt(kind) && !line.isChecked() && mark.isShiftOpen != false && !isToldWhole(mark, kind);
    return isAskedAgain ? readOnce(driver, line, kind) : mark;
}

DriveMark noteMarkTwice(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind)
{
    return readUntilTwoAgree(driver, line, kind, readOnce);
}

DriveMark noteMarkAfterFailure(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind)
{
    return readUntilTwoAgree(driver, line, kind, readAll);
}

std::optional<DriveMark> confirmMark(
    AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind, const DriveMark& earlier)
{
    if (!earlier.isKnown() || !isReceipt(kind))
        return std::nullopt;
    Reading reading(driver);
    DriveMark mark = earlier;
    if (line.isChecked()) {
        reading.askNextReceipt();
        reading.askSums(kind);
        const bool isSame = reading.mark.nextReceipt && reading.mark.nextReceipt == earlier.nextReceipt;
        if (!mark.sums.contains(kind))
            mark.sums.insert(reading.mark.sums);
        mark.areSumsRead = true;
        return isSame && withoutZeros(mark.sums.value(kind)) == withoutZeros(reading.mark.sums.value(kind))
            ? std::optional(mark)
            : std::nullopt;
    }
    if (hasSums(kind) && !earlier.sums.contains(kind))
        return std::nullopt;
    reading.askDrive();
    mark.isNumberRead = true;
    mark.isShiftOpen = true;
    const bool isSame = reading.mark.drive == mark.drive && reading.mark.lastDocument == mark.lastDocument;
    return isSame && reading.mark.isShiftOpen == true ? std::optional(mark) : std::nullopt;
}

} // namespace sale

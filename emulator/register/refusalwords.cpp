#include "register/refusalwords.h"

#include "register/register.h"

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

struct RefusalWords
{
    Refusal refusal;
    const char* words;
};

constexpr RefusalWords allWords[] = {
    {Refusal::WrongState, "not in this state"},
    {Refusal::UnknownFunction, "no such command"},
    {Refusal::BadValue, "a value that is not taken"},
    {Refusal::BadPassword, "another password"},
    {Refusal::BadCheckValue, "wrong check value"},
    {Refusal::NoPaper, "no paper"},
    {Refusal::PrinterNotReady, "the cover of the printer is open"},
    {Refusal::ShiftTooLong, "the shift has lasted for more than 24 hours"},
    {Refusal::ClockDiffers, "the host's clock is more than five minutes off"},
    {Refusal::DateTooEarly, "a time before that of the last document"},
    {Refusal::NoDocument, "no document is open"},
    {Refusal::NegativeResult, "more than there is in the drawer"},
    {Refusal::DriveWrongState, "not in this phase of the fiscal drive's life, or not any more"},
    {Refusal::DriveExpired, "the fiscal drive has expired"},
    {Refusal::DriveFull, "the archive of the fiscal drive is full"},
    {Refusal::DriveHasNoData, "the fiscal drive has no such document"},
    {Refusal::TooManyPositions, "too many positions"},
    {Refusal::OperatorSilent, "documents have waited for the OFD for 31 days"},
    {Refusal::NotRegistered, "a tax system that is not registered"},
    {Refusal::MarkingForbidden, "not registered for marked goods"},
    {Refusal::MarkingOutOfOrder, "a marking code out of its order"},
    {Refusal::MarkingTableFull, "too many checked marking codes"},
    {Refusal::RequisitesMissing, "marked goods without their code"},
    {Refusal::MarkingNotChecked, "a marking code that was not checked"},
};

QString documentWords(Phase phase)
{
    switch (phase) {
    case Phase::Closed:
        return QStringLiteral("no document is open");
    case Phase::Open:
        return QStringLiteral("a document is open");
    case Phase::Positions:
        return QStringLiteral("a receipt has its positions");
    case Phase::Subtotal:
        return QStringLiteral("a receipt has its subtotal");
    case Phase::Payment:
        return QStringLiteral("a receipt is being paid");
    case Phase::Unprinted:
    case Phase::CancelImpossible:
        break;
    }
    return QStringLiteral("a stored document waits to be finished");
}

QString stateWords(const Register& device)
{
    const bool isShiftOpen = device.state().shift.isOpen;
    return QStringLiteral("the shift is %1, %2")
        .arg(isShiftOpen ? QStringLiteral("open") : QStringLiteral("closed"),
            documentWords(device.document().phase));
}

} // namespace

QString refusalWords(Refusal refusal, const Register& device)
{
    const auto* const found = std::find_if(std::begin(allWords), std::end(allWords),
        [refusal](const RefusalWords& candidate) { return candidate.refusal == refusal; });
    const QString words = found == std::end(allWords) ? QString() : QLatin1String(found->words);
    return refusal == Refusal::WrongState ? QStringLiteral("%1: %2").arg(words, stateWords(device)) : words;
}

} // namespace emulator

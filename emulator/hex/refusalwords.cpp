#include "hex/refusalwords.h"

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
    {Refusal::WrongState, "not in this state of the register or of its document"},
    {Refusal::UnknownFunction, "no such command"},
    {Refusal::BadValue, "a value that is not taken"},
    {Refusal::BadPassword, "another password"},
    {Refusal::BadCheckValue, "wrong check value"},
    {Refusal::NoPaper, "no paper"},
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

} // namespace

QString refusalWords(Refusal refusal)
{
    const auto* const found = std::find_if(std::begin(allWords), std::end(allWords),
        [refusal](const RefusalWords& candidate) { return candidate.refusal == refusal; });
    return found == std::end(allWords) ? QString() : QLatin1String(found->words);
}

} // namespace emulator

#pragma once

namespace emulator {

/// The register's verdict on a command. The numbers are the answer codes of the HEX protocol, but for
/// NoDocument.
enum class Refusal {
    None = 0,
    WrongState = 1,
    UnknownFunction = 2,
    BadValue = 3,
    BadPassword = 6,
    BadCheckValue = 7,
    NoPaper = 8,
    PrinterNotReady = 9,
    ShiftTooLong = 10,
    ClockDiffers = 11,
    DateTooEarly = 12,
    NegativeResult = 14,
    DriveWrongState = 82,
    DriveExpired = 85,
    DriveFull = 86,
    DriveHasNoData = 88,
    TooManyPositions = 94,
    OperatorSilent = 101,
    NotRegistered = 105,
    MarkingForbidden = 130,
    MarkingOutOfOrder = 131,
    MarkingTableFull = 133,
    RequisitesMissing = 140,
    MarkingNotChecked = 142,
    /// HEX has the code of any command that does not fit the document's state.
    NoDocument = 256
};

constexpr int answerCode(Refusal refusal)
{
    return static_cast<int>(refusal == Refusal::NoDocument ? Refusal::WrongState : refusal);
}

} // namespace emulator

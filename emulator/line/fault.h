#pragma once

namespace emulator {

/// Ways in which the register or its line misbehaves in one exchange.
enum class FaultMode {
    None,
    /// The request is lost: nothing is done and nothing answered, ENQ included, until the next request.
    Silence,
    /// The register acts, its answer is lost.
    Lost,
    /// The answer comes only when the next request does, ahead of that one's answer.
    Late,
    /// An answer to some earlier request stands before the true one.
    Stale,
    /// The line echoes the request before the answer.
    Echo,
    /// The check value of the answer is wrong; without one, its result is missing.
    BadCheck,
    /// Stray bytes stand before the answer.
    Noise,
    /// The register works for n seconds and says so when it is asked.
    Busy,
    /// The answer takes n seconds, and nothing is heard before.
    Slow,
    /// The answer breaks off in its middle.
    Cut,
    /// The answer comes in pieces of n bytes with pauses between them.
    Split,
    /// Byte n of the answer is lost.
    Drop,
    /// Byte n of the answer has a bit turned over.
    Flip,
    /// Byte n of the answer comes twice.
    Double,
    /// The paper runs out before the request is done.
    PaperOut,
    /// New paper is put in before the request is done.
    PaperIn,
    /// The paper ends after n more lines; what it ends on is done all the same and answered as not printed.
    PaperEnds,
    /// The same, and answered as printed.
    PaperEndsQuietly,
    /// The register is switched off and on before the request arrives.
    Restart,
    /// The register does nothing and answers the error that is given.
    Answer,
    /// @name Answers of another form than usual, as registers may send them
    /// @{
    /// Byte for byte.
    ShapeBytes,
    /// The right answer directly behind one to an earlier request.
    ShapeBehindForeign,
    /// The data are plain text instead of a CDATA section.
    ShapePlain,
    /// There is no ResponseData.
    ShapeAbsent,
    /// The tree of the data has its root alone.
    ShapeNoValues,
    /// The data are no tree.
    ShapeBrokenData,
    /// All elements stand directly under ArmResponse.
    ShapeFlat,
    /// Blanks and line ends stand around the answer.
    ShapeBlanks,
    /// There is no XML declaration.
    ShapeNoDeclaration,
    /// Result is 00, which is no success.
    ShapeResult00,
    /// The register does nothing and tells of missing paper with the code, but not with the category, of the
    /// printer.
    ShapeCode8,
    /// Counts of receipts (1135) have a decimal.
    ShapeFractions,
    /// ShiftState is 01.
    ShapeShift01,
    /// StatusOverflow is 2.
    ShapeOverflow2,
    /// An ACK stands inside the frame.
    ShapeAckInside,
    /// The check digits are small letters.
    ShapeSmallCheck,
    /// The fields are missing.
    ShapeNoFields,
    /// The answer code is no number.
    ShapeNoCode
    /// @}
};

struct Fault
{
    FaultMode mode = FaultMode::None;
    /// Seconds, lines, position of a byte or an error's code, as the mode takes it.
    int argument = 0;
    /// Of an error over XML; 0 over HEX, which has none.
    int category = 0;
    /// The power goes: with a lost answer after the register has acted, else before.
    bool cutsPower = false;

    /// The register answers an error instead of doing anything.
    bool isError() const { return mode == FaultMode::Answer || mode == FaultMode::ShapeCode8; }
};

} // namespace emulator

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
    Restart
};

struct Fault
{
    FaultMode mode = FaultMode::None;
    /// Seconds, lines or position of a byte, as the mode takes it.
    int argument = 0;
};

} // namespace emulator

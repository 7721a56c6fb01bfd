#pragma once

#include "verdict.h"

namespace sale {

struct DriveMark;
struct Movement;

/// What is known of the line beside the two marks.
struct Circumstances
{
    /// Nobody else can have made a document between the marks.
    bool isOursAlone = false;
    /// The answers have a check value. Without one a byte of the mark before may have changed on the way and
    /// nobody noticed.
    bool isChecked = true;
    /// The driver sends the document's request again when the register stays silent.
    bool isSentAgain = false;
};

/// What two marks say of the document between them.
struct Judgement
{
    Verdict verdict;
    /// Numbers and sums contradict each other: ask the register once more before the verdict is believed.
    bool isContradictory = false;
};

/// Judges a document of ours by the marks before and after it. The number of the drive's last document (or of
/// the shift's next receipt, where that alone is told) is one witness, the sums, counts and the state of the
/// shift that the document moves are the other:
///
/// - Another drive, an older number, or nothing told: Unknown.
/// - The number unmoved: NotIssued. Sums that moved all the same: contradictory, Unknown.
/// - Moved by one, and the sums by exactly the document: Issued when the line was ours alone, else Unknown,
///   for somebody else's document of the same sums cannot be told from ours.
/// - Moved by one, and the sums by something else or not at all, or the shift has closed: that was another
///   document, and ours is NotIssued.
/// - Moved by more: NotIssued when no sum moved, else Unknown.
/// - A document that the driver may have sent again, on a line of ours alone: Issued as often as it moved.
Judgement judge(const DriveMark& before, const DriveMark& after, const Movement& ours,
    const Circumstances& circumstances);

} // namespace sale

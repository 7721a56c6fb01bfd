#pragma once

#include <QString>

namespace sale {

/// What has become of a document whose work ended, well or not.
enum class Outcome {
    /// There is no document.
    None,
    /// It was cancelled before its close.
    Cancelled,
    /// It failed before its close and could not be cancelled; the register's next initialisation cleans it
    /// up.
    NotCancelled,
    /// Its close failed, and nothing can be asked: the fiscal drive does not number such documents.
    Unasked,
    /// Its close failed, and whether it was issued is not known. Neither repeat nor cancel it: a person must
    /// look at the register.
    Unknown,
    /// It was issued. Never repeat it.
    Issued,
    /// Its close failed, and it was not issued. It may be repeated.
    NotIssued
};

/// The name that machines read: "issued", "notIssued", "unknown", "cancelled", "notCancelled"; empty for
/// None.
QString outcomeName(Outcome outcome);
/// An English sentence for the person at the terminal; empty for None.
QString outcomeText(Outcome outcome);

} // namespace sale

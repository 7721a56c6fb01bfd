#pragma once

#include <QString>

#include <optional>

namespace sale {

/// Where a document of ours stands.
enum class DocumentState {
    /// Accepted; nothing of it was sent.
    Queued,
    /// Begun. Whoever finds it so after the program has ended must settle it first.
    Running,
    Issued,
    /// The same id may be tried again, also with a corrected receipt.
    NotIssued,
    /// It may have been issued: a person must look at the register's tape.
    Unknown
};

/// What has become of it is known for good; one that is not issued may be tried again.
constexpr bool isFinal(DocumentState state)
{
    return state == DocumentState::Issued || state == DocumentState::NotIssued;
}

/// Nobody has said yet what has become of it, and its register may be asked.
constexpr bool isToBeSettled(DocumentState state)
{
    return state == DocumentState::Running || state == DocumentState::Unknown;
}

/// Why a document is not issued; None for every other state.
enum class StateReason {
    None,
    /// The register, its line or a check refused it at the attempt.
    Refused,
    /// Its time was over before it was begun.
    Expired,
    /// It was withdrawn before it was begun.
    Deleted,
    /// The register was asked after a failure of the line or the program, and had not issued it.
    Settled,
    /// A person has said so.
    Resolved
};

/// "queued", "running", "issued", "notIssued", "unknown".
QString stateName(DocumentState state);
std::optional<DocumentState> stateOf(const QString& name);
/// "refused", "expired", "deleted", "settled", "resolved"; empty for None and for a name that is none.
QString reasonName(StateReason reason);
StateReason reasonOf(const QString& name);

} // namespace sale

#pragma once

#include <QByteArray>
#include <QString>

namespace emulator {

/// What a host does with a command, as far as a receipt's outcome is at stake.
enum class ExchangeRole {
    Other,
    /// Begins a document, or is a whole one that is no receipt.
    Document,
    /// Finishes the open document, whatever it is.
    Finishing,
    /// A whole receipt.
    Receipt,
    /// Its answer tells whether the last receipt was stored.
    Asking
};

/// One request and how it went.
struct Exchange
{
    QString protocol;
    /// Counted from 1 for each protocol, as faults are.
    int number = 0;
    /// The code of the command as the protocol writes it, or nothing where it could not be read.
    QString command;
    /// Empty for a command that there is not.
    QString name;
    ExchangeRole role = ExchangeRole::Other;
    /// Its bytes as they came.
    QByteArray request;
    /// The error that the host was answered, in the way of the protocol; empty for a good answer.
    QString error;
    /// In words for whoever writes the host.
    QString reason;
    /// That it suffers, as a plan has it; empty for none.
    QString fault;
    /// The error is a fault of the register, or one about a document that is stored: no refusal.
    bool isFalseError = false;
    /// The host cannot know from the answer what became of its request.
    bool isOutcomeUnknown = false;
    /// It came before the answer to the one before it had gone out: the host had given up waiting.
    bool isEarly = false;

    /// The host was told an error, and the request is its own fault.
    bool isRefused() const { return !error.isEmpty() && !isFalseError; }
};

} // namespace emulator

#pragma once

#include <QString>

namespace receipt {

/// What is to be said of a receipt before it is sent: where, what stood there, and what is allowed or becomes
/// of it.
struct Finding
{
    enum Severity {
        /// The receipt may be sent; what is printed or sent may differ from what was meant.
        Warning,
        /// The receipt must not be sent.
        Error
    };

    Severity severity = Error;
    /// "items[2].price"; empty for the receipt as a whole.
    QString path;
    /// As the file has it, with its control characters; empty where there is nothing to show.
    QString given;
    /// What is allowed, or what is printed or sent instead.
    QString reason;
    /// The reason in English, where a journal keeps the finding; empty where none does.
    QString keptReason = {};

    /// For people, whose terminal gets no control characters: items[2].price: "abc" must be a number
    QString text() const;
    /// The same in English, for a journal.
    QString keptText() const;

    bool operator==(const Finding&) const = default;
};

} // namespace receipt

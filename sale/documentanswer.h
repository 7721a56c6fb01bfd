#pragma once

#include "answererror.h"
#include "storeddocument.h"
#include "verdict.h"

#include "protocol.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>

#include <optional>

namespace sale {

/// What a host says of a document, in the same words whatever kind it is, whichever protocol made it, and
/// whether it went well. What is not known is empty here and null in JSON.
struct DocumentAnswer
{
    /// All fields, always.
    QJsonObject toJson() const;
    /// Takes over what the verdict says, for a document that the journal does not tell of.
    void take(const Verdict& verdict);

    QString id = {};
    /// Nothing when no document was made because none was needed.
    std::optional<DocumentState> state = {};
    StateReason reason = StateReason::None;
    /// The journal has answered, and nothing was sent.
    bool isReplayed = false;
    int times = 0;
    quint32 documentNumber = 0;
    /// False for a number that was counted on and not read.
    bool isNumberRead = true;
    QString drive = {};
    std::optional<qint64> shift = {};
    std::optional<qint64> receiptNumber = {};
    /// The register's, local.
    QDateTime dateTime = {};
    /// Kopecks.
    std::optional<qint64> total = {};
    std::optional<qint64> change = {};
    QJsonArray items = {};
    QJsonArray warnings = {};
    QList<StoredAttempt> attempts = {};
    std::optional<AnswerError> error = {};
};

/// What the journal tells of the document. Over HEX the mark before a receipt has its number in the shift.
DocumentAnswer answerOf(const StoredDocument& document, receipt::Protocol protocol);

/// One attempt: "number", "begun", "ended", "markBefore", "movement", "markAfter", "error", "warnings",
/// "state", "documentNumber", and "body" and "digest" where a later one was corrected.
QJsonObject attemptJson(const StoredAttempt& attempt);
/// What a document was made of: JSON as such, any other text as a text, null for none.
QJsonValue bodyJson(const QByteArray& body);
/// Null for an empty one.
QJsonValue textOrNull(const QString& text);
/// Null for 0, which no document has.
QJsonValue documentNumberJson(quint32 number);
/// @name Null for none
/// @{
QJsonValue numberJson(const std::optional<qint64>& number);
/// In roubles.
QJsonValue sumJson(const std::optional<qint64>& kopecks);
/// @}
/// A moment of the journal, UTC; null for none.
QJsonValue momentJson(const QDateTime& time);

} // namespace sale

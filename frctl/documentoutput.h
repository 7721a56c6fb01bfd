#pragma once

#include "documentanswer.h"
#include "issueresult.h"
#include "options.h"
#include "output.h"
#include "receipt.h"

#include <optional>

namespace frctl {

/// Puts into the draft what the receipt says of itself and what the register said of its marking codes.
void describeReceipt(
    AnswerDraft& draft, const receipt::Receipt& receipt, const QList<sale::MarkCheck>& marks = {});
/// That in the fiscal drive, for the end of a line; empty for 0, one that is not known.
QString numberText(quint32 number);
/// Kopecks.
QString issuedText(qint64 total, qint64 paid, qint64 change, quint32 number);
/// What is said of a receipt that was issued.
Output receiptOutput(const sale::IssueResult& result);

/// What the journal, this run and its verdict tell of the document; the verdict counts where the journal does
/// not tell. Throws nothing.
sale::DocumentAnswer answerOf(
    const Options& options, const sale::Verdict& verdict, const std::optional<sale::AnswerError>& error = {});
/// The same as JSON. What a service has told goes before.
QJsonObject answerJson(
    const Options& options, const sale::Verdict& verdict, const std::optional<sale::AnswerError>& error = {});
/// The answer line by line, as people get it.
QStringList answerLines(const QJsonObject& answer);
/// The output of a command that made a document, or had none to make.
Output documentOutput(const Options& options, Output output);

} // namespace frctl

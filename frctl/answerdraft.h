#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

#include <optional>

namespace frctl {

/// What a run knows of its document besides the journal, gathered while it works on it: the answer has it
/// whether the work comes to its end or not.
struct AnswerDraft
{
    /// The command makes a document.
    bool isDocument = false;
    QString id = {};
    bool isReplayed = false;
    /// What this run has settled of earlier ones.
    QStringList settledIds = {};
    /// Kopecks.
    std::optional<qint64> total = {};
    std::optional<qint64> change = {};
    QJsonArray items = {};
    /// Number of the fiscal drive where the command has learnt it; for a command that makes no document.
    QString drive = {};
    /// The register's, read behind the document.
    QDateTime dateTime = {};
    /// What the register told of this kind of document alone.
    QJsonObject more = {};
    /// The document as a service tells it: that counts then.
    QJsonObject told = {};
};

} // namespace frctl

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace sale {

/// What a document is accepted with.
struct DocumentRequest
{
    QString id;
    /// "sell", "sellReturn", "receipt" of another kind, "cashIn", "cashOut", "openShift", "zReport",
    /// "xReport", "accountingReport", "registration", "text", "copy"; "review" for what a person has accepted
    /// without a document.
    QString kind;
    /// What it was made of, mostly JSON text.
    QByteArray body;
    /// The register that is to make it, as the host names it; empty for one that waits in a pool.
    QString registerName;
    /// Marked goods, each by what its code names (receipt::markIdentity).
    QStringList goods = {};
    /// Not to be begun later than this; invalid for one that waits for ever.
    QDateTime startBefore = {};
    /// The id of the sale whose goods come back; empty for one that is not said to be of ours.
    QString returnOf = {};
    /// Any register of that pool is to make it; empty for one that is meant for its register.
    QString pool = {};
    /// Nothing of it is printed.
    bool isPaperless = false;
    /// Instead of startBefore: so long after it is accepted, by the journal's clock.
    std::optional<std::chrono::milliseconds> startWithin = {};
};

/// Of a document that is no receipt: the body has its kind as "type" beside the details. An empty id makes
/// one of its own.
DocumentRequest plainRequest(
    const QString& id, const QString& kind, QJsonObject details, const QString& registerName);

/// Tells two bodies apart: blanks and the order of the fields of a JSON text make no other document.
QByteArray bodyDigest(const QByteArray& body);

} // namespace sale

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace sale {

/// What is written down before the first byte of an attempt.
struct AttemptStart
{
    /// The register's counters before the document; "drive" and "lastDocument" say which drive that is and
    /// how far it has counted. Empty for a document that leaves no trace there.
    QJsonObject markBefore;
    /// What the document moves in them when it is issued.
    QJsonObject movement = {};
    /// Begun only while it is that register's document; empty for whichever it is. Not read back.
    QString registerName = {};
    /// What the register said of the marked goods ahead of it: "code" and "result" of each.
    QJsonArray marks = {};
    /// Begun only while it waits with that body, and that sale's goods come back: it may have been withdrawn
    /// and posted anew since it was read. An empty digest is for whichever it is. Not read back.
    QByteArray digest = {};
    QString returnOf = {};
};

} // namespace sale

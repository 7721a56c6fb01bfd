#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

namespace emulator {

struct StoredDocument;

/// Documents of a fiscal drive for people and, in JSON, for machines.
namespace documentview {

/// One line a document: number, time, kind, sum of a receipt, and fiscal sign.
QString list(const QList<StoredDocument>& documents);
QJsonArray listJson(const QList<StoredDocument>& documents);
/// All that it says, and its page.
QString whole(const StoredDocument& document);
QJsonObject wholeJson(const StoredDocument& document);

} // namespace documentview

} // namespace emulator

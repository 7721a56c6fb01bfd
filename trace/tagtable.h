#pragma once

#include <QMap>
#include <QString>

namespace trace::tagtable {

/// The names by tag.
QMap<QString, QString> names();

/// What a node of an XML document's tree is called in traces: a name for the tags that receipts and answers
/// have, all others as they stand.
QString name(const QString& node);
/// Its text names a person or a customer, is a password, or whatever people write.
bool isPersonal(const QString& node);

} // namespace trace::tagtable

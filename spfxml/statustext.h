#pragma once

#include <QString>
#include <QStringList>

class QDomDocument;

namespace spfxml {

/// Text of the element with that key, empty when the answer does not hold it.
QString statusText(const QDomDocument& document, const QString& key);
/// The same as a number, 0 when it is none.
int statusNumber(const QDomDocument& document, const QString& key);
/// The lines as one text, each indented by two blanks.
QString indentedBlock(const QStringList& lines);

} // namespace spfxml

#pragma once

#include <QStringList>
#include <QVariant>

namespace sale {

/// What names a document's rows in the tables of a journal.
struct SqlKey
{
    QStringList columns;
    QVariantList values;

    /// Such as "id = ?".
    QString condition() const { return columns.join(QStringLiteral(" = ? AND ")) + QStringLiteral(" = ?"); }
};

} // namespace sale

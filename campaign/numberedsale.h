#pragma once

#include <QJsonObject>
#include <QString>

/// A sale whose goods tell its number, so that it is found among the documents of a register.
namespace numberedsale {

/// Writes its receipt.
void write(const QString& fileName, int number);
/// Whether the entry of a document in the register's journal is of that sale.
bool isDocument(const QJsonObject& entry, int number);

} // namespace numberedsale

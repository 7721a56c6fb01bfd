#pragma once

#include <QJsonObject>
#include <QList>

/// Whether the journal of the hosts and that of their register tell the same.
namespace hostjournal {

/// What hosts call a document of the register.
QString kindOf(const QJsonObject& document);
/// The record is of that document; throws Violation.
void checkRecord(const QJsonObject& record, const QJsonObject& document);
/// Each document of the register on that port has a record, and each record of an issued one its document;
/// throws Violation.
void checkAll(const QList<QJsonObject>& records, const QList<QJsonObject>& documents, const QString& port);

} // namespace hostjournal

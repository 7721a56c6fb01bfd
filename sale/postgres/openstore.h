#pragma once

#include "sqlstore.h"

#include <QString>

#include <memory>

namespace sale {

/// The journal at that place: a file, or the address of a database (PostgresPlace). A file that is not there
/// is made, tables in a database are not. Throws JournalError.
std::unique_ptr<SqlStore> openStore(const QString& place, int patienceMs = SqlStore::usualPatienceMs);
/// The database of the journal alone, for what a program keeps beside it.
std::unique_ptr<SqlConnection> openConnection(const QString& place, int patienceMs);
/// The place as it may be told: without a password.
QString shownPlace(const QString& place);
/// It is one for many machines.
bool isShared(const QString& place);

} // namespace sale

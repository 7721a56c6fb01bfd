#pragma once

#include <QDate>

namespace sale {

class PostgresConnection;

/// The tables of the journal in PostgreSQL, in a schema of their own: frspf.
namespace postgresschema {

/// Makes what is missing, all at once. Throws JournalError, also for tables of a later release.
void migrate(PostgresConnection& connection);
/// Throws JournalError unless this release can work with the tables.
void require(const PostgresConnection& connection);
/// Makes the tables of the documents of that month and of the two behind it, where they are missing. Nobody
/// who is at work waits for that.
void makeMonths(PostgresConnection& connection, const QDate& first);

} // namespace postgresschema

} // namespace sale

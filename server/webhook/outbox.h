#pragma once

#include "sqlconnection.h"
#include "webhook/delivery.h"

#include <QList>

#include <memory>

namespace frserver {

/// What is still to be told, beside the journal. Each end of a document is written there in the same
/// transaction as the end itself, whoever settles it: neither a killed service nor frctl forgets one. All
/// operations throw sale::JournalError.
class Outbox
{
public:
    /// Beside the journal at that place, which is there. Of several services that share it one tells, and
    /// another one when that has ended.
    Outbox(const QString& place, int patienceMs);

    /// From now on ends are written down.
    void open();
    /// They are no longer, unless others share the journal; what was written stays until it is dropped.
    void close();

    /// Those to be told now, of each document the first one alone; also those that were postponed by a clock
    /// that has been put back since.
    QList<Delivery> due(const QDateTime& now, int limit) const;
    /// When there is something to be told next; invalid when there is nothing.
    QDateTime nextDue() const;
    qint64 count() const;
    void remove(qint64 number);
    void postpone(qint64 number, const QDateTime& due);
    /// Those that nobody has taken in so many attempts either: a clock that jumps ahead makes none old. Gives
    /// how many were.
    int dropOlderThan(const QDateTime& created, int attempts);

private:
    bool isTeller() const;

    std::unique_ptr<sale::SqlConnection> m_connection;
};

} // namespace frserver

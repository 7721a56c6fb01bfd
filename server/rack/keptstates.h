#pragma once

#include "sqlconnection.h"

#include <QJsonObject>

#include <memory>

namespace frserver {

/// What the service knows of its registers and nobody else would tell it again: it outlives the service, in a
/// table of the service's own beside the journal's. All operations throw sale::JournalError.
class KeptStates
{
public:
    /// Beside the journal at that place, which is there.
    KeptStates(const QString& place, int patienceMs);

    /// Empty for a register of which nothing was kept.
    QJsonObject of(const QString& registerName) const;
    /// With a lease (see Ownership::lease) only while nobody has taken the register over.
    void keep(const QString& registerName, const QJsonObject& state, const QJsonObject& lease = {});
    /// Of a journal that came from another machine: what was paused there for the way is not paused here.
    void resumeAll();

private:
    std::unique_ptr<sale::SqlConnection> m_connection;
};

} // namespace frserver

#pragma once

#include "errorkind.h"
#include "sqlitestore.h"

namespace frserver {

/// The journal as a worker writes it: the document that it makes waits again when it is not issued for want
/// of paper, of a closed cover, or of a register that was started since it was switched on. Whoever puts that
/// right need not tell the client.
class PatientStore : public sale::SqliteStore
{
public:
    using SqliteStore::SqliteStore;

    /// What is made on the way to it, such as the opening of the shift, is not made later.
    void setPatientFor(const QString& id, bool mayHaveRestarted = false);
    void note(const QString& id, int attempt, const sale::AttemptNote& note) override;
    void settle(const QString& id, int attempt, const sale::DocumentEnding& ending) override;

private:
    bool isOfRegister(sale::ErrorKind kind) const;

    QString m_id;
    bool m_mayHaveRestarted = false;
    /// What it failed of last.
    bool m_isOfRegister = false;
};

} // namespace frserver

#pragma once

#include "sqlitestore.h"

namespace frserver {

/// The journal as a worker writes it: the document that it makes waits again when it met no paper or an open
/// cover and is not issued. Whoever changes the paper need not tell the client.
class PatientStore : public sale::SqliteStore
{
public:
    using SqliteStore::SqliteStore;

    /// What is made on the way to it, such as the opening of the shift, is not made later.
    void setPatientFor(const QString& id);
    void note(const QString& id, int attempt, const sale::AttemptNote& note) override;
    void settle(const QString& id, int attempt, const sale::DocumentEnding& ending) override;

private:
    QString m_id;
    bool m_isOfPaper = false;
};

} // namespace frserver

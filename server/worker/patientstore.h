#pragma once

#include "worker/workerlease.h"

#include "errorkind.h"
#include "postgres/registerfence.h"
#include "sqlstore.h"

#include <memory>
#include <optional>

namespace sale {
class PostgresStore;
}

namespace frserver {

/// The journal as a worker writes it: the document that it makes waits again when it is not issued for want
/// of paper, of a closed cover, of a register that was started since it was switched on, or of a shift that
/// the service closes by itself. Whoever puts that right need not tell the client.
class PatientStore : public sale::DocumentStore
{
public:
    /// Of the journal at that place, written as the lease lets it, which must outlive it.
    PatientStore(
        const QString& place, bool closesShift, const WorkerLease& lease, const QString& registerName);

    /// Where others may work the register, too.
    std::optional<sale::RegisterFence> fence();

    /// What is made on the way to it, such as the opening of the shift, is not made later.
    void setPatientFor(const QString& id, bool mayHaveRestarted = false);
    void note(const QString& id, int attempt, const sale::AttemptNote& note) override;
    void settle(const QString& id, int attempt, const sale::DocumentEnding& ending) override;

    // As the journal does.
    using DocumentStore::accept;
    sale::StoredDocument accept(const sale::DocumentRequest& request, const Condition& condition) override;
    std::optional<int> begin(const QString& id, const sale::AttemptStart& start) override;
    std::optional<int> acceptAndBegin(
        const sale::DocumentRequest& request, const sale::AttemptStart& start) override;
    QList<sale::StoredDocument> find(const sale::DocumentQuery& query) const override;
    sale::StoredDocument withdraw(const QString& id) override;
    sale::StoredDocument move(const QString& id, const QString& registerName) override;
    sale::StoredDocument refuse(const QString& id, const sale::AttemptNote& note) override;
    QStringList expire() override;
    void requireRoom() override;
    bool isMoved() const override;
    QDateTime timeNow() const override;
    QDateTime silentSince(const sale::StoredDocument& document) override;

private:
    bool isOfRegister(sale::ErrorKind kind) const;

    std::unique_ptr<sale::SqlStore> m_store;
    const bool m_closesShift;
    const WorkerLease& m_lease;
    /// The store, where several machines have it.
    sale::PostgresStore* m_shared = nullptr;
    QString m_id;
    bool m_mayHaveRestarted = false;
    /// What it failed of last.
    bool m_isOfRegister = false;
};

} // namespace frserver

#pragma once

#include "memory/registerstate.h"
#include "memory/statefolder.h"
#include "memory/statestore.h"
#include "register/identity.h"
#include "register/storeddocument.h"

#include <memory>
#include <optional>

namespace emulator {

class Register;

/// The memory of a register over a power cut: a folder that it has for itself, with all that it keeps in one
/// database there. Every operation throws MemoryError.
class Memory
{
public:
    /// Opens the state of a folder and checks what is in it; makes it where it is missing.
    explicit Memory(std::unique_ptr<StateFolder> folder);

    /// Closes the state; its folder stays locked.
    static std::unique_ptr<StateFolder> close(std::unique_ptr<Memory> memory);

    /// The register that the state is of; no value for a new state.
    std::optional<Identity> identity() const;
    /// The register is as it was when it was saved last, and has to be started by its host. A new state
    /// leaves it as it is. The source of the register's clock is so many milliseconds ahead of the computer's
    /// clock.
    void load(Register& device, qint64 sourceAhead = 0);
    /// Writes what has changed to the disk, in one transaction; without a change nothing is written.
    void save(const Register& device);

    const StateFolder& folder() const { return *m_folder; }
    /// As load() is told it.
    void setSourceAhead(qint64 milliseconds) { m_sourceAhead = milliseconds; }
    /// All documents that are kept.
    QList<StoredDocument> documents() const { return read(m_store.documents()); }

    /// All documents of a state, also while a register works on it.
    static QList<StoredDocument> documentsOf(const QString& folder);

private:
    static QList<StoredDocument> read(const QList<DocumentRow>& rows);

    std::unique_ptr<StateFolder> m_folder;
    StateStore m_store;
    qint64 m_sourceAhead = 0;
    /// What is on the disk.
    registerstate::States m_saved;
    /// What was made for the disk last, even if it did not get there.
    registerstate::Written m_written;
    quint32 m_lastDocument = 0;
};

} // namespace emulator

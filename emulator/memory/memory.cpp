#include "memory/memory.h"

#include "memory/memoryerror.h"
#include "register/register.h"

#include <utility>

namespace emulator {

namespace {

// Times of the source are kept as those of the computer's clock: the source may be another one next time.
RegisterMemory shifted(RegisterMemory memory, qint64 milliseconds)
{
    memory.clockOffset += milliseconds;
    memory.state.drawer.openedAt -= milliseconds;
    return memory;
}

void checkDocuments(const RegisterMemory& memory, const QList<StoredDocument>& documents)
{
    const DriveMemory& drive = memory.drive;
    if (drive.documents != documents.size() || drive.sent < 0 || drive.sent > drive.documents)
        throw MemoryError(QStringLiteral("damaged: documents of the fiscal drive are missing"));
}

} // namespace

Memory::Memory(std::unique_ptr<StateFolder> folder)
    : m_folder(std::move(folder))
    , m_store(m_folder->madeStateFile())
    , m_saved(m_store.parts())
    , m_lastDocument(m_store.lastDocument())
{
}

std::unique_ptr<StateFolder> Memory::close(std::unique_ptr<Memory> memory)
{
    return std::move(memory->m_folder);
}

std::optional<Identity> Memory::identity() const
{
    return m_saved.isEmpty() ? std::nullopt : std::optional(registerstate::readIdentity(m_saved));
}

void Memory::load(Register& device, qint64 sourceAhead)
{
    m_sourceAhead = sourceAhead;
    const QList<StoredDocument> documents = read(m_store.documents());
    if (m_saved.isEmpty() && documents.isEmpty())
        return;
    const RegisterMemory memory = registerstate::readMemory(m_saved);
    checkDocuments(memory, documents);
    device.restore(shifted(memory, -sourceAhead), documents);
}

void Memory::save(const Register& device)
{
    m_written = registerstate::written(device.identity(), shifted(device.memory(), m_sourceAhead), m_written);
    const registerstate::States& states = m_written.states;
    StateChange change;
    for (auto part = states.cbegin(); part != states.cend(); ++part) {
        if (m_saved.value(part.key()) != part.value())
            change.parts[part.key()] = part.value();
    }
    for (auto part = m_saved.cbegin(); part != m_saved.cend(); ++part) {
        if (!states.contains(part.key()))
            change.gone.append(part.key());
    }
    for (const StoredDocument& document : device.drive().documentsFrom(m_lastDocument + 1))
        change.documents.append(registerstate::written(document));
    if (change.isEmpty())
        return;
    m_store.write(change);
    m_saved = states;
    m_lastDocument = device.drive().last().number;
}

QList<StoredDocument> Memory::documentsOf(const QString& folder)
{
    return read(StateStore(StateFolder::stateFileOf(folder), Database::Access::ReadOnly).documents());
}

QList<StoredDocument> Memory::read(const QList<DocumentRow>& rows)
{
    QList<StoredDocument> documents;
    for (const DocumentRow& row : rows) {
        const StoredDocument document = registerstate::readDocument(row);
        // Without a gap from the first one on.
        if (row.number != documents.size() + 1 || document.record.number != row.number)
            throw MemoryError(QStringLiteral("damaged: document %1 is out of order").arg(row.number));
        documents.append(document);
    }
    return documents;
}

} // namespace emulator

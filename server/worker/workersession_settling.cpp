// What has become of documents that were begun before, as the register or a person tells.

#include "worker/workersession.h"

#include "journalerror.h"
#include "pendingsales.h"
#include "wrongregister.h"

namespace frserver {

bool WorkerSession::isRunningInJournal(const QString& id)
{
    try {
        const std::optional<sale::StoredDocument> document = journal().findId(id);
        return document && document->state == sale::DocumentState::Running;
    } catch (const sale::JournalError&) {
        return true;
    }
}

QJsonObject WorkerSession::settle(const QString& id)
{
    requireConnection();
    const std::optional<sale::StoredDocument> document = journal().findId(id);
    if (!document || !sale::isToBeSettled(document->state))
        return {};
    try {
        sale::settleDocument(m_connection->driver(), journal(), *document, line());
    } catch (const sale::WrongRegister&) {
        // Its own drive alone may still tell.
        return {};
    }
    return {};
}

/// Nobody can ask the former drive any more: a person must say what has become of what was begun on it.
void WorkerSession::giveUpFormerDrive(const QString& drive)
{
    for (const sale::StoredDocument& document :
        journal().find({.states = {sale::DocumentState::Running, sale::DocumentState::Unknown},
        .registerName = m_settings.name})) {
        if (document.isToBeAsked() && !document.drive.isEmpty() && document.drive != drive)
            journal().settle(document.request.id, document.attemptCount, {});
    }
}

} // namespace frserver

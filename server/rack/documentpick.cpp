#include "rack/documentpick.h"

namespace frserver {

using sale::DocumentState;
using sale::StoredDocument;

DocumentPick::DocumentPick(sale::DocumentStore& store, const QString& registerName, const QueueGlance& glance)
    : m_store(store)
    , m_registerName(registerName)
    , m_glance(glance)
{
}

void DocumentPick::setAwaited(const QString& id, bool isAwaited)
{
    m_awaited.removeAll(id);
    if (isAwaited)
        m_awaited.append(id);
}

bool DocumentPick::isQueued(const std::optional<StoredDocument>& document) const
{
    return document && document->state == DocumentState::Queued
        && document->request.registerName == m_registerName;
}

std::optional<StoredDocument> DocumentPick::next() const
{
    if (m_glance.isQuiet(m_registerName))
        return std::nullopt;
    for (const QString& id : m_awaited) {
        const std::optional<StoredDocument> document = m_store.findId(id);
        if (isQueued(document))
            return document;
    }
    const QList<StoredDocument> oldest = m_store.find({.states = {DocumentState::Queued},
        .registerName = m_registerName,
        .limit = 1,
        .withAttempts = false});
    return oldest.isEmpty() ? std::nullopt : std::optional(oldest.constFirst());
}

std::optional<StoredDocument> DocumentPick::zReport() const
{
    std::optional<StoredDocument> found;
    m_store.look({.states = {DocumentState::Queued}, .registerName = m_registerName, .withAttempts = false},
        [&found](const StoredDocument& document) {
            if (document.request.kind == QStringLiteral("zReport"))
                found = document;
            return !found;
        });
    return found;
}

} // namespace frserver

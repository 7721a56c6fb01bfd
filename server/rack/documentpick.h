#pragma once

#include "documentstore.h"

#include "rack/queueglance.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace frserver {

/// Which of a register's documents comes next: those that somebody waits for first, then in the order in
/// which they were accepted.
class DocumentPick
{
public:
    /// Both must outlive it.
    DocumentPick(sale::DocumentStore& store, const QString& registerName, const QueueGlance& glance);

    void setAwaited(const QString& id, bool isAwaited);
    /// Nothing when none waits. Throws JournalError.
    std::optional<sale::StoredDocument> next() const;
    /// One that closes the shift, of whoever asked for it. Throws JournalError.
    std::optional<sale::StoredDocument> zReport() const;

private:
    bool isQueued(const std::optional<sale::StoredDocument>& document) const;

    sale::DocumentStore& m_store;
    const QString m_registerName;
    const QueueGlance& m_glance;
    QStringList m_awaited;
};

} // namespace frserver

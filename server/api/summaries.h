#pragma once

#include "storeddocument.h"

#include <QCache>

#include <optional>

namespace frserver {

/// What lists say of documents that the body and the attempts tell. Both are read once for each state of a
/// document, as long as it is among those that were asked for last.
class Summaries
{
public:
    struct Told
    {
        /// Kopecks.
        std::optional<qint64> total;
        std::optional<qint64> shift;
        std::optional<qint64> receiptNumber;
    };

    Summaries();

    /// Null when it is not kept, or the document is not what it was then.
    const Told* find(const sale::StoredDocument& document) const;
    void keep(const sale::StoredDocument& document, const Told& told);

private:
    struct Kept
    {
        QByteArray digest;
        sale::DocumentState state;
        int attemptCount;
        Told told;
    };
    QCache<QString, Kept> m_kept;
};

} // namespace frserver

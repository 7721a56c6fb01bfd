#pragma once

#include "attemptnote.h"
#include "attemptstart.h"
#include "documentending.h"
#include "documentquery.h"
#include "storeddocument.h"

#include <QList>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>

namespace sale {

/// The journal of our documents: five verbs, whatever keeps it. Each writes to the disk itself before it
/// returns, so that neither a killed program nor a power cut forgets it, and each is done as a whole or not
/// at all, also when several programs are at work. All throw JournalError when the journal cannot be read or
/// written; then nothing was.
class DocumentStore
{
public:
    DocumentStore() = default;
    virtual ~DocumentStore() = default;
    DocumentStore(const DocumentStore&) = delete;
    DocumentStore& operator=(const DocumentStore&) = delete;

    /// Takes a document in, and gives what is known of it. An id belongs to one document for ever: one that
    /// is not issued is queued anew, with the body given; any other is given back as it stands. Throws
    /// IdConflict when the body is another one than that of a document that is queued, begun, issued or
    /// unknown.
    virtual StoredDocument accept(const DocumentRequest& request) = 0;
    /// Begins the next attempt at a queued document and gives its number. Of several that begin the same one,
    /// one succeeds; the others get a JournalError. Nothing when its time is over: then it is not issued,
    /// expired.
    virtual std::optional<int> begin(const QString& id, const AttemptStart& start) = 0;
    /// Adds to an attempt.
    virtual void note(const QString& id, int attempt, const AttemptNote& note) = 0;
    /// Says what has become of the document. The attempt is the last one, 0 for a document without. What is
    /// issued stays so: saying it again changes nothing, and anything else is a JournalError. A person's word
    /// (by) is taken for an unknown document alone, and not with a number that another one has on that drive.
    virtual void settle(const QString& id, int attempt, const DocumentEnding& ending) = 0;
    virtual QList<StoredDocument> find(const DocumentQuery& query) const = 0;

    /// Looks at what the query finds, one after the other until that is enough (false), without reading far
    /// more of a long journal than that.
    void look(DocumentQuery query, const std::function<bool(const StoredDocument&)>& work) const
    {
        const int most = query.limit == 0 ? std::numeric_limits<int>::max() : query.limit;
        constexpr int growth = 8;
        qsizetype seen = 0;
        for (query.limit = 1; seen < most; query.limit = std::min(most, query.limit * growth)) {
            const QList<StoredDocument> found = find(query);
            for (; seen < found.size(); ++seen) {
                if (!work(found.at(seen)))
                    return;
            }
            if (found.size() < query.limit)
                return;
        }
    }

    /// Whether it has a document of that drive.
    bool knowsDrive(const QString& drive) const
    {
        return !find({.drive = drive, .limit = 1, .withAttempts = false}).isEmpty();
    }
    /// Nothing for an id that is new.
    std::optional<StoredDocument> findId(const QString& id) const
    {
        const QList<StoredDocument> found = find({.id = id});
        return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
    }
};

} // namespace sale

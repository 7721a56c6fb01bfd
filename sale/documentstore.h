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

/// The journal of our documents, and the queue of those that are to be made: a few verbs, whatever keeps it.
/// Each writes to the disk itself before it returns, so that neither a killed program nor a power cut forgets
/// it, and each is done as a whole or not at all, also when several programs are at work. All throw
/// JournalError when the journal cannot be read or written; then nothing was.
class DocumentStore
{
public:
    DocumentStore() = default;
    virtual ~DocumentStore() = default;
    DocumentStore(const DocumentStore&) = delete;
    DocumentStore& operator=(const DocumentStore&) = delete;

    /// What must hold at the moment of acceptance; what it throws leaves the journal as it was.
    using Condition = std::function<void()>;

    /// For a program that works registers now and then, before it opens the line to one at that address in
    /// the network (devices::networkAddress; empty where it ends at this machine), which may take the line
    /// from whoever has it. A line that lasts may bring to the register what this program has sent when it is
    /// killed. Throws RegisterTaken when another machine is at work there.
    virtual void requireFreeLine(const QString& /*address*/, bool /*doesLineLast*/) { }
    /// To be called when the register is reached, before it is asked about documents or started. Where others
    /// may work it, from another machine or under another name, the function asks it for its fiscal drive,
    /// and they are kept from it as long as this is there. Throws RegisterTaken when one is at work on it.
    virtual void meetRegister(const QString& /*registerName*/, const std::function<QString()>& /*drive*/) { }

    /// Takes a document in, and gives what is known of it. An id belongs to one document for ever: one that
    /// is not issued is queued anew, with the body given; any other is given back as it stands. Throws
    /// IdConflict when the body, or the sale whose goods come back, is another one than that of a document
    /// that is queued, begun, issued or unknown, DocumentArchived for one that was archived. The condition is
    /// asked of a document that is to be queued: what it finds of the returns of the same sale holds still
    /// when the document is in the journal.
    virtual StoredDocument accept(const DocumentRequest& request, const Condition& condition) = 0;
    StoredDocument accept(const DocumentRequest& request) { return accept(request, {}); }
    /// When the document of that id was accepted, which was archived since and is not here any more; nothing
    /// for any other id.
    virtual std::optional<QDateTime> archived(const QString& /*id*/) const { return std::nullopt; }
    /// By the clock of whoever keeps it: that of all its times. The host's may be another one.
    virtual QDateTime timeNow() const = 0;
    /// From when on nothing of a document that is unknown can come to its register any more; invalid as long
    /// as something may.
    virtual QDateTime silentSince(const StoredDocument& document) { return document.settled; }
    /// It goes on with another machine, and nothing is written here any more.
    virtual bool isMoved() const { return false; }
    /// Begins the next attempt at a queued document and gives its number. Of several that begin the same one,
    /// one succeeds; the others get a JournalError, and so does whoever comes for one that was withdrawn or
    /// moved. Nothing when its time is over: then it is not issued, expired.
    virtual std::optional<int> begin(const QString& id, const AttemptStart& start) = 0;
    /// Both at once, for a program that makes its document now: whatever happens to it, no other one finds
    /// the document waiting.
    virtual std::optional<int> acceptAndBegin(const DocumentRequest& request, const AttemptStart& start) = 0;
    /// Adds to an attempt.
    virtual void note(const QString& id, int attempt, const AttemptNote& note) = 0;
    /// Says what has become of the document. The attempt is the last one, 0 for a document without. What is
    /// issued stays so: saying it again changes nothing, and anything else is a JournalError. A person's word
    /// (by) is taken for an unknown document alone, and with a number that is possible
    /// (requirePossibleNumber). See also DocumentEnding::isAsked and isOutOfReach.
    virtual void settle(const QString& id, int attempt, const DocumentEnding& ending) = 0;
    virtual QList<StoredDocument> find(const DocumentQuery& query) const = 0;

    /// Those of the registers for which a document waits.
    virtual QStringList waitingFor(const QStringList& registers) const
    {
        QStringList found;
        for (const QString& name : registers) {
            if (!find({.states = {DocumentState::Queued},
                          .registerName = name,
                          .limit = 1,
                          .withAttempts = false})
                     .isEmpty())
                found.append(name);
        }
        return found;
    }

    /// Throws JournalError unless a document could be accepted now, which is tried on the disk itself.
    virtual void requireRoom() { }

    // Of documents that wait. Each gives the document as it stands afterwards: its state says whether it came
    // too late. An id that is not there is a JournalError.

    /// A queued one is not issued then, deleted.
    virtual StoredDocument withdraw(const QString& id) = 0;
    /// A queued one waits for that register from now on, in its place in the order.
    virtual StoredDocument move(const QString& id, const QString& registerName) = 0;
    /// A queued one is not issued then, refused, with an attempt that says why and was never under way.
    virtual StoredDocument refuse(const QString& id, const AttemptNote& note) = 0;
    /// Those that were to be begun before this moment are not issued, expired. Gives their ids. Of very many
    /// a part at a time; none of the others is begun all the same.
    virtual QStringList expire() = 0;

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
        // A query without an id is for all documents.
        const QList<StoredDocument> found = id.isEmpty() ? QList<StoredDocument>() : find({.id = id});
        return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
    }
};

} // namespace sale

#pragma once

#include "access/tokenentry.h"
#include "api/openlist.h"
#include "api/owners.h"
#include "api/searches.h"
#include "api/summaries.h"
#include "api/waiters.h"
#include "api/waitingplaces.h"
#include "http/eventstream.h"
#include "http/site.h"
#include "journalerror.h"
#include "sqlstore.h"

#include <QElapsedTimer>

#include <map>

namespace frserver {

class Painter;

/// The interface over HTTP: what its routes share. It knows registers, the journal and nothing of processes.
class Api
{
public:
    struct Settings
    {
        /// Documents that may wait for one register.
        int queueLimit = 1000;
        QByteArray version = {};
        /// How long a list is looked for at the most, and how much of the journal at once, to begin with.
        std::chrono::milliseconds longestSearch = std::chrono::seconds(10);
        int searchPiece = 500;
        /// Registers of other services have their documents in the same journal.
        bool isShared = false;
        /// How long bodies that were not read yet are read for a list before others are answered.
        std::chrono::milliseconds readingTurn = std::chrono::milliseconds(2);
    };

    /// Store and owners must outlive it.
    Api(sale::SqlStore& store, Owners& owners, const Settings& settings);

    /// The register must outlive it.
    void add(Till& till) { m_places.add(till); }
    /// Behind its registers; must outlive it.
    void add(Pool& pool) { m_places.add(pool); }
    /// Once all registers are there.
    void warnOfMissing() const;
    /// Whom it lets in. Nobody when tokens are wanted and there are none.
    void setTokens(bool areWanted, const QList<TokenEntry>& entries);
    /// Who draws receipts; must outlive it.
    void setPainter(Painter& painter) { m_painter = &painter; }
    http::Site& site() { return m_site; }
    const http::Site& site() const { return m_site; }

    /// @name Told by the registers
    /// @{
    void documentChanged(const QString& id);
    /// The same with all of it.
    void documentChanged(const sale::StoredDocument& document);
    void registerChanged(const QString& name);
    /// @}

    /// @name Of services that share the journal
    /// @{

    /// To be called for each change of this service's making, also when it is no news here.
    void onChange(const std::function<void(const sale::StoredDocument&)>& changed) { m_changed = changed; }
    /// To be called for each register of this service that has changed.
    void onRegisterChange(const std::function<void(const QString& name)>& changed)
    {
        m_registerChanged = changed;
    }
    /// To be called before it is said that there is no register of a name: another one may have told of it
    /// just now. Throws sale::JournalError when that cannot be known.
    void onMissingRegister(const std::function<void()>& look) { m_lookForRegisters = look; }
    /// Another one says how a document stands: no more of it is given than an event tells, and when it was
    /// queued.
    void heard(const sale::StoredDocument& told);
    /// Another one may have changed it without a word.
    void lookAt(const QString& id);
    /// Whoever works the register has not followed that order, and will not: who waits for it is told so.
    void pauseDropped(const QString& registerName, qint64 order);
    OpenList& openDocuments() { return m_open; }
    /// @}

    /// To be called for each document that has ended here, or is unknown.
    void onEnd(const std::function<void()>& ended) { m_ended = ended; }
    /// Nothing is accepted any longer, and nobody waits.
    void stop();
    bool isStopping() const { return m_isStopping; }

    /// @name For the routes
    /// @{
    const Settings& settings() const { return m_settings; }
    sale::DocumentStore& store() { return m_store; }
    const sale::DocumentStore& store() const { return m_store; }
    sale::DocumentPools& documentPools() { return m_store; }
    Owners& owners() const { return m_owners; }
    /// Null when nobody draws.
    Painter* painter() const { return m_painter; }
    Waiters& waiters() { return m_waiters; }
    const http::EventStream& events() const { return m_events; }
    const OpenList& openDocuments() const { return m_open; }
    Summaries& summaries() const { return m_summaries; }
    const WaitingPlaces& places() const { return m_places; }
    const std::map<QString, Till*>& tills() const { return m_places.tills(); }
    /// Null when there is none of that name.
    Till* till(const QString& name) const { return m_places.till(name); }
    /// The same, once it is certain. Throws sale::JournalError.
    Till* certainTill(const QString& name) const;
    /// The view, with its name, its pools, its queue and its last receipt.
    QJsonObject registerView(const Till& till) const;
    QJsonObject queueView(const QString& registerName) const;
    /// Registers that documents wait for, and that are not there: they have left the configuration.
    QStringList missingRegisters() const;
    /// @name Throw sale::JournalError unless documents are accepted now
    /// @{
    /// By each register that this service works.
    void requireJournal();
    /// By that one: what its worker cannot read or write it would not make.
    void requireJournal(const Till& till) const;
    /// @}
    /// For a document that was accepted just now.
    void accepted(const sale::StoredDocument& document);
    /// Something waits for that register, or in that pool.
    void wake(const QString& place);
    Searches& searches() { return m_searches; }
    /// The register as it is when it is paused, by the order of that number (see Till::pause), or at the end
    /// of the time.
    http::Answer whenPaused(const Till& till, qint64 order, std::optional<std::chrono::seconds> wait);
    /// @}

private:
    void addRoutes();
    http::Response late(const QString& id) const;
    void noteChange(const sale::StoredDocument& document);
    void look(const QString& id, const std::function<void(const sale::StoredDocument&)>& found);
    void lookAtOpen(const QString& registerName);
    void setAwaited(const QString& id, const QString& place);
    void tell(const sale::StoredDocument& document);
    bool isAsked(const sale::StoredDocument& document) const;
    void answerPaused(const Till& till, const QJsonObject& view);
    http::Response notPaused(const QString& pause) const;

    sale::SqlStore& m_store;
    Owners& m_owners;
    Settings m_settings;
    WaitingPlaces m_places;
    Painter* m_painter = nullptr;
    http::Site m_site;
    http::EventStream m_events;
    OpenList m_open;
    /// Nothing that anybody could see.
    mutable Summaries m_summaries;
    Waiters m_waiters;
    /// Which register, or pool, knows that somebody waits for the document.
    QHash<QString, QString> m_awaitedAt;
    /// By order and register.
    Waiters m_pausing;
    /// What was told of each register last.
    std::map<QString, QJsonObject> m_told;
    std::function<void()> m_ended;
    std::function<void(const sale::StoredDocument&)> m_changed;
    std::function<void(const QString& name)> m_registerChanged;
    std::function<void()> m_lookForRegisters;
    /// Changes that the journal could not tell of; looked at again.
    QStringList m_missed;
    QTimer m_lookAgain;
    Searches m_searches;
    /// When the disk took a trial last.
    QElapsedTimer m_roomSeen;
    bool m_isStopping = false;
};

} // namespace frserver

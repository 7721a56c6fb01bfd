#include "api/api.h"

#include "api/apilog.h"
#include "api/documentresponse.h"
#include "api/journalproblem.h"
#include "api/place.h"
#include "documentanswer.h"
#include "http/problem.h"

namespace frserver {

namespace {

constexpr std::chrono::seconds lookAgainTime(1);

} // namespace

void Api::accepted(const sale::StoredDocument& document)
{
    documentChanged(document);
    wake(Place::of(document.request));
}

void Api::wake(const QString& place)
{
    if (WaitingPlace* const where = m_places.at(place))
        where->wake();
}

void Api::documentChanged(const QString& id)
{
    look(id, [this](const sale::StoredDocument& document) { documentChanged(document); });
}

void Api::documentChanged(const sale::StoredDocument& document)
{
    noteChange(document);
    if (m_ended && !isPending(document.state))
        m_ended();
    if (m_changed)
        m_changed(document);
}

void Api::lookAt(const QString& id)
{
    look(id, [this](const sale::StoredDocument& document) { noteChange(document); });
}

void Api::heard(const sale::StoredDocument& told)
{
    // Whoever waits is answered with all of it.
    if (!isPending(told.state) && m_waiters.areAny(told.request.id))
        lookAt(told.request.id);
    else
        noteChange(told);
    if (told.state == sale::DocumentState::Queued)
        wake(Place::of(told.request));
}

void Api::look(const QString& id, const std::function<void(const sale::StoredDocument&)>& found)
{
    try {
        // All of it is for whoever waits.
        const bool isAwaited = m_waiters.areAny(id);
        for (const sale::StoredDocument& document :
            m_store.find({.id = id, .withAttempts = isAwaited, .withBodies = isAwaited}))
            found(document);
    } catch (const sale::JournalError& error) {
        qCWarning(apiLog).noquote() << error.what();
        m_missed.append(id);
        m_lookAgain.start(lookAgainTime);
    }
}

void Api::noteChange(const sale::StoredDocument& document)
{
    const QString& id = document.request.id;
    if (m_open.note(document))
        tell(document);
    if (isPending(document.state)) {
        // It may have been moved.
        if (m_waiters.areAny(id))
            setAwaited(id, Place::of(document.request));
        return;
    }
    // Also that it is still unknown after it was asked about.
    if (m_waiters.areAny(id) && !isAsked(document))
        m_waiters.answer(id, documentResponse(*this, document));
}

/// That it is unknown is of a time before.
bool Api::isAsked(const sale::StoredDocument& document) const
{
    const Till* const where = till(document.request.registerName);
    return document.state == sale::DocumentState::Unknown && where != nullptr
        && where->isAsked(document.request.id);
}

void Api::setAwaited(const QString& id, const QString& place)
{
    const QString before = m_awaitedAt.take(id);
    if (!place.isEmpty())
        m_awaitedAt.insert(id, place);
    if (before == place)
        return;
    if (WaitingPlace* const former = m_places.at(before))
        former->setAwaited(id, false);
    if (WaitingPlace* const next = m_places.at(place))
        next->setAwaited(id, true);
}

void Api::tell(const sale::StoredDocument& document)
{
    m_events.publish("document",
        {{QStringLiteral("id"), document.request.id},
            {QStringLiteral("register"), document.request.registerName},
            {QStringLiteral("pool"), sale::textOrNull(document.request.pool)},
            {QStringLiteral("kind"), document.request.kind},
            {QStringLiteral("state"), sale::stateName(document.state)},
            {QStringLiteral("reason"), sale::textOrNull(sale::reasonName(document.reason))},
            {QStringLiteral("documentNumber"), sale::documentNumberJson(document.documentNumber)}});
}

/// Others may have ended them while the register was theirs: frctl, or a worker of a run before, which was
/// still at its document.
void Api::lookAtOpen(const QString& registerName)
{
    try {
        const QList<sale::StoredDocument> open = m_store.find({.states = OpenList::states(),
            .registerName = registerName,
            .withAttempts = false,
            .withBodies = false});
        for (const QString& id : m_open.outdated(registerName, open))
            documentChanged(id);
    } catch (const sale::JournalError& error) {
        qCWarning(apiLog).noquote() << error.what();
    }
}

http::Response Api::late(const QString& id) const
{
    try {
        const std::optional<sale::StoredDocument> document = m_store.findId(id);
        return document ? documentResponse(*this, *document) : http::Problem(404).response();
    } catch (const sale::JournalError& error) {
        return journalProblem(error);
    }
}

} // namespace frserver

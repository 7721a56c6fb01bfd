#include "peers/racktill.h"

#include "currenttime.h"
#include "documentanswer.h"
#include "mockfactory.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace frserver {

namespace {

const QString doName = QStringLiteral("do");
const QString byName = QStringLiteral("by");
const QString noteName = QStringLiteral("note");
const QString idName = QStringLiteral("id");
const QString settleVerb = QStringLiteral("settle");
const QString awaitVerb = QStringLiteral("await");
const QString leaveVerb = QStringLiteral("leave");
const QString obstacleName = QStringLiteral("obstacle");
const QString acceptVerb = QStringLiteral("accept");
const QString resumeVerb = QStringLiteral("resume");
const QString pauseVerb = QStringLiteral("pause");

double secondsSince(const QElapsedTimer& timer)
{
    return timer.isValid() ? static_cast<double>(timer.elapsed()) / 1000 : 0;
}

/// They have gone on since they were told.
void growAges(QJsonObject& view, double seconds)
{
    const QStringList members = view.keys();
    for (const QString& member : members) {
        const QJsonValue age = view.value(member);
        if (member.endsWith(QStringLiteral("Age")) && age.isDouble())
            view.insert(member, age.toInteger() + std::llround(seconds));
    }
}

} // namespace

RackTill::RackTill(const Settings& settings, Till* own, const Order& order, const FollowOthers& followOthers,
    std::chrono::seconds longestSilence)
    : Till(settings)
    , m_own(own)
    , m_order(order)
    , m_followOthers(followOthers)
    , m_longestSilence(static_cast<double>(longestSilence.count()))
{
}

void RackTill::tell(const ToldRegister& told)
{
    m_told = told;
    for (const QJsonValue number : told.followed)
        noteFollowed(number.toInteger());
    if (m_own == nullptr)
        setSettings(told.settings);
}

void RackTill::noteSilence(std::optional<double> seconds)
{
    m_silence = seconds.value_or(std::numeric_limits<double>::infinity());
    m_noted.start();
    // It is shown of one that is silent for long.
    if (m_silence < m_longestSilence / 2)
        return;
    constexpr qint64 inaccuracyMs = 2'000;
    const auto now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    const QDateTime seen = now.addMSecs(-std::llround(std::min(m_silence, age()) * 1000));
    if (!m_seen.isValid() || std::abs(m_seen.msecsTo(seen)) > inaccuracyMs)
        m_seen = seen;
}

bool RackTill::takeReachability()
{
    const std::pair<bool, bool> now(isHere(), isReachable());
    return std::exchange(m_reachability, now) != now;
}

double RackTill::silence() const
{
    return m_silence + secondsSince(m_noted);
}

double RackTill::age() const
{
    return m_told.age + secondsSince(m_told.read);
}

/// One that this service would work is shown as it stands here when nobody else is at it.
bool RackTill::isHere() const
{
    if (m_own == nullptr)
        return false;
    return isOwn() || m_told.service.isEmpty() || silence() > m_longestSilence;
}

int RackTill::queueLimit() const
{
    return isHere() ? m_own->queueLimit() : m_told.settings.queueLimit;
}

bool RackTill::isReachable() const
{
    return silence() <= m_longestSilence || isHere();
}

QJsonObject RackTill::view() const
{
    if (!isHere())
        return toldView();
    QJsonObject view = m_own->view();
    view.insert(QStringLiteral("service"), m_serviceName);
    view.insert(QStringLiteral("toldAge"), 0);
    return view;
}

QJsonObject RackTill::toldView() const
{
    QJsonObject view = m_told.view;
    growAges(view, age());
    const qint64 toldAge = std::llround(std::min(silence(), age()));
    view.insert(QStringLiteral("toldAge"), toldAge);
    if (isReachable())
        return view;
    const QString service = view.value(QStringLiteral("service")).toString();
    const QString unreachable = QStringLiteral("unreachable");
    view.insert(QStringLiteral("state"), unreachable);
    view.insert(QStringLiteral("waiting"), unreachable);
    // Two looks at the tables have failed by then: where they cannot be read nobody knows of others.
    const bool isRead = secondsSince(m_noted) < m_longestSilence * 2 / 3;
    const QString text = isRead ? QStringLiteral("Служба %1 не отвечает")
                                : QStringLiteral("Журнал недоступен, и о службе %1 ничего не известно");
    view.insert(QStringLiteral("waitingText"), text.arg(service));
    view.insert(QStringLiteral("since"), sale::momentJson(m_seen));
    view.insert(QStringLiteral("stateAge"), toldAge);
    return view;
}

qint64 RackTill::order(const QJsonObject& content)
{
    // Nobody may be at it, or somebody who has told of nothing yet.
    if (!isHere() || (!isOwn() && rackorder::isForOwner(content)))
        return m_order(*this, content);
    if (rackorder::isForOwner(content))
        m_followOthers();
    obey(content);
    return 0;
}

void RackTill::noteFollowed(qint64 order)
{
    // More are not given in the time in which somebody waits.
    constexpr qsizetype most = 16;
    if (m_followed.contains(order))
        return;
    m_followed.append(order);
    if (m_followed.size() > most)
        m_followed.removeFirst();
}

void RackTill::noteAnswer(const QString& id, const QJsonArray& orders)
{
    if (m_asked.contains(id) && orders.contains(m_asked.value(id)))
        m_asked.remove(id);
}

void RackTill::wake()
{
    // Another service hears of the document itself.
    if (isHere())
        m_own->wake();
}

void RackTill::setAwaited(const QString& id, bool isAwaited)
{
    order({{doName, isAwaited ? awaitVerb : leaveVerb}, {idName, id}});
}

void RackTill::settle(const QString& id)
{
    m_asked.remove(id);
    if (const qint64 number = order({{doName, settleVerb}, {idName, id}}); number != 0)
        m_asked.insert(id, number);
}

qint64 RackTill::pause(const QString& by)
{
    return order({{doName, pauseVerb}, {byName, by}});
}

qint64 RackTill::resume(const QString& by)
{
    const QJsonObject content{{doName, resumeVerb}, {byName, by}};
    // Of a pause that the database was lost over this service alone knows, also when the order cannot be
    // given.
    if (!isOwn())
        obey(content);
    return order(content);
}

void RackTill::accept(const QString& by, const QString& note)
{
    order({{doName, acceptVerb}, {byName, by}, {noteName, note}, {obstacleName, obstacle()}});
}

/// What a person sees of it.
QJsonObject RackTill::obstacle() const
{
    const QJsonObject whole = view();
    QJsonObject obstacle;
    for (const QString& member : {QStringLiteral("waiting"), QStringLiteral("waitingText")})
        obstacle.insert(member, whole.value(member));
    return obstacle;
}

bool RackTill::mayObey(const QJsonObject& content) const
{
    if (rackorder::verbOf(content) != acceptVerb)
        return true;
    const QJsonObject seen = content.value(obstacleName).toObject();
    return seen.value(QStringLiteral("waiting")).isString() && seen == obstacle();
}

void RackTill::obey(const QJsonObject& content)
{
    if (m_own == nullptr)
        return;
    const auto text = [&content](const QString& name) { return content.value(name).toString(); };
    const QString verb = text(doName);
    if (verb == awaitVerb || verb == leaveVerb)
        m_own->setAwaited(text(idName), verb == awaitVerb);
    else if (verb == settleVerb)
        m_own->settle(text(idName));
    else if (verb == pauseVerb)
        m_own->pause(text(byName));
    else if (verb == resumeVerb)
        m_own->resume(text(byName));
    else if (verb == acceptVerb)
        m_own->accept(text(byName), text(noteName));
}

QString rackorder::verbOf(const QJsonObject& content)
{
    return content.value(doName).toString();
}

bool rackorder::isPause(const QJsonObject& content)
{
    return verbOf(content) == pauseVerb;
}

bool rackorder::isForOwner(const QJsonObject& content)
{
    return isPause(content) || verbOf(content) == resumeVerb;
}

bool rackorder::isPassing(const QJsonObject& content)
{
    const QString verb = verbOf(content);
    return verb == awaitVerb || verb == leaveVerb;
}

QString rackorder::settledId(const QJsonObject& content)
{
    return verbOf(content) == settleVerb ? content.value(idName).toString() : QString();
}

} // namespace frserver

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

RackTill::RackTill(
    const Settings& settings, Till* own, const Order& order, std::chrono::seconds longestSilence)
    : Till(settings)
    , m_own(own)
    , m_order(order)
    , m_longestSilence(static_cast<double>(longestSilence.count()))
{
}

void RackTill::tell(const ToldRegister& told)
{
    m_told = told;
    if (m_own == nullptr)
        setSettings(told.settings);
}

void RackTill::noteSilence(std::optional<double> seconds)
{
    m_silence = seconds.value_or(std::numeric_limits<double>::infinity());
    m_noted.start();
    if (seconds)
        m_left.invalidate();
    else if (!m_left.isValid())
        m_left.start();
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

double RackTill::lostFor() const
{
    if (!isLost())
        return 0;
    return m_left.isValid() ? secondsSince(m_left) : silence();
}

/// One that this service would work is shown as it stands here when nobody else is at it.
bool RackTill::isHere() const
{
    if (m_own == nullptr)
        return false;
    return isOwn() || m_told.service.isEmpty() || silence() > m_longestSilence;
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
    view.insert(QStringLiteral("waitingText"), QStringLiteral("Служба %1 не отвечает").arg(service));
    view.insert(QStringLiteral("since"), sale::momentJson(m_seen));
    view.insert(QStringLiteral("stateAge"), toldAge);
    return view;
}

void RackTill::order(const QJsonObject& content)
{
    if (isHere())
        obey(content);
    else
        m_order(*this, content);
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
    order({{doName, settleVerb}, {idName, id}});
}

void RackTill::pause(const QString& by)
{
    order({{doName, pauseVerb}, {byName, by}});
}

void RackTill::resume(const QString& by)
{
    order({{doName, QStringLiteral("resume")}, {byName, by}});
}

void RackTill::accept(const QString& by, const QString& note)
{
    order({{doName, QStringLiteral("accept")}, {byName, by}, {noteName, note}});
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
    else if (verb == QStringLiteral("resume"))
        m_own->resume(text(byName));
    else if (verb == QStringLiteral("accept"))
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

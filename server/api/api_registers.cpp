#include "api/api.h"

#include "api/apilog.h"
#include "api/documentview.h"
#include "api/lastingview.h"
#include "documentanswer.h"
#include "http/problem.h"

#include <QJsonArray>

namespace frserver {

namespace {

constexpr std::chrono::seconds pausingWait(130);

const QString pausedState = QStringLiteral("paused");

/// Nobody else can work the register then.
bool isAtWork(const QJsonObject& view)
{
    const QString state = view.value(QStringLiteral("state")).toString();
    return state == QStringLiteral("ready") || state == QStringLiteral("making");
}

/// Whoever has paused a register waits for that order.
QString pauseOf(const QString& registerName, qint64 order)
{
    return QString::number(order) + QLatin1Char(' ') + registerName;
}

qint64 orderOf(const QString& pause)
{
    return pause.section(QLatin1Char(' '), 0, 0).toLongLong();
}

QString registerOf(const QString& pause)
{
    return pause.section(QLatin1Char(' '), 1);
}

/// What changes by itself is no change.
QJsonObject watchedView(const Till& till)
{
    QJsonObject view = lastingView(till.view());
    view.remove(QStringLiteral("exchanges"));
    return view;
}

} // namespace

QJsonObject Api::queueView(const QString& registerName) const
{
    using sale::DocumentState;
    return {{QStringLiteral("queued"), m_open.count(registerName, DocumentState::Queued)},
        {QStringLiteral("running"), m_open.count(registerName, DocumentState::Running)},
        {QStringLiteral("unknown"), m_open.count(registerName, DocumentState::Unknown)},
        {QStringLiteral("oldest"), sale::momentJson(m_open.oldestQueued(registerName))}};
}

QStringList Api::missingRegisters() const
{
    // What frctl makes beside the service never waits.
    QStringList names = m_settings.isShared ? QStringList() : m_open.waitedFor();
    names.removeIf([this](const QString& place) { return m_places.at(place) != nullptr; });
    return names;
}

void Api::warnOfMissing() const
{
    for (const QString& name : missingRegisters())
        qCWarning(apiLog).noquote()
            << m_open.count(name, sale::DocumentState::Queued) << "documents wait for the register" << name
            << "that the configuration does not have: withdraw them, move them, or put its section back";
}

QJsonObject Api::registerView(const Till& till) const
{
    const QString& name = till.settings().name;
    QJsonObject view = till.view();
    view.insert(QStringLiteral("name"), name);
    view.insert(QStringLiteral("protocol"), receipt::protocolName(till.settings().protocol));
    if (!view.contains(QStringLiteral("pools")))
        view.insert(QStringLiteral("pools"), QJsonArray());
    view.insert(QStringLiteral("queue"), queueView(name));
    view.insert(QStringLiteral("lastReceipt"), lastReceipt(*this, name));
    return view;
}

void Api::registerChanged(const QString& name)
{
    const Till* const changed = till(name);
    if (changed == nullptr)
        return;
    const QJsonObject view = watchedView(*changed);
    answerPaused(*changed, view);
    const QJsonObject before = std::exchange(m_told[name], view);
    if (before == view)
        return;
    if (m_registerChanged && changed->isHere())
        m_registerChanged(name);
    m_places.noteMember(name, view);
    QJsonObject data = view;
    // Not for everybody who may use the register.
    data.remove(QStringLiteral("document"));
    data.insert(QStringLiteral("register"), name);
    m_events.publish("register", data);
    if (isAtWork(view) && !isAtWork(before))
        lookAtOpen(name);
}

void Api::answerPaused(const Till& till, const QJsonObject& view)
{
    if (view.value(QStringLiteral("state")) != pausedState)
        return;
    for (const QString& pause : m_pausing.ids()) {
        if (registerOf(pause) == till.settings().name && till.hasFollowed(orderOf(pause)))
            m_pausing.answer(pause, http::Response::json(registerView(till)));
    }
}

http::Response Api::notPaused(const QString& pause) const
{
    return http::Response::json(registerView(*till(registerOf(pause))), 202);
}

void Api::pauseDropped(const QString& registerName, qint64 order)
{
    m_pausing.answer(pauseOf(registerName, order),
        http::Problem(503, QStringLiteral("unreachable"),
            QStringLiteral("No service that works the register has taken the order"),
            QStringLiteral("It is not taken any more. Nothing was changed."))
            .withHeader("Retry-After", "10")
            .response());
}

http::Answer Api::whenPaused(const Till& till, qint64 order, std::optional<std::chrono::seconds> wait)
{
    const QJsonObject view = registerView(till);
    // Another service may not even have the order yet: nobody waits for that who has not said so.
    const std::chrono::seconds time = wait.value_or(order == 0 ? pausingWait : std::chrono::seconds(0));
    if (view.value(QStringLiteral("state")) == pausedState && till.hasFollowed(order))
        return http::Response::json(view);
    if (time == std::chrono::seconds(0) || m_isStopping)
        return http::Response::json(view, 202);
    return m_pausing.wait(pauseOf(till.settings().name, order), time);
}

} // namespace frserver

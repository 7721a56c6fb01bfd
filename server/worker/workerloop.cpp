#include "worker/workerloop.h"

#include "worker/ending.h"
#include "worker/obstacle.h"
#include "worker/workerending.h"

namespace frserver {

WorkerLoop::WorkerLoop()
    : m_lease([this] {
        // No other message comes before this one is answered.
        while (const std::optional<QJsonObject> news = m_channel.nextNow())
            takeLease(*news);
    })
    , m_tick(
          [this](const char* what) {
              m_channel.sendIfRoom({{QStringLiteral("line"), QLatin1String(what)}});
          },
          [this] { m_lease.require(); })
{
}

int WorkerLoop::run()
{
    try {
        while (const std::optional<QJsonObject> message = m_channel.next()) {
            takeLease(*message);
            if (!message->contains(QStringLiteral("do")))
                continue;
            // Whatever it dies of from here on, it dies of that.
            m_channel.send({{QStringLiteral("at"), message->value(QStringLiteral("n"))}});
            m_channel.send(answer(*message));
        }
    } catch (const WorkerEnding&) {
        // What was waited for is nobody's any more.
    }
    // Here, so that the line is free before the service hears of the end.
    if (m_session)
        m_session->close();
    return 0;
}

QJsonObject WorkerLoop::answer(const QJsonObject& message)
{
    QJsonObject answer;
    try {
        answer = work(message);
        if (m_session)
            m_session->leaveIdle();
    } catch (const WorkerEnding&) {
        throw;
    } catch (...) {
        answer = {{QStringLiteral("failure"), Obstacle::current().toJson()}};
    }
    const ExchangeTimes times = m_tick.takeTimes();
    answer.insert(QStringLiteral("exchanges"),
        QJsonObject{{QStringLiteral("count"), times.count}, {QStringLiteral("us"), times.microseconds}});
    answer.insert(QStringLiteral("re"), message.value(QStringLiteral("n")));
    return answer;
}

void WorkerLoop::takeLease(const QJsonObject& message)
{
    m_lease.take(message.value(QStringLiteral("lease")).toObject());
}

void WorkerLoop::start(const QJsonObject& message)
{
    m_session = std::make_unique<WorkerSession>(
        RegisterSettings::fromJson(message.value(QStringLiteral("register")).toObject()),
        message.value(QStringLiteral("journal")).toString(), m_lease, m_tick, [this] {
            if (m_channel.isEnding())
                throw WorkerEnding();
        });
}

QJsonObject WorkerLoop::work(const QJsonObject& message)
{
    const QString what = message.value(QStringLiteral("do")).toString();
    const auto text
        = [&message](const char* member) { return message.value(QLatin1String(member)).toString(); };
    const bool opensShift = message.value(QStringLiteral("opensShift")).toBool();
    if (what == QStringLiteral("start")) {
        start(message);
        return {};
    }
    if (!m_session)
        throw std::logic_error("not started");
    if (what == QStringLiteral("open"))
        return m_session->open(opensShift);
    if (what == QStringLiteral("make"))
        return m_session->make(text("id"), opensShift);
    if (what == QStringLiteral("state"))
        return m_session->condition();
    if (what == QStringLiteral("settle"))
        return m_session->settle(text("id"));
    if (what == QStringLiteral("accept"))
        return m_session->accept(text("by"), text("note"));
    if (what != QStringLiteral("close"))
        throw std::logic_error("unknown message");
    return m_session->close();
}

int runWorker()
{
    ending::arrange();
    return WorkerLoop().run();
}

} // namespace frserver

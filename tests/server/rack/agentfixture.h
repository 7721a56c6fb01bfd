#pragma once

#include "rack/keptstates.h"
#include "rack/registeragent.h"
#include "sale/hostclock.h"
#include "scriptedworker.h"
#include "sqlitestore.h"

#include <QJsonArray>
#include <QTemporaryDir>

#include <memory>

/// The agent of a register over a journal, with a worker and a time that the test works by hand.
class AgentTest : public testing::Test
{
protected:
    AgentTest() { settings.name = "till1"; }

    void makeAgent()
    {
        auto made = std::make_unique<ScriptedWorker>();
        worker = made.get();
        agent = std::make_unique<frserver::RegisterAgent>(settings, store, std::move(made),
            frserver::RegisterAgent::Options{.journal = "journal",
                .clock = {[this] { return now; }, [this] { return steady; }},
                .ownership = ownership,
                .kept = &kept});
        QObject::connect(agent.get(), &frserver::RegisterAgent::documentChanged,
            [this](const QString& id) { changed.append(id); });
        QObject::connect(agent.get(), &frserver::RegisterAgent::stopped, [this] { isStopped = true; });
    }

    /// With a worker at work, and the register reached.
    void startAgent(bool isShiftOpen = true, const QDateTime& since = {})
    {
        startWorker();
        open(isShiftOpen, since);
    }

    void startWorker()
    {
        makeAgent();
        agent->start();
        worker->answer({});
    }

    /// The worker has started, and the register answers.
    void reach()
    {
        worker->answer({});
        open();
    }

    void open(bool isShiftOpen = true, const QDateTime& since = {}, const QStringList& settled = {})
    {
        ASSERT_EQ(worker->at(), "open");
        worker->answer({{"identity", QJsonObject{{"serial", "1"}}},
            {"shift", QJsonObject{{"since", since.toString(Qt::ISODateWithMs)}}},
            {"condition", QJsonObject{{"shiftOpen", isShiftOpen}}},
            {"settled", QJsonArray::fromStringList(settled)}});
    }

    void condition(bool isShiftOpen)
    {
        ASSERT_EQ(worker->at(), "state");
        worker->answer({{"condition", QJsonObject{{"shiftOpen", isShiftOpen}}}});
    }

    void queue(const QString& id, const QString& kind = "sell")
    {
        store.accept({id, kind, R"({"a":1})", "till1"});
        agent->wake();
    }

    void startWith(const QStringList& ids)
    {
        startAgent();
        for (const QString& id : ids)
            queue(id);
    }

    void begin(const QString& id) { store.begin(id, {.markBefore = {{"drive", "9999"}}}); }

    void end(const QString& id, sale::DocumentState state, sale::StateReason reason = {})
    {
        store.settle(id, store.findId(id)->attemptCount, {.state = state, .reason = reason});
    }

    /// What the worker is at is issued.
    void issue()
    {
        const QString id = worker->last.value("id").toString();
        ASSERT_EQ(worker->at(), "make " + id);
        begin(id);
        end(id, sale::DocumentState::Issued);
        worker->answer({{"state", "issued"}});
    }

    void refuse(const QString& kind)
    {
        const QString id = worker->last.value("id").toString();
        begin(id);
        end(id, sale::DocumentState::NotIssued, sale::StateReason::Refused);
        worker->answer({{"state", "notIssued"}, {"kind", kind}, {"text", "of " + kind}});
    }

    /// It waits still.
    void hold(const QString& reason)
    {
        worker->answer({{"state", "queued"}, {"held", reason}, {"kind", reason}, {"text", "of " + reason}});
    }

    void pass(qint64 milliseconds)
    {
        steady += milliseconds;
        now = now.addMSecs(milliseconds);
        agent->look();
    }

    QString text(const char* member) const { return agent->view().value(QLatin1String(member)).toString(); }
    QStringList alarms() const
    {
        QStringList kinds;
        for (const QJsonValue alarm : agent->view().value("alarms").toArray())
            kinds.append(alarm.toObject().value("kind").toString());
        return kinds;
    }
    /// Of what the worker is at.
    QString kind() const { return store.findId(worker->last.value("id").toString())->request.kind; }
    sale::DocumentState stateOf(const QString& id) const { return store.findId(id)->state; }

    /// By which the journal has its times.
    sale::GivenTime clock{{{2026, 3, 2}, {9, 0}, Qt::UTC}};
    QDateTime& now = clock.time;
    QTemporaryDir folder;
    sale::SqliteStore store{folder.filePath("journal.sqlite")};
    frserver::KeptStates kept{store.fileName(), 1'000};
    frserver::RegisterSettings settings{.cashier = "Иванова", .timeZone = QTimeZone("Europe/Moscow")};
    std::shared_ptr<frserver::Ownership> ownership = std::make_shared<frserver::SoleOwnership>();
    qint64 steady = 0;
    ScriptedWorker* worker = nullptr;
    std::unique_ptr<frserver::RegisterAgent> agent;
    QStringList changed;
    bool isStopped = false;
};

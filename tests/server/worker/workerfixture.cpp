#include "workerfixture.h"

#include "rack/workerprocess.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

using namespace frserver;

namespace {

constexpr int longestMs = 60'000;

} // namespace

WorkerTest::~WorkerTest()
{
    if (rack)
        stopRack();
}

void WorkerTest::startRegister(const QStringList& options)
{
    emulator.reset();
    emulator = std::make_unique<Emulator>(options);
    settings.name = "till1";
    settings.port = emulator->port();
    settings.cashier = "Иванова А. П.";
    settings.timeZone = QTimeZone::utc();
    settings.plugins = QStringList{QStringLiteral(SPF_PLUGIN)};
}

void WorkerTest::startRack()
{
    isStopped = false;
    const auto createWorker = [this] {
        auto worker = std::make_unique<WorkerProcess>(program);
        QObject::connect(worker.get(), &Worker::told, [this] { ++told; });
        return worker;
    };
    rack = std::make_unique<Rack>(QList{settings}, store, createWorker,
        RegisterAgent::Options{.journal = store.fileName(), .longestUnreached = longestUnreached});
    QObject::connect(rack.get(), &Rack::stopped, [this] { isStopped = true; });
    rack->start();
}

void WorkerTest::stopRack()
{
    rack->stop();
    EXPECT_TRUE(until([this] { return isStopped; }));
    rack.reset();
}

void WorkerTest::queue(const QString& id, const QString& kind)
{
    store.accept(sale::plainRequest(id, kind, {}, "till1"));
    rack->agents().at("till1")->wake();
}

void WorkerTest::queueSale(const QString& id)
{
    store.accept({id, "sell", readAll(FRSPF_EXAMPLES "/sale.json"), "till1"});
    rack->agents().at("till1")->wake();
}

bool WorkerTest::until(const std::function<bool()>& isSo)
{
    QElapsedTimer timer;
    timer.start();
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (isSo() || timer.hasExpired(longestMs))
            loop.quit();
    });
    look.start(1);
    loop.exec();
    return isSo();
}

bool WorkerTest::untilWaiting(const QString& reason)
{
    return until([&] { return waiting() == reason; });
}

bool WorkerTest::untilEnded(const QString& id)
{
    return until([&] {
        const sale::DocumentState state = document(id).state;
        return state != sale::DocumentState::Queued && state != sale::DocumentState::Running;
    });
}

QList<qint64> WorkerTest::workers()
{
    QList<qint64> ids;
    const QByteArray children = readAll(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
    for (const QByteArray& id : children.split(' ')) {
        if (readAll(QStringLiteral("/proc/%1/cmdline").arg(id.toLongLong())).contains("--worker"))
            ids.append(id.toLongLong());
    }
    return ids;
}

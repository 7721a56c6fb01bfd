#pragma once

#include "rack/rack.h"

#include "e2e/programs.h"
#include "sqlitestore.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

/// The service's side of one register, with workers that are processes, over a register of software.
class WorkerTest : public testing::Test
{
protected:
    ~WorkerTest() override;

    void startRegister(const QStringList& options = {});
    void startRack();
    /// The port is left.
    void stopRack();
    void queue(const QString& id, const QString& kind = QStringLiteral("sell"));
    void queueSale(const QString& id);

    /// Runs the event loop until it is so.
    static bool until(const std::function<bool()>& isSo);
    bool untilWaiting(const QString& reason);
    bool untilEnded(const QString& id);

    sale::StoredDocument document(const QString& id) const { return store.findId(id).value(); }
    QJsonObject view() const { return rack->agents().at(QStringLiteral("till1"))->view(); }
    QString waiting() const { return view().value(QStringLiteral("waiting")).toString(); }
    /// Children of this process.
    static QList<qint64> workers();

    QTemporaryDir folder;
    sale::SqliteStore store{folder.filePath(QStringLiteral("journal.sqlite"))};
    std::unique_ptr<Emulator> emulator;
    frserver::RegisterSettings settings;
    std::unique_ptr<frserver::Rack> rack;
    QString program = QStringLiteral(FRSERVER);
    qint64 longestUnreached = frserver::RegisterAgent::Options().longestUnreached;
    bool isStopped = false;
    /// Ticks of the line, and answers.
    int told = 0;
};

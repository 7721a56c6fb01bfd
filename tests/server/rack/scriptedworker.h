#pragma once

#include "rack/worker.h"

#include <gtest/gtest.h>
#include <QList>

/// A worker that a test works by hand.
class ScriptedWorker : public frserver::Worker
{
public:
    void start() override
    {
        EXPECT_FALSE(isAlive);
        isAlive = true;
        isBusy = hasEnded = false;
        ++starts;
    }

    void send(const QJsonObject& message) override
    {
        // One at a time: nothing is asked of a worker that is at something, or that is not there.
        EXPECT_TRUE(isAlive);
        if (!message.contains("do")) {
            leases.append(message.value("lease").toObject());
            return;
        }
        EXPECT_FALSE(isBusy) << qPrintable(message.value("do").toString());
        isBusy = true;
        last = message;
        did.append(message.value("do").toString() + ' ' + message.value("id").toString());
        if (!hasEnded)
            Q_EMIT told({{"at", message.value("n")}});
    }

    void end() override
    {
        EXPECT_FALSE(at().startsWith("make"));
        did.append("end");
    }

    void kill() override
    {
        ++kills;
        die();
    }

    void die()
    {
        isAlive = isBusy = false;
        Q_EMIT ended("killed");
    }

    void tick() { Q_EMIT told({{"line", "read"}}); }

    void answer(QJsonObject answer)
    {
        isBusy = false;
        answer.insert("re", last.value("n"));
        Q_EMIT told(answer);
    }

    void fail(const QString& reason)
    {
        answer({{"failure", QJsonObject{{"reason", reason}, {"text", "of " + reason}}}});
    }

    /// What it is at; empty for nothing.
    QString at() const { return isBusy ? did.constLast().trimmed() : QString(); }

    QJsonObject last;
    QStringList did;
    /// Told while it was at something.
    QList<QJsonObject> leases;
    bool isAlive = false;
    bool isBusy = false;
    /// Nothing that it is sent reaches it, which nobody knows yet.
    bool hasEnded = false;
    int starts = 0;
    int kills = 0;
};

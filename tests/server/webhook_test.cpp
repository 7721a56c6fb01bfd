#include "sqlitestore.h"
#include "webhook/webhook.h"

#include "sale/hostclock.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

using frserver::Delivery;
using frserver::Webhook;

class WebhookTest : public testing::Test
{
protected:
    WebhookTest() { outbox.open(); }

    void end(const QString& id, sale::DocumentState state)
    {
        const std::optional<int> attempt
            = store.acceptAndBegin({id, "cashIn", R"({"type":"cashIn","sum":1})", "till1"},
                {.markBefore = {{"drive", "9999000000000001"}}});
        store.settle(id, attempt.value(),
            {.state = state,
                .reason = state == sale::DocumentState::NotIssued ? sale::StateReason::Refused
                                                                  : sale::StateReason::None});
    }

    /// What is posted until nothing is left to do for now.
    void run(Webhook& hook)
    {
        hook.wake();
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
    }

    QStringList told() const
    {
        QStringList list;
        for (const Delivery& delivery : posted) {
            const QJsonObject body = QJsonDocument::fromJson(delivery.body).object();
            list.append(body.value("id").toString() + ' ' + body.value("state").toString());
        }
        return list;
    }

    sale::GivenTime clock{{{2025, 3, 1}, {9, 0}, Qt::UTC}};
    QTemporaryDir folder;
    sale::SqliteStore store{folder.filePath("journal.sqlite")};
    frserver::Outbox outbox{folder.filePath("journal.sqlite"), 1000};
    QList<Delivery> posted;
    /// Ids that are not taken.
    QStringList refused;
    Webhook webhook{outbox, [this](const Delivery& delivery, const Webhook::Done& done) {
                        posted.append(delivery);
                        done(!refused.contains(delivery.documentId));
                    }};
};

TEST_F(WebhookTest, TellsEachEndOnce)
{
    end("document:1", sale::DocumentState::Issued);
    end("document:2", sale::DocumentState::Unknown);
    store.settle(
        "document:2", 1, {.state = sale::DocumentState::Issued, .documentNumber = 5, .by = "Петров"});
    store.accept({"document:3", "cashIn", "{}", "till1"});
    run(webhook);
    EXPECT_EQ(told(), (QStringList{"document:1 issued", "document:2 unknown", "document:2 issued"}));
    const QJsonObject body = QJsonDocument::fromJson(posted.last().body).object();
    EXPECT_EQ(body.value("documentNumber").toInt(), 5);
    EXPECT_TRUE(body.value("documentNumberRead").toBool());
    EXPECT_TRUE(body.value("reason").isNull());
    EXPECT_EQ(body.value("settled").toString(), "2025-03-01T09:00:00.000Z");
    store.withdraw("document:3");
    run(webhook);
    EXPECT_EQ(told().last(), "document:3 notIssued");
    // Without a webhook nothing is kept.
    outbox.close();
    end("document:4", sale::DocumentState::Issued);
    EXPECT_EQ(outbox.count(), 0);
}

TEST_F(WebhookTest, KeepsTheOrderOfADocumentAndHoldsNoOtherUp)
{
    refused = QStringList{"document:1"};
    end("document:1", sale::DocumentState::NotIssued);
    end("document:1", sale::DocumentState::Issued);
    end("document:2", sale::DocumentState::Issued);
    run(webhook);
    EXPECT_EQ(told(), (QStringList{"document:1 notIssued", "document:2 issued"}));
    const qint64 number = posted.first().number;
    // Not before its pause is over.
    run(webhook);
    EXPECT_EQ(posted.size(), 2);
    clock.time = clock.time.addSecs(2);
    refused.clear();
    run(webhook);
    EXPECT_EQ(told().mid(2), (QStringList{"document:1 notIssued", "document:1 issued"}));
    EXPECT_EQ(posted.at(2).number, number);
}

TEST_F(WebhookTest, OutlivesTheServiceAndGivesUpAfterThreeDays)
{
    end("document:1", sale::DocumentState::Issued);
    int attempts = 0;
    const QDateTime begin = clock.time;
    while (outbox.count() > 0 && attempts < 1000) {
        Webhook next(outbox, [this](const Delivery&, const Webhook::Done& done) { done(false); });
        run(next);
        ++attempts;
        if (const QDateTime due = outbox.nextDue(); due.isValid())
            clock.time = due;
    }
    EXPECT_EQ(begin.daysTo(clock.time), 3);
    EXPECT_GT(attempts, 3 * 24 * 6);
}

TEST_F(WebhookTest, AClockThatJumpsDropsNothingAndHoldsNothingUp)
{
    refused = QStringList{"document:1"};
    end("document:1", sale::DocumentState::Issued);
    clock.time = clock.time.addYears(1);
    run(webhook);
    EXPECT_EQ(outbox.count(), 1);
    refused.clear();
    clock.time = clock.time.addYears(-1);
    run(webhook);
    EXPECT_EQ(told(), (QStringList{"document:1 issued", "document:1 issued"}));
    EXPECT_EQ(outbox.count(), 0);
}

TEST(WebhookSignature, IsThatOfTheCommonLibraries)
{
    // Made with Python: base64(hmac(b"secret", ID + b".1740819600.{\"id\":\"a\"}", sha256)).
    Delivery delivery;
    delivery.number = 7;
    delivery.body = R"({"id":"a"})";
    const QByteArray id = Webhook::messageId(delivery);
    EXPECT_EQ(id, "2188733ce3e797c46cec540cd625e79a");
    EXPECT_EQ(Webhook::signature("secret", delivery, 1'740'819'600),
        "v1,zHB+SVmXPcvTS+4r4rr/ZujvpOlQc7IAhYvh6QnYbYM=");
    // The same number in another journal.
    delivery.body = R"({"id":"b"})";
    EXPECT_NE(Webhook::messageId(delivery), id);
}

} // namespace

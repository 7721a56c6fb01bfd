// Documents that are posted to a pool.

#include "apirig.h"

namespace {

class PoolsTest : public ApiTest
{
protected:
    Served postTo(const QByteArray& id, const QByteArray& body = sale(), const QByteArray& prefer = {})
    {
        return post(id, body, prefer, "shop");
    }

    /// As a register's own service does, or another one of the rack.
    void claim(const QString& id, const QString& till)
    {
        ASSERT_TRUE(store.claim({till, {"shop"}, false, {}, id}));
        api.documentChanged(id);
    }

    QJsonObject pool() { return ask("GET", "/v1/pools/shop").json(); }
    int queued(const char* path)
    {
        return ask("GET", path).json().value("queue").toObject().value("queued").toInt();
    }
};

TEST_F(PoolsTest, DocumentWaitsInThePoolUntilARegisterHasIt)
{
    const Served posted = postTo("document:1");
    EXPECT_EQ(posted.status, 202) << posted.all();
    EXPECT_EQ(posted.text("pool"), "shop");
    EXPECT_TRUE(posted.json().value("register").isNull());
    EXPECT_EQ(posted.json().value("total"), 305.23) << "as any of its registers would make it";
    EXPECT_EQ(shop.told, QStringList{"wake"});
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const qint64 seconds = now.secsTo(store.findId("document:1")->request.startBefore);
    EXPECT_TRUE(seconds > 290 && seconds <= 300) << "the pool's own";
    EXPECT_EQ(queued("/v1/pools/shop"), 1);
    EXPECT_FALSE(pool().value("queue").toObject().value("oldest").isNull());
    claim("document:1", "till2");
    EXPECT_EQ(queued("/v1/pools/shop"), 0);
    EXPECT_EQ(queued("/v1/registers/till2"), 1);
    // A person moves it out and in, whoever has it.
    const auto move = [this](const QByteArray& place) {
        return ask("POST", "/v1/documents/document:1/move", place).status;
    };
    EXPECT_EQ(move(R"({"register":"till2"})"), 200);
    EXPECT_EQ(till2.told, QStringList{"wake"});
    shop.told.clear();
    EXPECT_EQ(move(R"({"pool":"shop","register":"till1"})"), 400);
    EXPECT_EQ(move(R"({"pool":"shop"})"), 200);
    EXPECT_EQ(shop.told, QStringList{"wake"});
    EXPECT_EQ(queued("/v1/pools/shop"), 1);
    EXPECT_EQ(queued("/v1/registers/till2"), 0);
    claim("document:1", "till1");
    issue("document:1");
    EXPECT_EQ(move(R"({"pool":"shop"})"), 409);
    EXPECT_EQ(postTo("document:1").status, 200);
    EXPECT_EQ(post("document:1", sale()).text("pool"), "shop") << "one id is one document, wherever posted";
    EXPECT_TRUE(till1.told.isEmpty());
    const QByteArray text = ask("GET", "/metrics").body;
    EXPECT_TRUE(text.contains("frserver_pool_queued_documents{pool=\"shop\"} 0\n"));
    EXPECT_TRUE(
        text.contains("frserver_documents_total{register=\"till1\",state=\"issued\",reason=\"\"} 1\n"));
}

TEST_F(PoolsTest, WhoeverWaitsIsFollowedFromPlaceToPlace)
{
    const Served waiting = postTo("document:1", sale(), "wait=30");
    EXPECT_EQ(shop.told, (QStringList{"wake", "document:1 awaited"}));
    claim("document:1", "till1");
    EXPECT_EQ(shop.told.last(), "document:1 not awaited");
    EXPECT_EQ(till1.told, QStringList{"document:1 awaited"});
    store.giveBack("till1");
    api.documentChanged("document:1");
    EXPECT_EQ(till1.told.last(), "document:1 not awaited");
    EXPECT_EQ(shop.told.last(), "document:1 awaited");
    claim("document:1", "till2");
    issue("document:1");
    EXPECT_EQ(waiting.later().status, 201);
    EXPECT_EQ(waiting.later().text("register"), "till2");
    EXPECT_EQ(till2.told.last(), "document:1 not awaited");
}

TEST_F(PoolsTest, TakesWhatEachOfItsRegistersWouldMake)
{
    const QByteArray nameless = QByteArray(sale())
                                    .replace("\"operator\"", "\"clientInfo\"")
                                    .replace("\"vatin\": \"772100000040\"", "\"emailOrPhone\": \"a@b.ru\"");
    const std::tuple<const char*, QByteArray, const char*> rows[] = {
        {"a report", R"({"type":"zReport"})", "a pool takes"},
        {"other taxes", QByteArray(sale()).replace("osn", "patent"), "must be one of the pool's: osn"},
        {"taxes that nobody names", QByteArray(sale()).replace("\"taxationType\": \"osn\",", ""),
            "the pool's"},
        {"no cashier, whom till1 alone has", nameless, "has no cashier="},
    };
    for (const auto& [what, body, words] : rows) {
        const Served served = postTo("document:1", body);
        EXPECT_EQ(served.status, 400) << what << served.all();
        EXPECT_TRUE(served.body.contains(words)) << what << served.all();
    }
    EXPECT_TRUE(store.find({}).isEmpty());
    for (const char* const id : {"document:1", "document:2", "document:3", "document:4"})
        EXPECT_EQ(postTo(id).status, 202);
    const Served full = postTo("document:5");
    EXPECT_EQ(full.status, 429);
    EXPECT_TRUE(full.body.contains("for the pool shop"));
    EXPECT_EQ(postTo("document:4").status, 202) << "which is known";
    const QByteArray electronic = QByteArray(sale()).replace("\"type\": \"sell\"",
        R"("type": "sell", "electronically": true, "clientInfo": {"emailOrPhone": "a@b.ru"})");
    EXPECT_EQ(ask("DELETE", "/v1/documents/document:4").status, 200);
    const Served paperless = postTo("document:5", electronic);
    EXPECT_EQ(paperless.status, 202) << paperless.all();
    EXPECT_TRUE(store.claim({"till1", {"shop"}, true})->request.id == "document:5");
}

TEST_F(PoolsTest, TokenIsForAPoolAsForARegister)
{
    postTo("document:0");
    api.setTokens(true,
        {token("web", "sell", {"pool:shop"}), token("looker", "read", {"pool:shop"}),
            token("till", "sell", {"till1"})});
    EXPECT_EQ(post("document:web", sale(), {}, "shop", "web").status, 202);
    EXPECT_EQ(post("document:web", sale(), {}, "till1", "web").status, 403);
    EXPECT_EQ(post("document:till", sale(), {}, "shop", "till").status, 403);
    EXPECT_EQ(as("till", "POST", "/v1/documents/document:web/move", R"({"register":"till1"})").status, 404);
    EXPECT_EQ(as("web", "POST", "/v1/documents/document:web/move", R"({"register":"till1"})").status, 403);
    claim("document:web", "till1");
    issue("document:web");
    // Whatever register has made it.
    EXPECT_EQ(as("web", "GET", "/v1/documents/document:web").status, 200);
    EXPECT_EQ(as("looker", "GET", "/v1/documents/document:web").status, 200);
    EXPECT_EQ(as("till", "GET", "/v1/documents/document:web").status, 404);
    EXPECT_EQ(as("web", "GET", "/v1/pools/shop").status, 200);
    EXPECT_EQ(as("web", "GET", "/v1/pools").json().value("pools").toArray().size(), 1);
    EXPECT_EQ(as("till", "GET", "/v1/pools").json().value("pools").toArray().size(), 0);
    EXPECT_EQ(as("looker", "GET", "/v1/documents?pool=shop").json().value("documents").toArray().size(), 2);
    EXPECT_EQ(as("web", "GET", "/v1/me").json().value("pools").toArray(), QJsonArray{"shop"});
}

} // namespace

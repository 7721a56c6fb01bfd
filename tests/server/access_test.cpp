#include "access/tokenfile.h"
#include "apirig.h"

#include <QFileInfo>

#include <functional>

namespace {

using frserver::TokenError;
using frserver::TokenFile;

class AccessTest : public ApiTest
{
protected:
    AccessTest()
    {
        api.setTokens(true,
            {token("reader", "read", {"till1"}), token("seller", "sell", {"till1"}),
                token("other", "sell", {"till1"}), token("admin", "admin")});
    }

    int status(const QByteArray& token, const QByteArray& method, const QByteArray& target,
        const QByteArray& body = {})
    {
        return as(token, method, target, body).status;
    }
};

TEST_F(AccessTest, LetsEachRoleDoItsOwn)
{
    ASSERT_EQ(post("document:1", cashIn, {}, "till1", "seller").status, 202);
    const QByteArrayList tokens{"reader", "seller", "other", "admin", "nobody"};
    // The statuses in that order.
    const std::tuple<const char*, const char*, QByteArray, QList<int>> rows[] = {
        {"GET", "/v1/documents/document:1", "", {200, 200, 404, 200, 401}},
        {"GET", "/v1/registers", "", {200, 200, 200, 200, 401}},
        {"GET", "/v1/registers/till2", "", {403, 403, 403, 200, 401}},
        {"POST", "/v1/documents/document:1/move", R"({"register":"till2"})", {403, 403, 404, 200, 401}},
        {"POST", "/v1/registers/till1/pause", "", {403, 403, 403, 202, 401}},
        {"POST", "/v1/check", cashIn, {200, 200, 200, 200, 401}},
        {"POST", "/v1/preview", sale(), {200, 200, 200, 200, 401}},
        {"GET", "/metrics", "", {200, 200, 200, 200, 401}},
        {"GET", "/healthz", "", {200, 200, 200, 200, 200}},
        {"GET", "/v1/openapi.json", "", {200, 200, 200, 200, 200}},
    };
    for (const auto& [method, target, body, expected] : rows) {
        QList<int> statuses;
        for (const QByteArray& token : tokens)
            statuses.append(as(token, method, target, body, {{"Prefer", "wait=0"}}).status);
        EXPECT_EQ(statuses, expected) << method << ' ' << target;
    }
    // What it may do is told.
    EXPECT_EQ(as("seller", "GET", "/v1/me").body,
        R"({"name":"seller","pools":[],"registers":["till1"],"role":"sell"})"
        "\n");
    EXPECT_EQ(as("admin", "GET", "/v1/me").body,
        R"({"name":"admin","pools":["shop"],"registers":["till1","till2"],"role":"admin"})"
        "\n");
    EXPECT_EQ(status("nobody", "GET", "/v1/me"), 401);
}

TEST_F(AccessTest, DrawsASellerItsOwnAlone)
{
    const QByteArray back = R"({"type":"sellReturn","taxationType":"osn","returnOf":"document:1",)"
                            R"("items":[{"name":"Хлеб Бородинский 400 г","quantity":1}],)"
                            R"("payments":[{"type":"cash","sum":64.90}]})";
    post("document:1", sale(), {}, "till1", "seller");
    issue("document:1");
    for (const auto& [token, drawn, previewed] :
        {std::tuple("seller", 200, 200), std::tuple("other", 404, 400)}) {
        EXPECT_EQ(status(token, "GET", "/v1/documents/document:1/picture"), drawn) << token;
        const Served served = as(token, "POST", "/v1/preview?register=till1", back);
        EXPECT_EQ(served.status, previewed) << token << served.all();
        // What that sale says would be told by the picture.
        EXPECT_EQ(painter.ordered.receipt.contains("64.9,"), drawn == 200)
            << painter.ordered.receipt.toStdString();
        painter.ordered = {};
    }
}

TEST_F(AccessTest, ShowsASellerItsOwnAlone)
{
    post("document:1", cashIn, {}, "till1", "seller");
    post("document:2", cashIn, {}, "till1", "other");
    EXPECT_EQ(post("document:2", cashIn, {}, "till1", "seller").status, 403);
    EXPECT_EQ(status("seller", "DELETE", "/v1/documents/document:2"), 404);
    const auto ids = [this](const QByteArray& token) {
        QStringList list;
        for (const QJsonValue document :
            as(token, "GET", "/v1/documents").json().value("documents").toArray())
            list.append(document["id"].toString());
        return list;
    };
    EXPECT_EQ(ids("seller"), QStringList{"document:1"});
    EXPECT_EQ(ids("reader"), (QStringList{"document:2", "document:1"}));
    // What is sold by others is no event of its own; that of a register is everybody's who may use it.
    const Served stream = as("seller", "GET", "/v1/events");
    issue("document:2");
    issue("document:1");
    till1.state = "making";
    till1.making = "document:2";
    till2.state = "making";
    api.registerChanged("till1");
    api.registerChanged("till2");
    QByteArray events;
    while (!events.contains("event: register"))
        events += stream.stream->take();
    EXPECT_FALSE(events.contains("document:2"));
    EXPECT_TRUE(events.contains("document:1"));
    EXPECT_FALSE(events.contains("till2"));
    // Nor does the register tell it of them.
    post("document:3", sale(), {}, "till1", "other");
    issue("document:3", 8);
    for (const auto& [token, isShown] :
        {std::pair("seller", false), std::pair("other", true), std::pair("reader", true)}) {
        const QByteArray shown = as(token, "GET", "/v1/registers/till1").body;
        EXPECT_EQ(shown.contains("\"document\":\"document:2\""), isShown) << token;
        EXPECT_EQ(shown.contains("document:3"), isShown) << token;
        EXPECT_EQ(as(token, "GET", "/v1/registers").body.contains("document:3"), isShown) << token;
    }
}

TEST_F(AccessTest, TellsASellerOfItsOwnWhateverHasBecomeOfIt)
{
    // Moved by somebody else to a register that is not the seller's.
    post("document:1", cashIn, {}, "till1", "seller");
    ASSERT_EQ(status("admin", "POST", "/v1/documents/document:1/move", R"({"register":"till2"})"), 200);
    issue("document:1");
    EXPECT_EQ(status("seller", "GET", "/v1/documents/document:1"), 200);
    EXPECT_EQ(post("document:1", cashIn, {}, "till1", "seller").status, 200);
    EXPECT_EQ(status("other", "GET", "/v1/documents/document:1"), 404);
    // Accepted when there were no tokens: it is that of whoever knows its body.
    store.accept({"document:2", "cashIn", cashIn, "till1"});
    issue("document:2", 8);
    EXPECT_EQ(post("document:2", R"({"type":"cashIn","sum":1})", {}, "till1", "seller").status, 403);
    EXPECT_EQ(post("document:2", cashIn, {}, "till1", "seller").status, 200);
    EXPECT_EQ(post("document:2", cashIn, {}, "till1", "other").status, 403);
    // Archived.
    store.archivedIds = {"document:3"};
    owners.claim("document:3", "seller");
    EXPECT_EQ(post("document:3", cashIn, {}, "till1", "other").status, 422);
    for (const auto& [token, told] :
        {std::pair("seller", 410), {"other", 404}, {"reader", 404}, {"admin", 410}})
        EXPECT_EQ(status(token, "GET", "/v1/documents/document:3"), told) << token;
}

TEST(TokenFile, KeepsHashesAlone)
{
    const QTemporaryDir folder;
    TokenFile tokens(folder.filePath("new/tokens"));
    EXPECT_FALSE(tokens.exists());
    EXPECT_TRUE(tokens.read().isEmpty());
    const QByteArray first = tokens.add("shop", "sell", {"till1", "till2"});
    const QByteArray second = tokens.add("boss", "admin", {});
    EXPECT_NE(first, second);
    QFile file(tokens.fileName());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_FALSE(text.contains(first));
    EXPECT_EQ(QFileInfo(file).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
    const QList<frserver::TokenEntry> entries = tokens.read();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries.at(0).registers, (QStringList{"till1", "till2"}));
    EXPECT_TRUE(entries.at(1).registers.isEmpty());
    tokens.remove("shop");
    tokens.remove("boss");
    EXPECT_TRUE(tokens.read().isEmpty());
    EXPECT_TRUE(tokens.exists());
}

TEST(TokenFile, SaysWhatIsWrong)
{
    const QTemporaryDir folder;
    const auto expectError = [](const char* part, const std::function<void()>& work) {
        try {
            work();
            ADD_FAILURE() << part;
        } catch (const TokenError& error) {
            EXPECT_TRUE(QByteArray(error.what()).contains(part)) << error.what();
        }
    };
    TokenFile tokens(folder.filePath("tokens"));
    tokens.add("shop", "sell", {});
    expectError("already", [&] { tokens.add("shop", "read", {}); });
    expectError("a b", [&] { tokens.add("a b", "read", {}); });
    expectError("read, sell, admin", [&] { tokens.add("new", "owner", {}); });
    expectError("gone", [&] { tokens.remove("gone"); });
    for (const auto& [line, part] :
        {std::pair("shop sell *\n", ":2: is not NAME"), {"shop owner * 00\n", ":2: the role"},
            {"shop sell * 00\n", ":2: the hash"}, {"\xff sell * 00\n", ":2: the name"}}) {
        QFile file(tokens.fileName());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("# first\n") + line);
        file.close();
        expectError(part, [&] { tokens.read(); });
    }
    // One that cannot be looked at is there.
    ASSERT_TRUE(QFile::link("loop", folder.filePath("loop")));
    const TokenFile unseen(folder.filePath("loop/tokens"));
    EXPECT_TRUE(unseen.exists());
    expectError("loop/tokens", [&] { unseen.read(); });
}

} // namespace

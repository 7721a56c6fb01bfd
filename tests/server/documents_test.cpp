#include "apirig.h"
#include "sale/hostclock.h"

namespace {

class DocumentsTest : public ApiTest
{
protected:
    std::string errors(const QByteArray& key, const QByteArray& body)
    {
        QList<http::Headers::Field> headers;
        if (!key.isEmpty())
            headers.append({"Idempotency-Key", key});
        const Served served = ask("POST", "/v1/registers/till1/documents", body, headers);
        EXPECT_EQ(served.status, 400) << served.all();
        return QJsonDocument(served.json().value("errors").toArray()).toJson().toStdString();
    }

    QJsonObject stored(const QString& id) { return ask("GET", "/v1/documents/" + id.toLatin1()).json(); }
};

TEST_F(DocumentsTest, RefusesWhatIsWrongAndStoresNothing)
{
    // Path and words of one of the errors.
    const std::tuple<const char*, QByteArray, QByteArray, const char*, const char*> rows[] = {
        {"no id", "", cashIn, "id", "Idempotency-Key"},
        {"a short id", "short", cashIn, "id", "8 to 64"},
        {"two ids", "document:1", R"({"id":"document:2","type":"cashIn","sum":1})", "id", "another one"},
        {"two ids, of which one is known", "document:1", R"({"id":"earlier:1","type":"cashIn","sum":1})",
            "id", "another one"},
        {"an id that is no text", "", R"({"id":12345678,"type":"cashIn","sum":1})", "id", "text"},
        {"no JSON", "document:1", "{", "", "syntax error"},
        {"a key twice", "document:1", R"({"type":"cashIn","sum":1,"sum":2})", "sum", "twice"},
        {"a type that is none", "document:1", R"({"type":"gift"})", "type", "sell"},
        {"cash of nothing", "document:1", R"({"type":"cashIn","sum":0})", "sum", "above zero"},
        {"parts of a kopeck", "document:1", R"({"type":"cashOut","sum":1.005})", "sum", ""},
        {"a member that is not known", "document:1", R"({"type":"zReport","sum":1})", "sum", ""},
        {"no lines", "document:1", R"({"type":"text","lines":[]})", "lines", "array"},
        {"a line that is none", "document:1", R"({"type":"text","lines":["a",1]})", "lines[1]", "text"},
        {"a copy of nothing", "document:1", R"({"type":"copy","documentNumber":0})", "documentNumber", ""},
        {"a time without a zone", "document:1",
            R"({"type":"cashIn","sum":1,"startBefore":"2024-03-01T09:00:00"})", "startBefore", "zone"},
        {"a receipt", "document:1", R"({"type":"sell","items":[],"payments":[]})", "items", ""},
    };
    // What has no id is not taken for whichever document is there.
    ASSERT_EQ(post("earlier:1", cashIn).status, 202);
    for (const auto& [what, key, body, path, part] : rows) {
        const std::string text = errors(key, body);
        EXPECT_NE(text.find("\"path\": \"" + std::string(path) + "\""), std::string::npos) << what << text;
        EXPECT_NE(text.find(part), std::string::npos) << what << text;
    }
    // Both at once.
    const std::string text = errors("short", R"({"type":"cashIn"})");
    EXPECT_NE(text.find("\"id\""), std::string::npos);
    EXPECT_NE(text.find("\"sum\""), std::string::npos);
    EXPECT_EQ(store.find({}).size(), 1);
}

TEST_F(DocumentsTest, KeepsWhatIsOfTheDocumentAlone)
{
    const std::tuple<QByteArray, QByteArray, QByteArray> rows[] = {
        {"document:1", R"({"sum":1.50,"id":"document:1","startBefore":5,"type":"cashIn"})",
            R"({"sum":1.5,"type":"cashIn"})"},
        {"\"document:2\"", R"({"type":"text","lines":["","строка"]})",
            R"({"lines":["","строка"],"type":"text"})"},
        {"document:3", R"({"type":"copy","documentNumber":12})", R"({"documentNumber":12,"type":"copy"})"},
    };
    for (const auto& [key, body, kept] : rows) {
        EXPECT_EQ(post(key, body).status, 202) << key.constData();
        const auto document = store.findId(QByteArray(key).replace('"', ""));
        ASSERT_TRUE(document);
        EXPECT_EQ(document->request.body, kept);
    }
    EXPECT_EQ(till1.told, QStringList({"wake", "wake", "wake"}));
    // An answer of earlier, in any order and form of the fields, is the same document.
    EXPECT_EQ(post("document:1", R"({"type":"cashIn", "sum":1.5, "startBefore":900})").status, 202);
    EXPECT_EQ(till1.told.size(), 3);
}

TEST_F(DocumentsTest, HasTheTimeOfItsOwnOrOfTheRegister)
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    post("document:1", cashIn);
    post("document:2", R"({"type":"cashIn","sum":1,"startBefore":"2031-01-01T00:00:00+03:00"})");
    post("document:3", sale(), {}, "till2");
    const qint64 usual = before.secsTo(store.findId("document:1")->request.startBefore);
    EXPECT_GE(usual, 119);
    EXPECT_LE(usual, 130);
    EXPECT_EQ(stored("document:2").value("startBefore").toString(), "2030-12-31T21:00:00.000Z");
    EXPECT_TRUE(stored("document:3").value("startBefore").isNull());
}

TEST_F(DocumentsTest, RefusesAnotherBodyUnderItsId)
{
    const QByteArray id = "document:1";
    EXPECT_EQ(post(id, cashIn).headers.value("Location"), "/v1/documents/document:1");
    const sale::StoredDocument first = store.findId(id).value();
    const auto expectConflict = [&](const char* state) {
        const Served served = post(id, R"({"type":"cashIn","sum":2})");
        EXPECT_EQ(served.status, 422) << state;
        EXPECT_EQ(served.text("digest").toLatin1(), first.digest);
        EXPECT_EQ(served.text("accepted"), first.accepted.toString(Qt::ISODateWithMs));
        // No state, which a client might take for that of its own document.
        EXPECT_FALSE(served.json().contains("state"));
        EXPECT_EQ(store.findId(id)->request.body, first.request.body);
    };
    expectConflict("queued");
    begin(id);
    expectConflict("running");
    end(id, {});
    expectConflict("unknown");
    store.settle(id, 1, {.state = sale::DocumentState::Issued, .documentNumber = 3});
    expectConflict("issued");
}

TEST_F(DocumentsTest, DoesNotJudgeAnewWhatItHasAcceptedBefore)
{
    // By rules, of a day, or for a register that were others.
    const QByteArray body = R"({"sum":0,"type":"cashIn"})";
    const QByteArray id = "document:1";
    store.accept({id, "cashIn", body, "till1"});
    EXPECT_EQ(post(id, body).status, 202);
    begin(id);
    store.settle(id, 1, {.state = sale::DocumentState::Issued, .documentNumber = 3});
    const Served replayed = post(id, body);
    EXPECT_EQ(replayed.status, 200) << replayed.all();
    EXPECT_TRUE(replayed.json().value("replayed").toBool());
    EXPECT_EQ(post(id, R"({"sum":-1,"type":"cashIn"})").status, 422);
    EXPECT_EQ(post("document:2", body).status, 400);
}

TEST_F(DocumentsTest, TakesACorrectedBodyAfterItWasNotIssued)
{
    const QByteArray id = "document:1";
    Served waiting = post(id, cashIn, "wait=30");
    ASSERT_TRUE(waiting.pending);
    refuse(id);
    const Served refused = waiting.later();
    EXPECT_EQ(refused.status, 409);
    EXPECT_EQ(refused.type(), "application/problem+json");
    EXPECT_EQ(refused.text("state"), "notIssued");
    EXPECT_EQ(refused.text("reason"), "refused");
    EXPECT_EQ(refused.json().value("error").toObject().value("kind").toString(), "cash");
    EXPECT_TRUE(refused.text("detail").contains("Не хватает наличных"));
    waiting = post(id, R"({"type":"cashIn","sum":2})", "wait=30");
    issue(id);
    EXPECT_EQ(waiting.later().status, 201);
    EXPECT_EQ(stored(id).value("attempts").toArray().size(), 2);
}

TEST_F(DocumentsTest, TwoAtOnceAreOneDocumentAndWhoHasGoneIsNotWaitedFor)
{
    const auto wait = [this](const QByteArray& id) { return post(id, sale(), "wait=30"); };
    const Served both[]{wait("document:1"), wait("document:1")};
    issue("document:1");
    for (const Served& served : both) {
        EXPECT_EQ(served.later().status, 201);
        EXPECT_EQ(served.later().json().value("total").toDouble(), 305.23);
        EXPECT_EQ(served.later().json().value("change").toDouble(), 194.77);
    }
    EXPECT_EQ(till1.told, QStringList({"wake", "document:1 awaited", "document:1 not awaited"}));
    const Served gone[]{wait("document:2"), wait("document:2")};
    gone[0].pending->leave();
    EXPECT_EQ(till1.told.last(), "document:2 awaited");
    gone[1].pending->leave();
    EXPECT_EQ(till1.told.last(), "document:2 not awaited");
    issue("document:2", 8);
    EXPECT_EQ(gone[1].later().status, 0);
    EXPECT_EQ(store.find({}).size(), 2);
}

TEST_F(DocumentsTest, AsksAgainBeforeItSaysThatNobodyKnows)
{
    const QByteArray id = "document:1";
    post(id, sale());
    lose(id);
    till1.told.clear();
    Served waiting = post(id, sale());
    ASSERT_TRUE(waiting.pending);
    EXPECT_EQ(till1.told, QStringList({"settle document:1", "document:1 awaited"}));
    api.documentChanged(id);
    const Served unknown = waiting.later();
    EXPECT_EQ(unknown.status, 409);
    EXPECT_EQ(unknown.text("state"), "unknown");
    EXPECT_TRUE(unknown.text("detail").contains("/v1/documents/document:1/resolve"));
    EXPECT_FALSE(unknown.json().value("error").toObject().value("action").toString().isEmpty());
    waiting = post(id, sale());
    store.settle(id, 1, {.state = sale::DocumentState::Issued, .documentNumber = 3});
    api.documentChanged(id);
    EXPECT_EQ(waiting.later().status, 201);
}

TEST_F(DocumentsTest, BelievesNoNumberThatTheDriveHadNotReachedBehindIt)
{
    for (const char* const id : {"document:1", "document:2"}) {
        post(id, sale());
        lose(id);
    }
    till1.drive = "9999000000000001";
    const sale::HostClock later(3600);
    const std::tuple<QByteArray, QByteArray, int, int> rows[]
        = {{"document:1", "118", 5, 409}, {"document:1", "117", 5, 200},
            // The register was not asked since.
            {"document:2", "118", 3601, 200}};
    for (const auto& [id, number, conditionAge, status] : rows) {
        till1.conditionAge = conditionAge;
        const Served said = ask("POST", "/v1/documents/" + id + "/resolve",
            R"({"state":"issued","documentNumber":)" + number + "}");
        EXPECT_EQ(said.status, status) << said.all();
        EXPECT_TRUE(status == 200 || said.text("detail").contains("had reached number 117")) << said.all();
    }
}

TEST_F(DocumentsTest, WithdrawsAndMovesWhatWasNotBegun)
{
    for (const char* const id : {"document:1", "document:2"})
        post(id, sale());
    const Served waiting = post("document:3", sale(), "wait=30");
    EXPECT_EQ(ask("DELETE", "/v1/documents/document:1").text("reason"), "deleted");
    // Once more is no mistake.
    EXPECT_EQ(ask("DELETE", "/v1/documents/document:1").status, 200);
    begin("document:2");
    const Served late = ask("DELETE", "/v1/documents/document:2");
    EXPECT_EQ(late.status, 409);
    EXPECT_EQ(late.text("state"), "running");
    EXPECT_EQ(ask("POST", "/v1/documents/document:2/move", R"({"register":"till2"})").status, 409);
    EXPECT_EQ(
        ask("POST", "/v1/documents/document:3/move", R"({"register":"till2"})").text("register"), "till2");
    EXPECT_EQ(till2.told, QStringList({"document:3 awaited", "wake"}));
    EXPECT_EQ(till1.told.last(), "document:3 not awaited");
    EXPECT_EQ(stored("document:3").value("register").toString(), "till2");
}

TEST_F(DocumentsTest, TellsWhatWaitsForARegisterThatIsNotThereAnyMore)
{
    const auto missing = [this](const QByteArray& token) {
        return as(token, "GET", "/v1/registers").json().value("notConfigured").toArray();
    };
    api.setTokens(true, {token("admin", "admin"), token("shop", "read", {"till1"})});
    for (const char* const id : {"document:1", "document:2", "document:3"}) {
        store.accept({id, "sell", sale(), "till9"});
        api.documentChanged(id);
    }
    // One that frctl is at.
    store.accept({"document:4", "sell", sale(), "desk"});
    begin("document:4");
    ASSERT_EQ(missing("admin").size(), 1);
    EXPECT_EQ(missing("admin").at(0).toObject().value("name"), "till9");
    EXPECT_EQ(missing("admin").at(0).toObject().value("queue").toObject().value("queued"), 3);
    EXPECT_EQ(missing("shop").size(), 0);
    EXPECT_TRUE(as("admin", "GET", "/readyz").body.contains(R"("till9":"notConfigured")"));
    EXPECT_TRUE(as("admin", "GET", "/metrics")
                    .body.contains(R"(frserver_open_documents{register="till9",state="queued"} 3)"));
    const Served list = as("admin", "GET", "/v1/documents?register=till9");
    EXPECT_EQ(list.json().value("documents").toArray().size(), 3);
    EXPECT_EQ(as("admin", "GET", "/v1/documents/document:1").text("waiting"), "notConfigured");
    as("admin", "DELETE", "/v1/documents/document:1");
    issue("document:2");
    EXPECT_EQ(as("admin", "POST", "/v1/documents/document:3/move", R"({"register":"till2"})").status, 200);
    EXPECT_EQ(missing("admin").size(), 0);
    EXPECT_EQ(as("admin", "GET", "/v1/documents?register=till9").status, 404);
}

TEST_F(DocumentsTest, TakesBackWhatWasSoldAndNoMore)
{
    const QByteArray back
        = R"({"type":"sellReturn","taxationType":"osn","returnOf":"document:1","startBefore":9,)"
          R"("items":[{"name":"Хлеб Бородинский 400 г","quantity":1}],)"
          R"("payments":[{"type":"cash","sum":64.9}]})";
    const auto refusedFor = [&](const QByteArray& id) {
        const Served served = post(id, back);
        EXPECT_EQ(served.status, 409) << served.all();
        EXPECT_FALSE(served.json().contains("state"));
        EXPECT_FALSE(store.findId(id));
        return served.json().value("errors").toArray().first()["path"].toString();
    };
    // Before the sale is there its positions say nothing of their price.
    EXPECT_EQ(post("return:1", back).status, 400);
    post("document:1", sale());
    EXPECT_EQ(refusedFor("return:1"), "returnOf");
    issue("document:1");
    const Served first = post("return:1", back);
    ASSERT_EQ(first.status, 202) << first.all();
    EXPECT_EQ(first.text("returnOf"), "document:1");
    EXPECT_EQ(first.json().value("items").toArray().first()["price"].toDouble(), 64.9);
    EXPECT_EQ(post("return:1", back).status, 202);
    EXPECT_EQ(post("return:2", back).status, 202);
    EXPECT_EQ(refusedFor("return:3"), "items[0].quantity");
    ask("DELETE", "/v1/documents/return:2");
    EXPECT_EQ(post("return:3", back).status, 202);
    const Served other = post("document:2", R"({"type":"cashIn","sum":1,"returnOf":"document:1"})");
    EXPECT_EQ(other.json().value("errors").toArray().first()["path"].toString(), "returnOf");
}

TEST_F(DocumentsTest, RefusesWhatItHasNoRoomFor)
{
    for (const char* const id : {"document:1", "document:2", "document:3", "document:4"})
        EXPECT_EQ(post(id, cashIn).status, 202);
    const Served full = post("document:5", cashIn);
    EXPECT_EQ(full.status, 429);
    EXPECT_FALSE(full.headers.value("Retry-After").isEmpty());
    EXPECT_FALSE(store.findId("document:5"));
    // One that is there is no new one, and the other register has a queue of its own.
    EXPECT_EQ(post("document:4", cashIn).status, 202);
    EXPECT_EQ(post("document:6", sale(), {}, "till2").status, 202);
    EXPECT_EQ(ask("POST", "/v1/documents/document:6/move", R"({"register":"till1"})").status, 429);
    issue("document:1");
    EXPECT_EQ(post("document:5", cashIn).status, 202);
}

TEST_F(DocumentsTest, AtItsEndAcceptsNothingAndKeepsNobodyWaiting)
{
    const Served waiting = post("document:1", cashIn, "wait=30");
    const Served pausing = ask("POST", "/v1/registers/till1/pause");
    api.stop();
    EXPECT_EQ(waiting.later().status, 202);
    EXPECT_EQ(pausing.later().status, 202);
    EXPECT_EQ(ask("POST", "/v1/registers/till1/pause").status, 202);
    EXPECT_EQ(post("document:2", cashIn).status, 503);
    EXPECT_FALSE(store.findId("document:2"));
    EXPECT_EQ(ask("GET", "/readyz").status, 503);
    // Whoever asks after a document is answered as long as the program lives.
    EXPECT_EQ(ask("GET", "/v1/documents/document:1").status, 200);
}

} // namespace

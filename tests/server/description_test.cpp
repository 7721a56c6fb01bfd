#include "apirig.h"
#include "becomes.h"
#include "drawscript.h"
#include "program/pictureprocesses.h"

#include "tests/http/apirecord.h"
#include "tests/http/askrow.h"

namespace {

// In this order, with documents that are issued (1, 6), unknown (2, 3), refused (7) and queued (4, 5).
const AskRow askRows[] = {
    {"GET", "/v1/registers", "", 200, "\"till2\""},
    {"GET", "/v1/registers/till1", "", 200, "\"unknown\":2"},
    {"GET", "/v1/registers/till3", "", 404, "no register till3"},
    {"GET", "/v1/pools", "", 200, "\"queued\":1"},
    {"GET", "/v1/pools/shop", "", 200, "\"absent\":\"driveDays\""},
    {"GET", "/v1/pools/other", "", 404, "no pool other"},
    {"GET", "/v1/documents?pool=shop", "", 200, "document:9"},
    {"GET", "/v1/documents?pool=other", "", 404},
    {"GET", "/v1/documents", "", 200, "\"next\":null"},
    {"GET", "/v1/documents?limit=2", "", 200, "\"next\":\"7\""},
    {"GET", "/v1/documents?limit=2&cursor=7", "", 200, "\"next\":\"5\""},
    {"GET", "/v1/documents?state=unknown,issued&register=till1", "", 200, "document:3"},
    {"GET", "/v1/documents?text=%D0%A5%D0%BB%D0%B5%D0%B1", "", 200, "document:1"},
    {"GET", "/v1/documents?state=issued", "", 200, "\"total\":305.23"},
    {"GET", "/v1/documents?since=2031-01-01T00:00:00Z", "", 200, "\"documents\":[]"},
    {"GET", "/v1/documents?state=gone", "", 400, "queued, running"},
    {"GET", "/v1/documents?since=once", "", 400, "since"},
    {"GET", "/v1/documents?cursor=x", "", 400, "cursor"},
    {"GET", "/v1/documents?limit=501", "", 400, "limit"},
    {"GET", "/v1/documents?since=2031-01-01T00:00:00", "", 400, "zone"},
    {"GET", "/v1/documents?registre=till1&", "", 400, "registre is not known"},
    {"POST", "/v1/registers/till1/documents?wait=30", cashIn, 400, "wait is not known"},
    {"DELETE", "/v1/documents/document:5?force=1", "", 400, "force is not known"},
    {"GET", "/readyz?till=1", "", 400, "till is not known"},
    {"GET", "/v1/documents?state=issued&state=unknown", "", 400, "state is asked for twice"},
    {"GET", "/v1/documents?register=till3", "", 404},
    {"GET", "/v1/documents/document:1", "", 200, "\"items\":[{"},
    {"GET", "/v1/documents/document:0", "", 404},
    {"DELETE", "/v1/documents/document:5", "", 200, "deleted"},
    {"DELETE", "/v1/documents/document:1", "", 409, "\"issued\""},
    {"DELETE", "/v1/documents/document:0", "", 404},
    {"POST", "/v1/documents/document:4/move", R"({"register":"till2"})", 200, "\"till2\""},
    {"POST", "/v1/documents/document:4/move", "{}", 400, "register"},
    {"POST", "/v1/documents/document:4/move", R"({"pool":"shop"})", 400, "receipts alone"},
    {"POST", "/v1/documents/document:9/move", R"({"pool":"other"})", 404},
    {"POST", "/v1/documents/document:9/move", R"({"pool":"shop"})", 200, "\"pool\":\"shop\""},
    {"POST", "/v1/pools/other/documents", "{}", 404},
    {"POST", "/v1/pools/shop/documents", R"({"id":"document:z","type":"zReport"})", 400, "a pool takes"},
    {"POST", "/v1/documents/document:0/move", R"({"register":"till2"})", 404},
    {"POST", "/v1/documents/document:1/move", R"({"register":"till2"})", 409, "\"issued\""},
    {"POST", "/v1/documents/document:2/resolve", R"({"state":"issued"})", 400, "documentNumber"},
    {"POST", "/v1/documents/document:2/resolve", R"({"state":"notIssued"})", 400, "note"},
    {"POST", "/v1/documents/document:2/resolve", R"({"state":"gone"})", 400, "issued or notIssued"},
    {"POST", "/v1/documents/document:2/resolve", R"({"state":"notIssued","documentNumber":1,"note":"n"})",
        400},
    {"POST", "/v1/documents/document:2/resolve", R"({"state":"issued","documentNumber":7})", 409,
        "document:1"},
    {"POST", "/v1/documents/document:2/resolve", R"({"state":"issued","documentNumber":8,"note":"seen"})",
        200, "\"resolvedBy\":\"127.0.0.1\""},
    {"POST", "/v1/documents/document:3/resolve", R"({"state":"notIssued","note":"no such receipt"})", 200,
        "\"resolved\""},
    {"POST", "/v1/documents/document:3/resolve", R"({"state":"notIssued","note":"again"})", 409,
        "not unknown"},
    {"POST", "/v1/documents/document:0/resolve", R"({"state":"notIssued","note":"n"})", 404},
    {"POST", "/v1/registers/till2/accept", R"({"note":"the drive was changed","by":"Петров"})", 202},
    {"POST", "/v1/registers/till2/accept", "", 400, "note"},
    {"POST", "/v1/registers/till3/accept", R"({"note":"n"})", 404},
    {"POST", "/v1/registers/till2/resume", "", 200},
    {"POST", "/v1/registers/till3/resume", "", 404},
    {"POST", "/v1/registers/till3/pause", "", 404},
    {"POST", "/v1/registers/till3/documents", "{}", 404},
    {"POST", "/v1/check", R"({"type":"cashIn","sum":1})", 200, "[\"XML\",\"HEX\"]"},
    {"POST", "/v1/check?register=till1", R"({"id":"short","type":"gift"})", 200, "8 to 64"},
    {"POST", "/v1/check?protocol=HEX", "{", 200, "\"acceptedOver\":[]"},
    {"POST", "/v1/check?protocol=TCP", "{}", 400},
    {"POST", "/v1/check?register=till3", "{}", 404},
    {"POST", "/v1/check?pool=shop", R"({"type":"zReport"})", 200, "a pool takes"},
    {"POST", "/v1/check?pool=other", "{}", 404},
    {"POST", "/v1/preview", R"({"type":"sell","items":[]})", 400, "payments"},
    {"POST", "/v1/preview", R"({"type":"zReport"})", 400, "no receipt"},
    {"POST", "/v1/preview?protocol=TCP", "{}", 400, "XML or HEX"},
    {"POST", "/v1/preview?register=till3", "{}", 404},
    {"GET", "/v1/documents/document:1/picture", "", 200},
    {"GET", "/v1/documents/document:2/picture", "", 404, "no-picture"},
    {"GET", "/v1/documents/document:0/picture", "", 404, "no document"},
    {"GET", "/v1/documents/archived:1", "", 410, "on 2026-03-01"},
    {"GET", "/v1/documents/archived:1/picture", "", 410, "archived"},
    {"DELETE", "/v1/documents/archived:1", "", 410, "archived"},
    {"POST", "/v1/documents/archived:1/move", "{}", 410, "archived"},
    {"POST", "/v1/documents/archived:1/resolve", "{}", 410, "archived"},
    {"POST", "/v1/registers/till1/documents", R"({"id":"archived:1","type":"xReport"})", 422, "archived"},
    {"GET", "/v1/me", "", 200,
        R"("name":null,"pools":["shop"],"registers":["till1","till2"],"role":"admin")"},
    {"GET", "/v1/events", "", 200},
    {"GET", "/v1/openapi.json", "", 200, "3.1.0"},
    {"GET", "/healthz", "", 200, "ok"},
    {"GET", "/readyz", "", 200, "\"till1\":\"ready\""},
    {"GET", "/metrics", "", 200,
        "frserver_documents_total{register=\"till1\",state=\"issued\",reason=\"\"} 3\n"},
    {"GET", "/metrics", "", 200, "frserver_drive_warning{register=\"till1\",warning=\"resource\"} 1\n"},
    {"GET", "/metrics", "", 200, "frserver_drive_last_document{register=\"till1\"} 117\n"},
    {"GET", "/v1/registers/till1", "", 200, "\"lastReceipt\":{\"accepted\""},
};

class DescriptionTest : public ApiTest
{
protected:
    Served record(const QByteArray& method, const QByteArray& target, const QByteArray& body = {},
        const QList<http::Headers::Field>& headers = {})
    {
        const Served served = ask(method, target, body, headers);
        note(method, target, served);
        return served;
    }

    void note(const QByteArray& method, const QByteArray& target, const Served& served)
    {
        if (served.status != 0)
            m_record.add(method, target, served.status, served.type(), served.body);
    }

    Served posted(const QByteArray& id, const QByteArray& body, const QByteArray& prefer = {})
    {
        const Served served = post(id, body, prefer);
        note("POST", "/v1/registers/till1/documents", served);
        return served;
    }

    Served postedToPool(
        const QByteArray& id, const QByteArray& body = sale(), const QByteArray& prefer = "wait=0")
    {
        return record(
            "POST", "/v1/pools/shop/documents", body, {{"Idempotency-Key", id}, {"Prefer", prefer}});
    }

    void fillPool()
    {
        for (const char* const id : {"document:p", "document:q"}) {
            const Served waiting = postedToPool(id, sale(), "wait=30");
            store.claim({"till1", {"shop"}, false, {}, id});
            id == QByteArray("document:p") ? issue(id, 9) : refuse(id);
            note("POST", "/v1/pools/shop/documents", waiting.later());
        }
        postedToPool("document:p");
        postedToPool("document:p", QByteArray(sale()).replace("500.00", "501.00"));
        for (const char* const id : {"document:r", "document:s", "document:t", "document:u"})
            postedToPool(id);
    }

    void fill()
    {
        store.archivedIds = {"archived:1"};
        const QByteArray documents = "/v1/registers/till1/documents";
        posted("document:1", sale());
        issue("document:1");
        for (const QByteArray& body : {sale(), cashIn})
            posted("document:1", body);
        posted("short", cashIn);
        for (const char* const id : {"document:2", "document:3"}) {
            posted(id, cashIn);
            lose(id);
            const Served waiting = posted(id, cashIn);
            api.documentChanged(id);
            note("POST", documents, waiting.later());
        }
        const Served issued = posted("document:6", sale(), "wait=30");
        issue("document:6", 6);
        note("POST", documents, issued.later());
        const Served refused = posted("document:7", cashIn, "wait=30");
        refuse("document:7");
        note("POST", documents, refused.later());
        for (const char* const id : {"document:4", "document:5"})
            posted(id, cashIn);
        till2.absent = "driveDays";
        postedToPool("document:9");
        const QByteArray foreign
            = R"({"type":"sellReturn","taxationType":"osn","returnOf":"document:6","items":)"
              R"([{"name":"Молоко","price":1,"quantity":1,"amount":1,"tax":{"type":"vat10"}}],)"
              R"("payments":[{"type":"cash","sum":1}]})";
        EXPECT_EQ(posted("document:8", foreign).text("type"), "return-refused");
    }

    void draw()
    {
        const QByteArray target = "/v1/preview?register=till1";
        const auto typeFor = [&](const QByteArray& accept) {
            const Served served = record("POST", target, sale(), {{"Accept", accept}});
            return served.status == 200 ? served.type() : QByteArray::number(served.status);
        };
        for (const char* const accept : {"", "*/*", "image/*, text/html", "image/png;q=0.5, image/svg+xml"})
            EXPECT_EQ(typeFor(accept), "image/svg+xml") << accept;
        for (const char* const accept :
            {"image/png", "image/svg+xml;q=0.1, image/*", "image/svg+xml; q=0, */*"})
            EXPECT_EQ(typeFor(accept), "image/png") << accept;
        EXPECT_EQ(typeFor("application/json, image/png;q=0"), "406");
        const QByteArray drawn = "/v1/documents/document:1/picture";
        record("GET", drawn, {}, {{"Accept", "text/html"}});
        for (const char* const lines : {"exit 1", "exit 3", "echo no; exit 4"}) {
            frserver::PictureProcesses pictures({.program = drawScript(folder.filePath("draw"), lines)});
            api.setPainter(pictures);
            for (const auto& [method, path] : {std::pair("GET", drawn), std::pair("POST", target)}) {
                const Served served = ask(method, path, sale());
                ASSERT_TRUE(becomes([&] { return served.pending->isOver(); }));
                note(method, path, served.later());
            }
        }
        api.setPainter(painter);
    }

    void pause()
    {
        const QByteArray target = "/v1/registers/till1/pause";
        EXPECT_EQ(record("POST", target, {}, {{"Prefer", "wait=0"}}).status, 202);
        const Served waiting = record("POST", target, R"({"by":"Петров"})");
        EXPECT_EQ(till1.told.last(), "pause by Петров");
        till1.state = "paused";
        api.registerChanged("till1");
        EXPECT_EQ(waiting.later().status, 200);
        EXPECT_EQ(record("POST", target).status, 200);
        till1.isOwner = false;
        EXPECT_EQ(record("POST", "/v1/registers/till1/resume").status, 202);
    }

    /// What the tokens of those who look on, and of another register, are not for.
    void askWithTokens()
    {
        const std::tuple<QByteArray, QByteArray, QByteArray> rows[] = {
            {"POST", "/v1/registers/till1/documents", cashIn},
            {"POST", "/v1/pools/shop/documents", sale()},
            {"GET", "/v1/pools/shop", ""},
            {"GET", "/v1/documents?register=till1", ""},
            {"POST", "/v1/documents/document:4/move", R"({"register":"till2"})"},
            {"POST", "/v1/documents/document:4/resolve", "{}"},
            {"GET", "/v1/registers/till1", ""},
            {"POST", "/v1/registers/till2/pause", ""},
            {"POST", "/v1/registers/till2/resume", ""},
            {"POST", "/v1/registers/till2/accept", ""},
            {"POST", "/v1/check?register=till1", cashIn},
            {"POST", "/v1/preview?register=till1", sale()},
        };
        api.setTokens(true, {token("looker", "read", {"till2"})});
        for (const auto& [method, target, body] : rows)
            EXPECT_EQ(record(method, target, body, {{"Authorization", "Bearer looker"}}).status, 403)
                << target.constData();
        EXPECT_EQ(record("GET", "/metrics").status, 401);
        api.setTokens(false, {});
    }

    void askInVain()
    {
        for (const char* const id : {"document:a", "document:b", "document:c", "document:d", "document:e"})
            posted(id, cashIn);
        record("POST", "/v1/documents/document:4/move", R"({"register":"till1"})");
        api.stop();
        posted("document:f", cashIn);
        postedToPool("document:f");
        record("GET", "/readyz");
    }

    std::string findings() const
    {
        return m_record.findings({"frserver.openapi.json", "output.schema.json"}).toStdString();
    }

private:
    ApiRecord m_record{api.site().router};
};

TEST_F(DescriptionTest, AnswersAsItSays)
{
    fill();
    for (const AskRow& row : askRows)
        expectAnswer(row, record(row.method, row.path, row.body));
    fillPool();
    draw();
    pause();
    askWithTokens();
    askInVain();
    EXPECT_EQ(findings(), "");
}

} // namespace

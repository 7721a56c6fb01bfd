#include "http/problem.h"
#include "http/site.h"
#include "message.h"

#include <gmock/gmock.h>

using http::Headers;
using http::Problem;
using http::Request;
using http::Response;

namespace {

/// One route for each thing that may happen.
class SiteTest : public testing::Test
{
protected:
    SiteTest()
        : m_token(http::Tokens::fresh())
    {
        add("GET", "/v1/registers", {}, "list");
        add("GET", "/v1/registers/{name}", {}, "one");
        add("GET", "/v1/registers/all", {}, "all");
        add("DELETE", "/v1/registers/{name}", {false, {"admin"}}, "gone");
        add("GET", "/healthz", {true, {}}, "well");
        m_site.router.add("POST", "/fail", [](const Request& request) -> Response {
            if (request.body == "problem")
                throw Problem(409, "shift-closed", "The shift is closed", "").with("state", "refused");
            throw std::runtime_error("password 1234");
        });
        m_site.files = http::StaticFiles(":/page");
        m_site.gate.hostNames = QStringList{"till.example"};
        m_site.gate.origins = QStringList{"https://shop.example"};
    }

    void add(
        const QByteArray& method, const QString& pattern, const http::Access& access, const QString& word)
    {
        m_site.router.add(
            method, pattern,
            [word](const Request& request) {
                const QString caller = request.caller ? request.caller->name : QString();
                return Response::text(
                    QStringList({word, request.parameter("name"), caller}).join(' ').trimmed());
            },
            access);
    }

    Response ask(const QByteArray& method, const QByteArray& target,
        const QList<Headers::Field>& headers = {}, const QByteArray& body = {}) const
    {
        return whole(m_site.answer(message(method, target, headers, body)));
    }
    int status(const QList<Headers::Field>& headers) const
    {
        return ask("GET", "/v1/registers", headers).status;
    }

    http::Site m_site;
    QByteArray m_token;
};

TEST_F(SiteTest, FindsRoutes)
{
    const std::tuple<QByteArray, QByteArray, int, QByteArray> rows[] = {
        {"GET", "/v1/registers", 200, "list"},
        {"GET", "/v1/registers/till%2F1", 200, "one till/1"},
        {"HEAD", "/v1/registers/till1", 200, "one till1"},
        {"GET", "/v1/registers/all", 200, "all"},
        {"DELETE", "/v1/registers/all", 200, "gone all"},
        {"PUT", "/v1/registers/all", 405, "GET, DELETE, HEAD, OPTIONS"},
        {"OPTIONS", "/v1/registers", 204, "GET, HEAD, OPTIONS"},
        {"get", "/v1/registers", 405, "GET, HEAD, OPTIONS"},
        {"OPTIONS", "/none", 404, ""},
        {"GET", "/v1/registers/", 404, ""},
        {"GET", "/v1/registers/a/b", 404, ""},
        {"GET", "/app.js", 200, "export const one = 1;\n"},
        {"POST", "/app.js", 404, ""},
        {"GET", "/..%2Fpage%2Fapp.js", 404, ""},
    };
    for (const auto& [method, target, status, bodyOrAllow] : rows) {
        const Response response = ask(method, target);
        EXPECT_EQ(response.status, status) << target.constData();
        if (status == 200)
            EXPECT_EQ(response.body, bodyOrAllow);
        else
            EXPECT_EQ(response.headers.value("allow"), bodyOrAllow) << target.constData();
    }
}

TEST_F(SiteTest, TellsProblemsAndHidesMistakes)
{
    const Response problem = ask("POST", "/fail", {}, "problem");
    EXPECT_EQ(problem.status, 409);
    EXPECT_EQ(problem.contentType(), "application/problem+json");
    EXPECT_EQ(object(problem),
        QJsonObject({{"type", "shift-closed"}, {"title", "The shift is closed"}, {"status", 409},
            {"state", "refused"}}));
    const Response mistake = ask("POST", "/fail");
    EXPECT_EQ(mistake.status, 500);
    EXPECT_FALSE(mistake.body.contains("1234"));
}

TEST_F(SiteTest, KeepsForeignPagesOut)
{
    const QList<std::pair<QByteArray, int>> hosts{{"localhost", 200}, {"LOCALHOST:1", 200},
        {"127.0.0.1", 200}, {"[::1]:80", 200}, {"192.168.0.7:8080", 200}, {"till.example", 200},
        {"evil.example", 421}, {"127.0.0.1.evil.example", 421}, {"localhost.", 421}, {"", 400}, {"a b", 400},
        {"a/b", 400}};
    for (const auto& [host, expected] : hosts)
        EXPECT_EQ(status({{"Host", host}}), expected) << host.constData();
    // No foreign page has a token.
    m_site.tokens.add(http::Tokens::hashOf(m_token), {});
    EXPECT_EQ(status({{"Host", "evil.example"}, {"Authorization", "Bearer " + m_token}}), 200);
    EXPECT_EQ(status({{"Host", "evil.example"}, {"Authorization", "Bearer " + m_token + "x"}}), 421);
    m_site.tokens.clear();
    const QList<std::pair<QByteArray, int>> origins{{"http://127.0.0.1:8080", 200},
        {"https://127.0.0.1:8080", 200}, {"https://shop.example", 200}, {"http://shop.example", 403},
        {"http://127.0.0.1", 403}, {"http://127.0.0.1:8081", 403}, {"http://localhost:8080", 403},
        {"null", 403}, {"", 403}};
    for (const auto& [origin, expected] : origins)
        EXPECT_EQ(status({{"Origin", origin}}), expected) << origin.constData();
}

TEST_F(SiteTest, LetsNamedOriginsRead)
{
    m_site.tokens.add(http::Tokens::hashOf(m_token), {"till", "sell", {}});
    const Response preflight = ask("OPTIONS", "/v1/registers/a", {{"Origin", "https://shop.example"}});
    EXPECT_EQ(preflight.headers.value("Access-Control-Allow-Methods"), "GET, DELETE, HEAD, OPTIONS");
    // Errors, too, or the page would learn nothing.
    const Response refused = ask("GET", "/v1/registers", {{"Origin", "https://shop.example"}});
    EXPECT_EQ(refused.status, 401);
    EXPECT_EQ(refused.headers.value("Access-Control-Allow-Origin"), "https://shop.example");
    const Response own = ask("GET", "/healthz", {{"Origin", "http://127.0.0.1:8080"}});
    EXPECT_FALSE(own.headers.contains("Access-Control-Allow-Origin"));
    EXPECT_EQ(own.headers.value("Vary"), "Origin");
}

TEST_F(SiteTest, AsksForTokens)
{
    const QByteArray admin = http::Tokens::fresh();
    m_site.tokens.add(http::Tokens::hashOf(m_token), {"till", "sell", {}});
    m_site.tokens.add(http::Tokens::hashOf(admin).toUpper(), {"boss", "admin", {}});
    const QList<std::pair<QByteArray, int>> rows{{"Bearer " + m_token, 200}, {"bearer   " + admin, 200},
        {"Bearer " + m_token + "x", 401}, {"Bearer " + http::Tokens::hashOf(m_token), 401}, {"Bearer", 401},
        {"Basic " + m_token, 401}, {m_token, 401}, {"", 401}};
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(status({{"Authorization", text}}), expected) << text.constData();
    EXPECT_EQ(ask("GET", "/v1/registers").headers.value("WWW-Authenticate"), "Bearer");
    EXPECT_EQ(ask("DELETE", "/v1/registers/a", {{"Authorization", "Bearer " + m_token}}).status, 403);
    EXPECT_EQ(ask("DELETE", "/v1/registers/a", {{"Authorization", "Bearer " + admin}}).body, "gone a boss");
    EXPECT_EQ(ask("GET", "/healthz").status, 200);
    EXPECT_EQ(ask("GET", "/app.js").status, 200);
}

TEST_F(SiteTest, SendsAFileOnce)
{
    const Response first = ask("GET", "/");
    EXPECT_EQ(first.contentType(), "text/html; charset=utf-8");
    const QByteArray tag = first.headers.value("ETag");
    EXPECT_EQ(ask("GET", "/index.html", {{"If-None-Match", "\"x\", W/" + tag}}).status, 304);
    EXPECT_EQ(ask("GET", "/app.js", {{"If-None-Match", tag}}).status, 200);
}

} // namespace

#include "http/problem.h"
#include "message.h"

#include <gmock/gmock.h>

using http::Problem;
using http::Request;

TEST(Request, TakesATargetApart)
{
    const std::tuple<QByteArray, QStringList, QString> rows[] = {
        {"/", {}, ""},
        {"/?value=1", {}, "1"},
        {"/a/b", {"a", "b"}, ""},
        {"/a%2Fb/%D0%A0%D1%83%D0%B1", {"a/b", "Руб"}, ""},
        {"/a+b?x=1&value=a+b%2B%26", {"a+b"}, "a b+&"},
        {"/a?value=%D1%87%D0%B5%D0%BA", {"a"}, "чек"},
        {"/a?value=100%", {"a"}, "100%"},
        {"/a//", {"a", "", ""}, ""},
        {"/../..%2f", {"..", "../"}, ""},
        {"http://till.example:8080/a?value=1", {"a"}, "1"},
        {"HTTP://till.example?value=1", {}, "1"},
    };
    for (const auto& [target, segments, value] : rows) {
        const Request request = Request::of("GET", target);
        EXPECT_EQ(request.segments, segments) << target.constData();
        EXPECT_EQ(request.queryValue("value").value_or(""), value) << target.constData();
    }
    for (const char* target : {"", "*", "a", "/%", "/%4", "/%zz", "/%FF", "/%C3%28", "/a%00b", "ftp://a/"})
        EXPECT_THROW(Request::of("GET", target), Problem) << target;
}

TEST(Request, ReadsJsonWithOrWithoutBom)
{
    for (const char* body : {"{\"a\": 1}", "\xEF\xBB\xBF{\"a\": 1}\r\n"})
        EXPECT_EQ(message("POST", "/", {}, body).json().value("a").toInt(), 1) << body;
    for (const char* body : {"", "\xEF\xBB\xBF", "[1]", "1", "{\"a\": 1", "{\"a\": 1} {}", "a=1"})
        EXPECT_THROW(message("POST", "/", {}, body).json(), Problem) << body;
}

TEST(Request, ReadsPreferences)
{
    const QList<std::pair<QByteArray, int>> rows{{"wait=10", 10}, {"respond-async, Wait = 5", 5},
        {"wait=\"7\"; x", 7}, {"await=3", -1}, {"wait=-1", -1}, {"wait=1e3", -1}, {"wait=9999999", 999'999},
        {"wait=99999999999", 999'999}, {"", -1}};
    for (const auto& [text, seconds] : rows) {
        const auto wait = message("GET", "/", {{"PREFER", text}}).preferredWait();
        EXPECT_EQ(wait.value_or(std::chrono::seconds(-1)).count(), seconds) << text.constData();
    }
}

TEST(Request, ReadsNumbersOfTheQuery)
{
    EXPECT_EQ(message("GET", "/?n=10").queryNumber("n", 0, 10), 10);
    EXPECT_EQ(message("GET", "/?n=10").queryNumber("m", 0, 10), std::nullopt);
    for (const char* target : {"/?n=11", "/?n=-1", "/?n=", "/?n=1.5", "/?n=99999999999"})
        EXPECT_THROW(message("GET", target).queryNumber("n", 0, 10), Problem) << target;
}

TEST(Headers, AreFoundInAnyCase)
{
    http::Headers headers;
    headers.add("Accept", "a");
    headers.add("ACCEPT", "b");
    EXPECT_EQ(headers.value("accept"), "a, b");
    headers.set("accept", "c");
    EXPECT_EQ(headers.fields().size(), 1);
    EXPECT_FALSE(headers.contains("accep"));
}

#pragma once

#include "api/api.h"
#include "api/painter.h"
#include "api/pictureformat.h"
#include "server/failingstore.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

/// Does nothing and remembers what it was told.
template <class Base>
class Fake : public Base
{
public:
    using Base::Base;

    void wake() override { told.append("wake"); }
    void setAwaited(const QString& id, bool isAwaited) override
    {
        told.append(id + (isAwaited ? " awaited" : " not awaited"));
    }

    QStringList told;
};

using FakePool = Fake<frserver::Pool>;

class FakeTill : public Fake<frserver::Till>
{
public:
    using Fake::Fake;

    bool isHere() const override { return isOwner; }
    QJsonObject view() const override
    {
        const auto orNull
            = [](const QString& text) { return text.isEmpty() ? QJsonValue() : QJsonValue(text); };
        QJsonObject view{{"state", state}, {"waiting", orNull(waiting)}, {"document", orNull(making)},
            {"connections", 2}, {"exchanges", QJsonObject{{"count", 3}, {"seconds", 1.5}}},
            {"conditionAge", conditionAge},
            {"condition",
                QJsonObject{{"unsent", 4}, {"driveUntil", "2031-01-01"}, {"driveWarnings", 2},
                    {"lastDocument", 117}}},
            {"pools",
                QJsonArray{QJsonObject{{"name", "shop"}, {"absent", orNull(absent)}, {"daysLeft", 100},
                    {"documentsLeft", QJsonValue()}}}}};
        if (!drive.isEmpty())
            view.insert("identity", QJsonObject{{"drive", drive}});
        return view;
    }
    void settle(const QString& id) override { told.append("settle " + id); }
    qint64 pause(const QString& by) override { return order("pause by " + by); }
    qint64 resume(const QString& by) override { return order("resume by " + by); }
    void accept(const QString& by, const QString& note) override { told.append(by + " accepts: " + note); }

    bool isOwner = true;
    QString state = "ready";
    QString waiting;
    QString making;
    QString drive;
    int conditionAge = 5;
    /// From the pool.
    QString absent;

private:
    qint64 order(const QString& what)
    {
        told.append(what);
        return isOwner ? 0 : 1;
    }
};

/// Draws nothing and remembers what it was to draw.
class FakePainter : public frserver::Painter
{
public:
    http::Answer paint(const frserver::PictureOrder& order) override
    {
        ordered = order;
        return http::Response::bytes("picture", frserver::pictureType(order.format));
    }

    frserver::PictureOrder ordered;
};

/// An answer as a client has it; no status for one that is still to come.
struct Served
{
    int status = 0;
    http::Headers headers;
    QByteArray body;
    std::shared_ptr<http::Pending> pending = {};
    std::shared_ptr<http::Stream> stream = {};

    QJsonObject json() const { return QJsonDocument::fromJson(body).object(); }
    QString text(const char* member) const { return json().value(QLatin1String(member)).toString(); }
    QByteArray type() const { return headers.value("Content-Type"); }
    std::string all() const { return QByteArray::number(status).append(' ').append(body).toStdString(); }
    /// What has come of it meanwhile.
    Served later() const
    {
        const std::optional<http::Response> response = pending->response();
        return response ? Served{response->status, response->headers, response->body} : Served();
    }
};

inline Served askApi(const frserver::Api& api, const QByteArray& method, const QByteArray& target,
    const QByteArray& body = {}, const QList<http::Headers::Field>& headers = {})
{
    http::Request request = http::Request::of(method, target);
    request.headers.add("Host", "127.0.0.1");
    request.clientAddress = "127.0.0.1";
    for (const auto& [name, value] : headers)
        request.headers.add(name, value);
    request.body = body;
    const http::Answer answer = api.site().answer(request);
    if (const auto* pending = std::get_if<std::shared_ptr<http::Pending>>(&answer))
        return {0, {}, {}, *pending};
    if (const auto* stream = std::get_if<std::shared_ptr<http::Stream>>(&answer)) {
        http::Headers type;
        type.add("Content-Type", (*stream)->contentType());
        return {200, type, (*stream)->take(), {}, *stream};
    }
    const auto& response = std::get<http::Response>(answer);
    return {response.status, response.headers, response.body};
}

/// The interface with two registers that a test works by hand, as their workers would.
class ApiTest : public testing::Test
{
protected:
    static constexpr std::chrono::seconds unhurried{60};

    explicit ApiTest(const frserver::Api::Settings& settings
        = {.queueLimit = 4, .version = "1.2.3", .readingTurn = unhurried})
        : api(store, owners, settings)
    {
        api.add(till1);
        api.add(till2);
        api.add(shop);
        api.setPainter(painter);
    }

    Served ask(const QByteArray& method, const QByteArray& target, const QByteArray& body = {},
        const QList<http::Headers::Field>& headers = {})
    {
        return askApi(api, method, target, body, headers);
    }

    /// Its secret is its name.
    static frserver::TokenEntry token(const char* name, const QString& role, const QStringList& places = {})
    {
        return {name, role, places, http::Tokens::hashOf(name)};
    }

    Served as(const QByteArray& token, const QByteArray& method, const QByteArray& target,
        const QByteArray& body = {}, QList<http::Headers::Field> headers = {})
    {
        headers.append({"Authorization", "Bearer " + token});
        return ask(method, target, body, headers);
    }

    Served post(const QByteArray& id, const QByteArray& body, const QByteArray& prefer = {},
        const QByteArray& name = "till1", const QByteArray& token = {})
    {
        QList<http::Headers::Field> headers{{"Idempotency-Key", id}};
        if (!prefer.isEmpty())
            headers.append({"Prefer", prefer});
        if (!token.isEmpty())
            headers.append({"Authorization", "Bearer " + token});
        return ask(
            "POST", (name == "shop" ? "/v1/pools/" : "/v1/registers/") + name + "/documents", body, headers);
    }

    void begin(const QString& id)
    {
        store.begin(id, {.markBefore = {{"drive", "9999000000000001"}}});
        api.documentChanged(id);
    }

    void end(const QString& id, const sale::DocumentEnding& ending, const QJsonObject& failure = {})
    {
        const int attempt = store.findId(id)->attemptCount;
        store.note(id, attempt, {.failure = failure});
        store.settle(id, attempt, ending);
        api.documentChanged(id);
    }

    void issue(const QString& id, quint32 number = 7)
    {
        begin(id);
        end(id, {.state = sale::DocumentState::Issued, .documentNumber = number});
    }

    void refuse(const QString& id)
    {
        begin(id);
        end(id, {.state = sale::DocumentState::NotIssued, .reason = sale::StateReason::Refused},
            {{"kind", "cash"}, {"text", "Не хватает наличных"}, {"exception", "FrCommandException"}});
    }

    void lose(const QString& id)
    {
        begin(id);
        end(id, {});
    }

    static QByteArray sale()
    {
        QFile file(FRSPF_SOURCES "/examples/sale.json");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    FailingStore store{folder.filePath("journal.sqlite")};
    frserver::Owners owners{folder.filePath("journal.sqlite"), 1000};
    FakeTill till1{{"till1", receipt::Protocol::Hex, QTimeZone::utc(), 120, true}};
    FakeTill till2{{"till2", receipt::Protocol::Xml, QTimeZone::utc(), 0, false}};
    FakePool shop{{"shop", {"till1", "till2"}, {}, {"osn"}, 300}};
    FakePainter painter;
    frserver::Api api;
};

inline const QByteArray cashIn = R"({"type":"cashIn","sum":100.50})";

// Services that share a database.

#pragma once

#include "apirig.h"
#include "becomes.h"
#include "peers/peers.h"
#include "sale/postgresfixture.h"

/// A service with a register of its own.
struct Desk
{
    explicit Desk(const QString& name, frserver::Till* spare = nullptr, int queueLimit = 0)
        : till({name, receipt::Protocol::Hex, QTimeZone::utc(), 120, true, "Иванова А. П.", {}, queueLimit})
    {
        peers.add(till);
        if (spare != nullptr)
            peers.add(*spare);
        peers.start(name + ":8403");
    }

    sale::StoredDocument accept(const QString& id)
    {
        const sale::StoredDocument document = store.accept({id, "sell", R"({"a":1})", till.settings().name});
        api.accepted(document);
        return document;
    }
    /// By its worker, of which only its service hears.
    void issue(const QString& id, quint32 number)
    {
        const int attempt = store.begin(id, {{{"drive", "9999"}, {"lastDocument", 7}}}).value();
        store.settle(id, attempt, {.state = sale::DocumentState::Issued, .documentNumber = number});
    }
    Served ask(const QByteArray& method, const QByteArray& target, const QByteArray& body = {},
        const QByteArray& prefer = {})
    {
        return askApi(api, method, target, body, {{"Prefer", prefer}});
    }
    Served pause(const QByteArray& by, const QByteArray& prefer = "wait=60")
    {
        return ask("POST", "/v1/registers/till1/pause", R"({"by":")" + by + R"("})", prefer);
    }
    /// For so long, as often as it does.
    void lookFor(std::chrono::seconds time)
    {
        constexpr std::chrono::seconds pause(10);
        for (auto end = now + time; now < end;) {
            now += pause;
            peers.look();
        }
    }
    void turn(const QString& state)
    {
        till.state = state;
        api.registerChanged(till.settings().name);
    }
    QJsonObject view(const QByteArray& name) { return ask("GET", "/v1/registers/" + name).json(); }
    int queued(const QString& name) { return api.openDocuments().count(name, sale::DocumentState::Queued); }

    sale::PostgresStore store{sale::PostgresServer::instance().place()};
    frserver::Owners owners{sale::PostgresServer::instance().address(), 1000};
    FakeTill till;
    frserver::Api api{store, owners, {}};
    std::chrono::milliseconds now{0};
    frserver::Peers peers{sale::PostgresServer::instance().place(), api, store, std::chrono::seconds(15),
        [this] { return now; }};
};

/// A register that another service works, of one that has it in its configuration, too.
struct Spare : FakeTill
{
    explicit Spare(int queueLimit = 0)
        : FakeTill({"till1", receipt::Protocol::Hex, QTimeZone::utc(), 120, true, {}, {}, queueLimit})
    {
        isOwner = false;
        state = "standby";
    }
};

class PeersTest : public sale::Postgres
{
protected:
    void makeOrdersOld()
    {
        connection.execute("UPDATE frspf.orders SET made = made - interval '31 seconds'");
    }
};

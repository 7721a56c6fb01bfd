// A server for the scripts beside it, which are its clients. Prints its port; ends when its standard input
// does.

#include "http/eventstream.h"
#include "http/server.h"
#include "http/tlserror.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QSocketNotifier>

#include <cstdio>
#include <iostream>
#include <unistd.h>

namespace {

QJsonObject told(const http::Request& request)
{
    QJsonObject headers;
    for (const auto& [name, value] : request.headers.fields())
        headers.insert(QString::fromLatin1(name).toLower(), QString::fromUtf8(value));
    QJsonObject query;
    for (const auto& [name, value] : request.query)
        query.insert(name, value);
    return {{"method", QString::fromLatin1(request.method)},
        {"segments", QJsonArray::fromStringList(request.segments)}, {"query", query}, {"headers", headers},
        {"size", request.body.size()}, {"client", QString::fromLatin1(request.clientAddress)}};
}

QJsonObject told(const http::Counters& counters)
{
    return {{"accepted", counters.accepted}, {"refused", counters.refused}, {"overdue", counters.overdue},
        {"connections", counters.connections}, {"waiting", counters.waiting},
        {"streaming", counters.streaming}};
}

void addRoutes(http::Site& site, http::EventStream& events, const http::Server& server)
{
    const http::Access open{true, {}};
    const http::Handler echo
        = [](const http::Request& request) { return http::Response::json(told(request)); };
    site.router.add("GET", "/echo/{text}", echo, open);
    site.router.add("POST", "/echo/{text}", echo, open);
    site.router.add(
        "POST", "/json", [](const http::Request& request) { return http::Response::json(request.json()); });
    site.router.add("GET", "/large", [](const http::Request&) {
        return http::Response::bytes(QByteArray(8 * 1024 * 1024, 'x'), "text/plain");
    });
    site.router.add(
        "GET", "/counters",
        [&server](const http::Request&) { return http::Response::json(told(server.counters())); }, open);
    site.router.add(
        "GET", "/events", [&events](const http::Request& request) { return events.subscribe(request); });
    site.router.add("GET", "/wait", [&events](const http::Request& request) {
        const std::chrono::milliseconds time(request.queryNumber("timeout", 0, 600'000).value_or(600'000));
        return events.wait({}, time, request.queryValue("after").value_or(QString()).toLatin1());
    });
    site.router.add("POST", "/events", [&events](const http::Request& request) {
        events.publish("made", request.json());
        return http::Response::empty();
    });
}

std::chrono::milliseconds milliseconds(const QCommandLineParser& options, const char* name)
{
    return std::chrono::milliseconds(options.value(name).toInt());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions({{"address", {}, "digits", "127.0.0.1"}, {"token", {}, "token"},
        {"request", {}, "milliseconds", "10000"}, {"idle", {}, "milliseconds", "60000"},
        {"keep-alive", {}, "milliseconds", "15000"}, {"strangers", {}, "connections", "32"},
        {"tls", {}, "folder"}});
    options.process(application);
    http::Limits limits;
    limits.request = milliseconds(options, "request");
    limits.idle = milliseconds(options, "idle");
    limits.keepAlive = milliseconds(options, "keep-alive");
    limits.connectionsOfStranger = options.value("strangers").toInt();

    http::Site site;
    http::EventStream events(100);
    http::Server server(site, limits);
    if (options.isSet("token"))
        site.tokens.add(http::Tokens::hashOf(options.value("token").toLatin1()), {"till", "sell", {}});
    site.gate.origins = QStringList{"https://named.example"};
    addRoutes(site, events, server);
    if (options.isSet("tls")) {
        const auto read = [&server, folder = options.value("tls")] {
            server.setIdentity(
                std::make_shared<http::TlsIdentity>(folder + "/server.pem", folder + "/server.key"));
        };
        try {
            read();
        } catch (const http::TlsError& error) {
            std::cerr << error.what() << std::endl;
            return 1;
        }
        site.router.add("POST", "/identity", [read](const http::Request&) {
            read();
            return http::Response::empty();
        });
    }
    server.listen(options.value("address"));
    std::cout << server.port() << std::endl;

    QSocketNotifier parent(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&parent, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}

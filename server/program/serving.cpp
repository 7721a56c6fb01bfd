#include "program/serving.h"

#include "program/places.h"
#include "program/runfile.h"
#include "program/say.h"
#include "program/service.h"
#include "program/servicenotice.h"
#include "program/signals.h"
#include "program/successor.h"

#include "http/tlserror.h"

#include <QCoreApplication>

namespace frserver {

namespace {

/// One that cannot be read leaves the former one in use.
void renewIdentity(Service& service)
{
    try {
        service.readIdentity();
    } catch (const http::TlsError& error) {
        say(0, QStringLiteral("TLS: ") + QString::fromUtf8(error.what()));
    }
}

/// Once the service is gone, for good or for the program in its file.
struct Leaving
{
    bool isBegun = false;
    bool isForSuccessor = false;
};

/// The program in the file takes the place of this one, unless it does not start.
void leaveToSuccessor(Leaving& leaving, Service& service, RunFile& runFile, const QString& fault)
{
    // It was told to end in the meantime.
    if (leaving.isBegun)
        return;
    if (!fault.isEmpty()) {
        say(0, QStringLiteral("upgrade: ") + fault);
        return runFile.tellKeptPlace(fault);
    }
    say(0, QStringLiteral("upgrade: finishing the documents under way"));
    runFile.tellLeaving();
    leaving = {true, true};
    service.stop([] { QCoreApplication::quit(); });
}

/// Until it is asked to end, or to leave its place.
Leaving serveOn(
    const Options& options, const Configuration& configuration, Successor& successor, ServiceNotice& notice)
{
    Signals signals;
    const ListenAddress listen = listenAddress(options, configuration);
    Service service(configuration, journalOf(configuration));
    // Before anything is begun that another service may be at, too.
    RunFile runFile(runPlaceOf(options, configuration));
    const auto readTokens = [&service] {
        const QString error = service.readTokens();
        say(0, error.isEmpty() ? QStringLiteral("tokens: read") : QStringLiteral("tokens: ") + error);
    };
    service.readIdentity();
    service.start(listen);
    readTokens();
    signals.onReload([&service, readTokens] {
        readTokens();
        renewIdentity(service);
    });
    Leaving leaving;
    signals.onEnd([&] {
        notice.stopping();
        runFile.tellEnding();
        leaving = {true, false};
        service.stop([] { QCoreApplication::quit(); });
    });
    signals.onUpgrade([&] {
        if (!leaving.isBegun)
            successor.examine(
                [&](const QString& fault) { leaveToSuccessor(leaving, service, runFile, fault); });
    });
    say(0, QStringLiteral("ready on ") + service.url());
    notice.ready("ready on " + service.url().toUtf8());
    runFile.tellReady(QCoreApplication::applicationVersion());
    QCoreApplication::exec();
    return leaving;
}

} // namespace

int serve(const Options& options, const Configuration& configuration)
{
    Successor successor(QCoreApplication::arguments());
    ServiceNotice notice;
    if (!serveOn(options, configuration, successor, notice).isForSuccessor)
        return 0;
    notice.leavePlace();
    return say(failedStatus, successor.takePlace());
}

} // namespace frserver

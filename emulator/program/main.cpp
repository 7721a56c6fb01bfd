#include "http/listenerror.h"
#include "http/server.h"
#include "memory/memoryerror.h"
#include "panel/panel.h"
#include "program/documents.h"
#include "program/options.h"
#include "program/paneloptions.h"
#include "program/station.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QSysInfo>
#include <QUrl>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/signalfd.h>
#include <unistd.h>
#include <vector>

namespace {

// Or the line would become one of the standard streams that are missing, and the tape go to the host. A
// register may be without a terminal; where output is all there is to do, it cannot be written.
void openMissingStreams(bool needsOutput)
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", needsOutput ? O_RDONLY : O_RDWR);
    }
}

// Signals arrive as something to read, so that they are handled in the event loop.
int openSignals()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGUSR1})
        sigaddset(&set, signal);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    return ::signalfd(-1, &set, SFD_CLOEXEC);
}

using Stations = std::vector<std::unique_ptr<Station>>;

void handleSignal(int descriptor, const Stations& stations)
{
    signalfd_siginfo info{};
    if (::read(descriptor, &info, sizeof info) != static_cast<ssize_t>(sizeof info))
        return;
    if (info.ssi_signo != SIGUSR1)
        return QCoreApplication::quit();
    for (const auto& station : stations)
        station->togglePaper();
}

int fail(const QString& why)
{
    std::fprintf(stderr, "spf-emulator: %s\n", qPrintable(why));
    return 1;
}

/// Empty when all went well.
QString open(const Options& options, emulator::panel::Panel* panel, Stations& stations)
{
    for (int number = 1; number <= options.registers; ++number) {
        Options own = paneloptions::forRegister(options, number);
        std::unique_ptr<emulator::Memory> memory = power::openMemory(own);
        if (options.isWithoutLine)
            continue;
        stations.push_back(std::make_unique<Station>(own, std::move(memory), panel));
        // The others work on; without one there is nothing to work for.
        QObject::connect(stations.back().get(), &Station::lostPower, [&stations] {
            if (std::all_of(stations.cbegin(), stations.cend(),
                    [](const auto& station) { return station->hasLostPower(); }))
                QCoreApplication::exit(1);
        });
        if (const QString error = stations.back()->open(); !error.isEmpty())
            return error;
    }
    return {};
}

/// A browser does not open the address that stands for all.
QString here(const http::Server& server)
{
    QUrl url(server.url());
    const bool isAny = url.host() == QLatin1String("0.0.0.0") || url.host() == QLatin1String("::");
    url.setHost(url.host() == QLatin1String("::") ? QStringLiteral("::1") : QStringLiteral("127.0.0.1"));
    return isAny ? QStringLiteral(" (here %1/)").arg(url.toString()) : QString();
}

void sayReady(const Stations& stations, const http::Server* server)
{
    for (const auto& station : stations)
        std::fprintf(stderr, "spf-emulator: ready on %s\n", qPrintable(station->address()));
    if (server != nullptr)
        std::fprintf(
            stderr, "spf-emulator: panel on %s/%s\n", qPrintable(server->url()), qPrintable(here(*server)));
}

std::unique_ptr<http::Server> serve(const Options& options, emulator::panel::Panel& panel)
{
    if (!options.panelToken.isEmpty())
        panel.site().tokens.add(http::Tokens::hashOf(options.panelToken), {});
    panel.site().gate.hostNames = options.panelHosts + QStringList{QSysInfo::machineHostName()};
    auto server = std::make_unique<http::Server>(panel.site());
    server->listen(options.panelAddress, *options.panelPort);
    return server;
}

int finish(const Stations& stations)
{
    int status = 0;
    for (const auto& station : stations)
        status = qMax(status, station->finish());
    return status;
}

int run(const Options& options, int signals)
{
    const auto panel = options.panelPort ? std::make_unique<emulator::panel::Panel>() : nullptr;
    Stations stations;
    if (const QString error = open(options, panel.get(), stations); !error.isEmpty())
        return fail(error);
    if (options.isWithoutLine)
        return 0;
    const auto server = panel ? serve(options, *panel) : nullptr;
    QSocketNotifier notifier(signals, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier,
        [signals, &stations] { handleSignal(signals, stations); });
    sayReady(stations, server.get());
    QCoreApplication::exec();
    return finish(stations);
}

} // namespace

int main(int argc, char* argv[])
{
    const bool isDocuments = argc > 1 && std::strcmp(argv[1], "documents") == 0;
    openMissingStreams(isDocuments);
    // Whoever read the tape may have gone; the hosts have not.
    std::signal(SIGPIPE, SIG_IGN);
    const int signals = openSignals();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("spf-emulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FRSPF_VERSION));
    const QStringList arguments = QCoreApplication::arguments();
    if (isDocuments)
        return documents::run(arguments);
    Options options;
    switch (Options::parse(arguments, options)) {
    case Options::Outcome::Done:
        return 0;
    case Options::Outcome::Wrong:
        return 2;
    case Options::Outcome::Run:
        break;
    }
    try {
        return run(options, signals);
    } catch (const http::ListenError& error) {
        return fail(QStringLiteral("the panel cannot listen: %1").arg(QString::fromLocal8Bit(error.what())));
    } catch (const emulator::MemoryError& error) {
        return fail(QStringLiteral("the state %1 cannot be used: %2").arg(options.stateFolder, error.text()));
    }
}

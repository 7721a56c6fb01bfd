#include "memory/memoryerror.h"
#include "program/documents.h"
#include "program/options.h"
#include "program/station.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

// Or the line would become one of the standard streams that are missing, and the tape go to the host.
void openMissingStreams()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDWR);
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

void handleSignal(int descriptor, Station& station)
{
    signalfd_siginfo info{};
    if (::read(descriptor, &info, sizeof info) != static_cast<ssize_t>(sizeof info))
        return;
    if (info.ssi_signo == SIGUSR1)
        station.togglePaper();
    else
        QCoreApplication::quit();
}

int fail(const QString& why)
{
    std::fprintf(stderr, "spf-emulator: %s\n", qPrintable(why));
    return 1;
}

int run(Options options, int signals)
{
    std::unique_ptr<emulator::Memory> memory = power::openMemory(options);
    if (options.isWithoutLine)
        return 0;
    Station station(options, std::move(memory));
    if (const QString error = station.open(); !error.isEmpty())
        return fail(error);
    QSocketNotifier notifier(signals, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &station,
        [signals, &station] { handleSignal(signals, station); });
    std::fprintf(stderr, "spf-emulator: ready on %s\n", qPrintable(station.address()));
    QCoreApplication::exec();
    return station.finish();
}

} // namespace

int main(int argc, char* argv[])
{
    openMissingStreams();
    // Whoever read the tape may have gone; the hosts have not.
    std::signal(SIGPIPE, SIG_IGN);
    const int signals = openSignals();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("spf-emulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FRSPF_VERSION));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QStringLiteral("documents"))
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
    } catch (const emulator::MemoryError& error) {
        return fail(QStringLiteral("the state %1 cannot be used: %2").arg(options.stateFolder, error.text()));
    }
}

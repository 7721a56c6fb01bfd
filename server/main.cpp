#include "configuration/configurationerror.h"
#include "http/listenerror.h"
#include "http/tlserror.h"
#include "http/tlsidentity.h"
#include "journalplace.h"
#include "postgres/openstore.h"
#include "preview/previewjob.h"
#include "program/certificatecommand.h"
#include "program/journalcommands.h"
#include "program/options.h"
#include "program/runfile.h"
#include "program/service.h"
#include "program/servicenotice.h"
#include "program/signals.h"
#include "program/successor.h"
#include "program/tokencommands.h"
#include "program/upgradecommand.h"
#include "worker/workerloop.h"

#include <driverlogtoqt.h>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

namespace {

using namespace frserver;

constexpr int failed = 1;
constexpr int wrong = 2;

int say(int status, const QString& what)
{
    const QStringList lines = what.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        std::fprintf(stderr, "frserver: %s\n", qPrintable(line));
    return status;
}

QString journalOf(const Configuration& configuration)
{
    const ServiceSettings& settings = configuration.service;
    if (!settings.storeUrl.isEmpty())
        return settings.storeUrl;
    return settings.journal.isEmpty() ? sale::journalPlace() : settings.journal;
}

/// What the run file stands beside. Several services of a machine may have one database for their journal.
QString runPlaceOf(const Options& options, const Configuration& configuration)
{
    const QString journal = journalOf(configuration);
    if (!sale::isShared(journal))
        return journal;
    const QByteArray name = QCryptographicHash::hash(
        QFileInfo(options.configFile).absoluteFilePath().toUtf8(), QCryptographicHash::Sha256);
    constexpr qsizetype enough = 8;
    return QFileInfo(Service::tokenFile(configuration.service, journal)).absolutePath()
        + QStringLiteral("/frserver-") + QString::fromLatin1(name.first(enough).toHex());
}

ListenAddress listenAddress(const Options& options, const Configuration& configuration)
{
    const ServiceSettings& settings = configuration.service;
    const bool hasTokens = TokenFile(Service::tokenFile(settings, journalOf(configuration))).exists();
    const auto addressOf
        = [&](const QString& text) { return ListenAddress::of(text, settings.hasTls(), hasTokens); };
    if (!options.listen.isEmpty())
        return addressOf(options.listen);
    if (settings.listen.isEmpty())
        return {};
    try {
        return addressOf(settings.listen);
    } catch (const std::invalid_argument& error) {
        throw ConfigurationError(
            {QStringLiteral("%1: listen = %2").arg(settings.listenPlace, QString::fromUtf8(error.what()))});
    }
}

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
void leaveToSuccessor(Leaving& leaving, Service& service, RunFile& runFile, const Successor& successor)
{
    if (leaving.isBegun)
        return;
    if (const QString fault = successor.fault(); !fault.isEmpty()) {
        say(0, QStringLiteral("upgrade: ") + fault);
        return runFile.tellKeptPlace(fault);
    }
    say(0, QStringLiteral("upgrade: finishing the documents under way"));
    leaving = {true, true};
    service.stop([] { QCoreApplication::quit(); });
}

/// Until it is asked to end, or to leave its place.
Leaving serveOn(const Options& options, const Configuration& configuration, const Successor& successor,
    ServiceNotice& notice)
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
        leaving = {true, false};
        service.stop([] { QCoreApplication::quit(); });
    });
    signals.onUpgrade([&] { leaveToSuccessor(leaving, service, runFile, successor); });
    say(0, QStringLiteral("ready on ") + service.url());
    notice.ready("ready on " + service.url().toUtf8());
    runFile.tellReady(QCoreApplication::applicationVersion());
    QCoreApplication::exec();
    return leaving;
}

int serve(const Options& options, const Configuration& configuration)
{
    const Successor successor(QCoreApplication::arguments());
    ServiceNotice notice;
    if (!serveOn(options, configuration, successor, notice).isForSuccessor)
        return 0;
    notice.leavePlace();
    return say(failed, successor.takePlace());
}

int checkConfig(const Options& options, const Configuration& configuration)
{
    const ListenAddress listen = listenAddress(options, configuration);
    const ServiceSettings& service = configuration.service;
    if (service.hasTls())
        http::TlsIdentity(service.tlsCertificate, service.tlsKey);
    std::printf("listens on %s, port %d\n", qPrintable(listen.address), listen.port);
    std::printf("journal %s\n", qPrintable(sale::shownPlace(journalOf(configuration))));
    for (const RegisterSettings& settings : configuration.registers)
        std::printf("register %s on %s, %s\n", qPrintable(settings.name), qPrintable(settings.port),
            qPrintable(receipt::protocolName(settings.protocol)));
    return 0;
}

/// A token for a register that is misspelt would open nothing, or that of a later configuration.
void requireRegisters(const Options& options, const Configuration& configuration)
{
    for (const QString& name : options.registers) {
        const auto isNamed = [&name](const RegisterSettings& settings) { return settings.name == name; };
        if (std::none_of(configuration.registers.cbegin(), configuration.registers.cend(), isNamed))
            throw ConfigurationError(
                {QStringLiteral("--registers: %1 has no [register %2]").arg(options.configFile, name)});
    }
}

int run(const Options& options)
{
    // It may come first, for a configuration that names it.
    if (options.command == Options::Command::MakeCertificate)
        return makeCertificate(options.name, QFileInfo(options.configFile).absolutePath());
    const Configuration configuration = Configuration::read(options.configFile);
    switch (options.command) {
    case Options::Command::Serve:
        return serve(options, configuration);
    case Options::Command::CheckConfig:
        return checkConfig(options, configuration);
    case Options::Command::Upgrade:
        // One that is wrong is told here, and nobody is disturbed.
        listenAddress(options, configuration);
        runUpgrade(runPlaceOf(options, configuration));
        return 0;
    case Options::Command::BackUp:
    case Options::Command::Export:
    case Options::Command::Import:
    case Options::Command::Migrate:
        return runJournalCommand(options, journalOf(configuration));
    default:
        break;
    }
    if (options.command == Options::Command::AddToken)
        requireRegisters(options, configuration);
    TokenFile tokens(Service::tokenFile(configuration.service, journalOf(configuration)));
    return runTokenCommand(options, tokens);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("frserver"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FRSERVER_VERSION));
    driverLogToQt();
    Options options;
    switch (Options::parse(QCoreApplication::arguments(), options)) {
    case Options::Outcome::Done:
        return 0;
    case Options::Outcome::Wrong:
        return wrong;
    case Options::Outcome::Run:
        break;
    }
    if (options.command == Options::Command::Worker)
        return runWorker();
    if (options.command == Options::Command::Preview)
        return runPreview();
    try {
        return run(options);
    } catch (const ConfigurationError& error) {
        return say(wrong, QString::fromUtf8(error.what()));
    } catch (const std::invalid_argument& error) {
        return say(wrong, QStringLiteral("--listen: ") + QString::fromUtf8(error.what()));
    } catch (const std::exception& error) {
        // It cannot listen, or use the journal or the tokens.
        return say(failed, QString::fromUtf8(error.what()));
    }
}

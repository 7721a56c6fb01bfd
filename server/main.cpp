#include "api/place.h"
#include "configuration/configurationerror.h"
#include "http/tlsidentity.h"
#include "postgres/openstore.h"
#include "postgres/wrongplace.h"
#include "preview/previewjob.h"
#include "program/certificatecommand.h"
#include "program/journalcommands.h"
#include "program/options.h"
#include "program/places.h"
#include "program/runfile.h"
#include "program/say.h"
#include "program/service.h"
#include "program/serving.h"
#include "program/tokencommands.h"
#include "program/upgradecommand.h"
#include "worker/workerloop.h"

#include <driverlogtoqt.h>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLoggingCategory>

#include <sys/prctl.h>

#include <algorithm>
#include <cstdio>

namespace {

using namespace frserver;

/// One that many machines share must be there before this program starts, with tables that it goes on with. A
/// file is made where it is not.
void requireStore(const QString& journal)
{
    // Shorter than a service that is to leave its place waits for the program that is to take it.
    constexpr int patienceMs = 3'000;
    if (sale::isShared(journal))
        sale::openStore(journal, patienceMs);
}

int checkConfig(const Options& options, const Configuration& configuration)
{
    const ListenAddress listen = listenAddress(options, configuration);
    const ServiceSettings& service = configuration.service;
    if (service.hasTls())
        http::TlsIdentity(service.tlsCertificate, service.tlsKey);
    requireStore(journalOf(configuration));
    std::printf("listens on %s, port %d\n", qPrintable(listen.address), listen.port);
    std::printf("journal %s\n", qPrintable(sale::shownPlace(journalOf(configuration))));
    for (const RegisterSettings& settings : configuration.registers)
        std::printf("register %s on %s, %s%s\n", qPrintable(settings.name), qPrintable(settings.port),
            qPrintable(receipt::protocolName(settings.protocol)),
            settings.hasCashier()
                ? ""
                : "; no cashier: documents have to name theirs, and no Z report is made by itself");
    if (configuration.registers.isEmpty())
        std::printf("no register of its own: it answers for those of other services\n");
    for (const PoolSettings& settings : configuration.pools)
        std::printf("pool %s of %s\n", qPrintable(settings.name),
            qPrintable(settings.registers.isEmpty() ? QStringLiteral("other services' registers")
                                                    : settings.registers.join(QStringLiteral(", "))));
    return 0;
}

/// A token for a register that is misspelt would open nothing, or that of a later configuration. With one
/// database it may be another machine's.
void requireRegisters(const Options& options, const Configuration& configuration)
{
    if (sale::isShared(journalOf(configuration)))
        return;
    for (const QString& name : options.registers) {
        const std::optional<QString> pool = Place::poolOf(name);
        const auto isNamed = [&](const auto& settings) { return settings.name == pool.value_or(name); };
        const auto has = [&](const auto& all) { return std::any_of(all.cbegin(), all.cend(), isNamed); };
        if (pool ? !has(configuration.pools) : !has(configuration.registers))
            throw ConfigurationError(
                {QStringLiteral("--registers: %1 has no [%2 %3]")
                        .arg(options.configFile, pool ? QStringLiteral("pool") : QStringLiteral("register"),
                            pool.value_or(name))});
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
    case Options::Command::Restored:
        if (options.command == Options::Command::Restored)
            requireNobodyServes(runPlaceOf(options, configuration));
        return runJournalCommand(options, journalOf(configuration));
    default:
        break;
    }
    if (options.command == Options::Command::AddToken)
        requireRegisters(options, configuration);
    TokenFile tokens(Service::tokenFile(configuration.service, journalOf(configuration)));
    return runTokenCommand(options, tokens);
}

/// What the service starts for a part of its work, and not by its name.
int runPart(int (*part)())
{
    ::prctl(PR_SET_NAME, "frserver");
    // The drivers' log tells of people.
    QLoggingCategory::setFilterRules(QStringLiteral("*=false\nfrserver.*=true\n"));
    return part();
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
        return wrongStatus;
    case Options::Outcome::Run:
        break;
    }
    if (options.command == Options::Command::Worker)
        return runPart(runWorker);
    if (options.command == Options::Command::Preview)
        return runPart(runPreview);
    try {
        return run(options);
    } catch (const ConfigurationError& error) {
        return say(wrongStatus, QString::fromUtf8(error.what()));
    } catch (const std::invalid_argument& error) {
        return say(wrongStatus, QStringLiteral("--listen: ") + QString::fromUtf8(error.what()));
    } catch (const sale::WrongPlace& error) {
        return say(wrongStatus, QString::fromUtf8(error.what()));
    } catch (const std::exception& error) {
        // It cannot listen, or use the journal or the tokens.
        return say(failedStatus, QString::fromUtf8(error.what()));
    }
}

#include "hostkills.h"
#include "powercuts.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

const QString powerCuts = QStringLiteral("power-cuts");
const QString kills = QStringLiteral("kill");

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Kills a software register, or its hosts, in the middle of sales, and checks that nothing is forgotten."));
    parser.addHelpOption();
    parser.addOptions({
        {powerCuts, QStringLiteral("Kill the register so often."), QStringLiteral("n")},
        {kills, QStringLiteral("End a host so often."), QStringLiteral("n")},
        {QStringLiteral("seed"), QStringLiteral("Seed of the moments (1)."), QStringLiteral("n"),
            QStringLiteral("1")},
        {QStringLiteral("emulator"), QStringLiteral("The program spf-emulator."), QStringLiteral("file")},
        {QStringLiteral("frctl"), QStringLiteral("The program frctl."), QStringLiteral("file")},
        {QStringLiteral("plugin"), QStringLiteral("The driver plugin."), QStringLiteral("file")},
    });
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);
    bool countOk = false;
    bool seedOk = false;
    const ProcessPlan plan{parser.value(parser.isSet(kills) ? kills : powerCuts).toInt(&countOk),
        parser.value(QStringLiteral("seed")).toULongLong(&seedOk), parser.value(QStringLiteral("emulator")),
        parser.value(QStringLiteral("frctl")), parser.value(QStringLiteral("plugin"))};
    if (!countOk || !seedOk || plan.count < 1 || plan.emulator.isEmpty() || plan.frctl.isEmpty()
        || plan.plugin.isEmpty()) {
        std::fputs("processcampaign: takes whole numbers and three files; see --help\n", stderr);
        return 2;
    }
    const bool isGood = parser.isSet(kills) ? HostKills(plan).run() : PowerCuts(plan).run();
    return isGood ? 0 : 1;
}

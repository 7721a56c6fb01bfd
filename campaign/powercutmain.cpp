#include "powercuts.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Kills a software register in the middle of sales, and checks that it has forgotten nothing."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("power-cuts"), QStringLiteral("Number of cuts (500)."), QStringLiteral("n"),
            QStringLiteral("500")},
        {QStringLiteral("seed"), QStringLiteral("Seed of their moments (1)."), QStringLiteral("n"),
            QStringLiteral("1")},
        {QStringLiteral("emulator"), QStringLiteral("The program spf-emulator."), QStringLiteral("file")},
        {QStringLiteral("frctl"), QStringLiteral("The program frctl."), QStringLiteral("file")},
        {QStringLiteral("plugin"), QStringLiteral("The driver plugin."), QStringLiteral("file")},
    });
    parser.process(application);
    bool cutsOk = false;
    bool seedOk = false;
    PowerCuts::Plan plan;
    plan.cuts = parser.value(QStringLiteral("power-cuts")).toInt(&cutsOk);
    plan.seed = parser.value(QStringLiteral("seed")).toULongLong(&seedOk);
    plan.emulator = parser.value(QStringLiteral("emulator"));
    plan.frctl = parser.value(QStringLiteral("frctl"));
    plan.plugin = parser.value(QStringLiteral("plugin"));
    if (!cutsOk || !seedOk || plan.cuts < 1 || plan.emulator.isEmpty() || plan.frctl.isEmpty()
        || plan.plugin.isEmpty()) {
        std::fputs("powercuts: takes whole numbers and three files; see --help\n", stderr);
        return 2;
    }
    return PowerCuts(plan).run() ? 0 : 1;
}

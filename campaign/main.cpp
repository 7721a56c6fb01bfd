#include "campaign.h"

#include <driverlogtoqt.h>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace {

int usageError(const QString& text)
{
    std::fprintf(stderr, "campaign: %s\n", text.toUtf8().constData());
    return 2;
}

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Sells over a line and a register that misbehave, and checks that no receipt is issued twice or lost."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("sales"), QStringLiteral("Number of sales (1000)."), QStringLiteral("n"),
            QStringLiteral("1000")},
        {QStringLiteral("seed"), QStringLiteral("Seed of the faults (1)."), QStringLiteral("n"),
            QStringLiteral("1")},
        {QStringLiteral("protocol"), QStringLiteral("HEX, XML or both (both)."), QStringLiteral("name"),
            QStringLiteral("both")},
        {QStringLiteral("neighbour"),
            QStringLiteral(
                "Another program makes documents in between: none, own (on a register that the host "
                "takes for its own), shared (none)."),
            QStringLiteral("kind"), QStringLiteral("none")},
        {QStringLiteral("kill-host"), QStringLiteral("The host's program is killed between exchanges, too.")},
        {QStringLiteral("cut-power"),
            QStringLiteral(
                "The register loses its power, too, and comes back with what it kept in a folder.")},
        {QStringLiteral("from"), QStringLiteral("First sale; it and those after it are traced."),
            QStringLiteral("step"), QStringLiteral("0")},
        {QStringLiteral("log"), QStringLiteral("Let the drivers log.")},
    });
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(application.arguments()) || !parser.positionalArguments().isEmpty())
        return usageError(parser.positionalArguments().isEmpty()
                ? parser.errorText()
                : QStringLiteral("takes options alone; see --help"));
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    bool salesOk = false;
    bool seedOk = false;
    bool fromOk = false;
    Campaign::Plan plan;
    plan.sales = parser.value(QStringLiteral("sales")).toInt(&salesOk);
    plan.seed = parser.value(QStringLiteral("seed")).toULongLong(&seedOk);
    plan.from = parser.value(QStringLiteral("from")).toInt(&fromOk);
    if (!salesOk || !seedOk || !fromOk || plan.sales < 1 || plan.from < 0)
        return usageError(QStringLiteral("--sales, --seed and --from take whole numbers"));
    const QStringList neighbours{QStringLiteral("none"), QStringLiteral("own"), QStringLiteral("shared")};
    const qsizetype neighbour = neighbours.indexOf(parser.value(QStringLiteral("neighbour")));
    if (neighbour < 0)
        return usageError(QStringLiteral("--neighbour takes none, own or shared"));
    plan.neighbour = static_cast<Neighbour>(neighbour);
    plan.hazards = {parser.isSet(QStringLiteral("kill-host")), parser.isSet(QStringLiteral("cut-power"))};
    const QString protocol = parser.value(QStringLiteral("protocol")).toUpper();
    QList<Protocol> protocols{Protocol::Hex, Protocol::Xml};
    if (protocol != QStringLiteral("BOTH"))
        protocols.removeAll(protocol == QStringLiteral("HEX") ? Protocol::Xml : Protocol::Hex);
    if (!QStringList{QStringLiteral("BOTH"), QStringLiteral("HEX"), QStringLiteral("XML")}.contains(protocol))
        return usageError(QStringLiteral("--protocol takes HEX, XML or both"));
    if (parser.isSet(QStringLiteral("log")))
        driverLogToQt();
    else
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    bool good = true;
    for (const Protocol one : protocols) {
        plan.protocol = one;
        good = Campaign(plan).run() && good;
    }
    return good ? 0 : 1;
}

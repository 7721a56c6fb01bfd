#include "bodies.h"
#include "exchanges.h"
#include "table.h"

#include <QCoreApplication>

#include <vector>

namespace {

// The compared measurements take turns, so that a busy moment hits all alike. The command line comes behind
// and overrules these.
char repetitions[] = "--benchmark_repetitions=15";
char interleaving[] = "--benchmark_enable_random_interleaving=true";
char minTime[] = "--benchmark_min_time=0.05";
char aggregates[] = "--benchmark_display_aggregates_only=true";

void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) { }

} // namespace

int main(int argc, char* argv[])
{
    // The devices want one. The drivers log as they do by default, into nothing.
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(dropMessage);
    std::vector<char*> arguments{argv[0], repetitions, interleaving, minTime, aggregates};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    registerRoundTrips();
    registerReceipts();
    registerAnswers();
    registerSales();
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    const bool isGood = medians.printTable();
    printExchanges();
    return isGood ? 0 : 1;
}

#include "tracecommands.h"

#include "errors.h"
#include "inputfile.h"
#include "trace/comparison.h"
#include "trace/tracereader.h"
#include "tracereplay.h"
#include "traceview.h"

#include <QJsonArray>

namespace frctl {

namespace {

constexpr qsizetype mostDifferences = 20;

trace::Trace traceOf(const QString& fileName, const Options& options)
{
    try {
        trace::Trace trace = trace::readTrace(readFile(fileName));
        if (trace.isCut)
            options.warnings->add({{receipt::Finding::Warning, fileName, {},
                QStringLiteral("a line broke off, as when the program was killed; it is left out")}});
        return trace;
    } catch (const trace::TraceError& error) {
        throw UsageError(QStringLiteral("%1: %2").arg(fileName, QString::fromUtf8(error.what())));
    }
}

Output compare(const trace::Trace& first, const trace::Trace& second)
{
    const QStringList differences = trace::differencesBetween(first, second, mostDifferences);
    Output output;
    output.lines = differences;
    if (differences.isEmpty())
        output.lines.append(QStringLiteral("the same"));
    output.json = {{QStringLiteral("differences"), QJsonArray::fromStringList(differences)}};
    output.status = differences.isEmpty() ? ExitSuccess : ExitFailure;
    return output;
}

void requireArguments(const Options& options, qsizetype count, const char* usage)
{
    if (options.arguments.size() != count)
        throw UsageError(QStringLiteral("trace %1").arg(QLatin1String(usage)));
}

Task prepareReplay(const Options& options)
{
    requireArguments(options, 3, "replay FILE --as register|host PORT");
    const trace::Trace trace = traceOf(options.arguments.at(1), options);
    const QString port = options.arguments.at(2);
    Task task;
    if (options.replaySide == QStringLiteral("register"))
        task.alone = [trace, port] { return playRegister(trace, port); };
    else if (options.replaySide == QStringLiteral("host"))
        task.alone = [trace, port, options] { return playHost(trace, port, options); };
    else
        throw UsageError(QStringLiteral("trace replay: --as is register or host"));
    return task;
}

} // namespace

Task prepareTrace(const Options& options)
{
    const QString& what = options.arguments.constFirst();
    if (what == QStringLiteral("replay"))
        return prepareReplay(options);
    Task task;
    if (what == QStringLiteral("show")) {
        requireArguments(options, 2, "show FILE");
        const trace::Trace trace = traceOf(options.arguments.at(1), options);
        task.alone = [trace] { return traceView(trace); };
    } else if (what == QStringLiteral("diff")) {
        requireArguments(options, 3, "diff FILE FILE");
        const trace::Trace first = traceOf(options.arguments.at(1), options);
        const trace::Trace second = traceOf(options.arguments.at(2), options);
        task.alone = [first, second] { return compare(first, second); };
    } else {
        throw UsageError(QStringLiteral("trace: \"%1\" is none of show, diff, replay").arg(what));
    }
    return task;
}

} // namespace frctl

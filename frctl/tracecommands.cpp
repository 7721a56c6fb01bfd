#include "tracecommands.h"

#include "errors.h"
#include "frctltr.h"
#include "inputfile.h"
#include "outputfile.h"
#include "trace/comparison.h"
#include "trace/dissector.h"
#include "trace/pcapng.h"
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
                tr("a line broke off, as when the program was killed; it is left out")}});
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
        output.lines.append(tr("the same"));
    output.json = {{QStringLiteral("differences"), QJsonArray::fromStringList(differences)}};
    output.status = differences.isEmpty() ? ExitSuccess : ExitFailure;
    return output;
}

Output writeCapture(const trace::Trace& trace, const QString& fileName)
{
    writeWholeFile(fileName, trace::pcapng(trace));
    return {{tr("%1 frames written: %2").arg(trace.frames.size()).arg(fileName)},
        {{QStringLiteral("file"), fileName}, {QStringLiteral("packets"), trace.frames.size()}}};
}

Output printedDissector()
{
    Output output;
    output.lines = {QString::fromUtf8(trace::dissector()).trimmed()};
    output.areLinesAll = true;
    return output;
}

Task alone(const std::function<Output()>& run)
{
    Task task;
    task.alone = run;
    return task;
}

Task prepareShow(const Options& options)
{
    const trace::Trace trace = traceOf(options.arguments.at(1), options);
    return alone([trace] { return traceView(trace); });
}

Task prepareDiff(const Options& options)
{
    const trace::Trace first = traceOf(options.arguments.at(1), options);
    const trace::Trace second = traceOf(options.arguments.at(2), options);
    return alone([first, second] { return compare(first, second); });
}

Task prepareReplay(const Options& options)
{
    const trace::Trace trace = traceOf(options.arguments.at(1), options);
    const QString port = options.arguments.at(2);
    if (options.replaySide == QStringLiteral("register"))
        return alone([trace, port] { return playRegister(trace, port); });
    if (options.replaySide == QStringLiteral("host"))
        return alone([trace, port, options] { return playHost(trace, port, options); });
    throw UsageError(tr("trace replay: --as is register or host"));
}

Task preparePcapng(const Options& options)
{
    const trace::Trace trace = traceOf(options.arguments.at(1), options);
    const QString target = options.arguments.at(2);
    return alone([trace, target] { return writeCapture(trace, target); });
}

Task prepareDissector(const Options& /*options*/)
{
    return alone(printedDissector);
}

struct Action
{
    const char* name;
    qsizetype argumentCount;
    /// What stands behind the name.
    const char* usage;
    Task (*prepare)(const Options& options);
};

constexpr Action actions[] = {
    {"show", 1, "FILE", prepareShow},
    {"diff", 2, "FILE FILE", prepareDiff},
    {"replay", 2, "FILE --as register|host PORT", prepareReplay},
    {"pcapng", 2, "FILE OUT", preparePcapng},
    {"dissector", 0, "", prepareDissector},
};

} // namespace

Task prepareTrace(const Options& options)
{
    const QString& what = options.arguments.constFirst();
    QStringList known;
    for (const Action& action : actions) {
        known.append(QLatin1String(action.name));
        if (what != known.constLast())
            continue;
        if (options.arguments.size() != action.argumentCount + 1)
            throw UsageError(QStringLiteral("trace %1 %2").arg(what, QLatin1String(action.usage)).trimmed());
        return action.prepare(options);
    }
    throw UsageError(tr("trace: \"%1\" is none of %2").arg(what, known.join(QStringLiteral(", "))));
}

} // namespace frctl

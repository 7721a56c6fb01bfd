#include "tracecommands.h"

#include "errors.h"
#include "frctltr.h"
#include "hostreplay.h"
#include "inputfile.h"
#include "outputfile.h"
#include "trace/comparison.h"
#include "trace/dissector.h"
#include "trace/pcapng.h"
#include "trace/script.h"
#include "trace/tracereader.h"
#include "tracereplay.h"
#include "traceview.h"

#include <QJsonArray>

namespace frctl {

namespace {

constexpr qsizetype mostDifferences = 20;
/// Some weeks of a busy register.
constexpr qsizetype largestTraceMebibytes = 1024;

trace::Trace traceOf(const QString& fileName, const Options& options)
{
    try {
        trace::Trace trace = trace::readTrace(readFile(fileName, largestTraceMebibytes));
        if (trace.isCut)
            options.warnings->add({{receipt::Finding::Warning, fileName, {},
                tr("a line broke off, as when the program was killed; it is left out")}});
        if (trace.isMixed)
            options.warnings->add({{receipt::Finding::Warning, fileName, {},
                tr("a masked part and a full one: names and passwords stand in it")}});
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
    return plainText(QString::fromUtf8(trace::dissector()).trimmed());
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

/// The register that is played makes its port: that of a true one must be named by mistake nowhere.
QString replayPort(const Options& options, bool isHost)
{
    const QString port = options.arguments.value(2, isHost ? options.port : QString());
    if (port.isEmpty())
        throw UsageError(tr("trace replay: no port"));
    return port;
}

void requireProtocol(const trace::Trace& trace, const Options& options)
{
    if (options.isGiven("protocol") && trace::isHex(trace) != options.isHex())
        throw UsageError(tr("trace replay: the register speaks %1, and the trace is of the other protocol")
                             .arg(options.protocol));
}

Task prepareReplay(const Options& options)
{
    const trace::Trace trace = traceOf(options.arguments.at(1), options);
    const bool isHost = options.replaySide == QStringLiteral("host");
    if (!isHost && options.replaySide != QStringLiteral("register"))
        throw UsageError(tr("trace replay: --as is register or host"));
    const QString port = replayPort(options, isHost);
    if (!isHost)
        return alone([trace, port] { return playRegister(trace, port); });
    requireProtocol(trace, options);
    return alone([trace, port, options] { return playHost(trace, port, options); });
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
    qsizetype leastArguments;
    qsizetype mostArguments;
    /// What stands behind the name.
    const char* usage;
    Task (*prepare)(const Options& options);
};

constexpr Action actions[] = {{"show", 1, 1, "FILE", prepareShow}, {"diff", 2, 2, "FILE FILE", prepareDiff},
    {"replay", 1, 2, "FILE --as register PORT|--as host [PORT]", prepareReplay},
    {"pcapng", 2, 2, "FILE OUT", preparePcapng}, {"dissector", 0, 0, "", prepareDissector}};

QString usageOf(const Action& action)
{
    return QString(QLatin1String(action.name) + QLatin1Char(' ') + QLatin1String(action.usage)).trimmed();
}

} // namespace

Task prepareTrace(const Options& options)
{
    const QString& what = options.arguments.constFirst();
    QStringList known;
    for (const Action& action : actions) {
        known.append(QLatin1String(action.name));
        if (what != known.constLast())
            continue;
        const qsizetype count = options.arguments.size() - 1;
        if (count < action.leastArguments || count > action.mostArguments)
            throw UsageError(QStringLiteral("trace ") + usageOf(action));
        return action.prepare(options);
    }
    throw UsageError(tr("trace: \"%1\" is none of %2").arg(what, known.join(QStringLiteral(", "))));
}

} // namespace frctl

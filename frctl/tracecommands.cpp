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
#include "verb.h"

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

constexpr Verb traceVerbs[] = {
    {"show", 1, 1, prepareShow},
    {"diff", 2, 2, prepareDiff},
    {"replay", 1, 2, prepareReplay, "as password force"},
    {"pcapng", 2, 2, preparePcapng},
    {"dissector", 0, 0, prepareDissector},
};

} // namespace

Task prepareTrace(const Options& options)
{
    return prepareVerb(traceVerbs, options);
}

} // namespace frctl

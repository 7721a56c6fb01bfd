#include "program/options.h"

#include "memory/statefolder.h"
#include "program/identityoptions.h"
#include "program/numberoption.h"
#include "program/paneloptions.h"

#include <QCommandLineParser>

#include <cstdio>

namespace {

QString inLines(const QStringList& words)
{
    constexpr qsizetype longestLine = 78;
    QStringList lines{QString()};
    for (const QString& word : words) {
        if (lines.constLast().size() + word.size() >= longestLine)
            lines.append(QString());
        lines.last() += QLatin1Char(' ') + word;
    }
    return lines.join(QLatin1Char('\n'));
}

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "A software fiscal register on a pseudo terminal or a TCP port.\n\n"
        "  spf-emulator --panel                    in a browser, on a pseudo terminal of its own\n"
        "  spf-emulator --pty /tmp/register        for a host that opens /tmp/register\n"
        "  spf-emulator --tcp 5555 --faults lost@3 over TCP; the third answer gets lost\n\n"
        "Faults are given as MODE[:N]@EXCHANGE, several with commas between them, \"@5+\" from the fifth on:\n%1\n\n"
        "\"documents --state DIR [N] [--json]\" shows the documents of a state instead, see \"documents --help\".\n"
        "SIGUSR1 takes the paper out or puts it in again.")
                                         .arg(inLines(emulator::FaultPlan::usage())));
    parser.addOptions({
        {QStringLiteral("pty"), QStringLiteral("Link to the host's side of a pseudo terminal."),
            QStringLiteral("LINK")},
        {QStringLiteral("tcp"), QStringLiteral("TCP port on this machine, 0 for any that is free."),
            QStringLiteral("PORT")},
        {QStringLiteral("tcp-connections"),
            QStringLiteral(
                "Whom a TCP port serves that a second host connects to: last, first or both (last)."),
            QStringLiteral("WHICH")},
        {QStringLiteral("protocol"),
            QStringLiteral("HEX, XML, or auto: whatever the host begins with (auto)."),
            QStringLiteral("NAME")},
        {QStringLiteral("baud"), QStringLiteral("Answer at the pace of a serial line."),
            QStringLiteral("RATE")},
        {QStringLiteral("tape"), QStringLiteral("File that the tape is added to."), QStringLiteral("FILE")},
        {QStringLiteral("journal"), QStringLiteral("File that gets one JSON line a document."),
            QStringLiteral("FILE")},
        {QStringLiteral("conformance"),
            QStringLiteral("File that tells at the end, as JSON, what the host did."),
            QStringLiteral("REPORT")},
        {QStringLiteral("state"),
            QStringLiteral("Folder that the register keeps its memory in, from one start to the next."),
            QStringLiteral("DIR")},
        {QStringLiteral("snapshot"),
            QStringLiteral("Keep the state as it is under that name; without a line or a panel end then."),
            QStringLiteral("NAME")},
        {QStringLiteral("restore"),
            QStringLiteral("Put the state of that name back first; without a line or a panel end then."),
            QStringLiteral("NAME")},
        {QStringLiteral("trace"),
            QStringLiteral("File that gets one line a frame, with its meaning; - is standard error."),
            QStringLiteral("FILE")},
        {QStringLiteral("trace-full"), QStringLiteral("Names, addresses and passwords stand in the trace.")},
        {QStringLiteral("quiet"), QStringLiteral("Do not show the tape.")},
        {QStringLiteral("lenient"),
            QStringLiteral("Take requests of hosts that are written to other rules, too.")},
        {QStringLiteral("reset-password"),
            QStringLiteral("Put the password of the HEX protocol back to that of the factory.")},
        {QStringLiteral("paper-out"), QStringLiteral("Start without paper.")},
        {QStringLiteral("ofd"), QStringLiteral("The OFD can be reached and takes the documents.")},
        {QStringLiteral("faults"), QStringLiteral("Misbehave on purpose."), QStringLiteral("LIST")},
    });
}

QString readFaults(const QCommandLineParser& parser, Options& options)
{
    QString error;
    const std::optional<emulator::FaultPlan> plan
        = emulator::FaultPlan::parse(parser.value(QStringLiteral("faults")), &error);
    options.faults = plan.value_or(emulator::FaultPlan());
    // A line that takes both protocols tells when it meets one that does not fit.
    if (!error.isEmpty() || options.protocol == emulator::ProtocolChoice::Auto)
        return error;
    const bool hex = options.protocol == emulator::ProtocolChoice::Hex;
    return options.faults.misfit(hex ? emulator::Language::Hex : emulator::Language::Xml);
}

bool readProtocol(const QString& name, emulator::ProtocolChoice& choice)
{
    if (name == QStringLiteral("HEX"))
        choice = emulator::ProtocolChoice::Hex;
    else if (name == QStringLiteral("XML"))
        choice = emulator::ProtocolChoice::Xml;
    return name.isEmpty() || name == QStringLiteral("auto") || choice != emulator::ProtocolChoice::Auto;
}

// The panel tells which pseudo terminal there is where none was asked for.
bool hasLine(const QCommandLineParser& parser)
{
    return parser.isSet(QStringLiteral("pty")) || parser.isSet(QStringLiteral("tcp"))
        || parser.isSet(QStringLiteral("panel"));
}

QString readState(const QCommandLineParser& parser, Options& options)
{
    options.stateFolder = parser.value(QStringLiteral("state"));
    options.snapshot = parser.value(QStringLiteral("snapshot"));
    options.restore = parser.value(QStringLiteral("restore"));
    bool isSnapshotMeant = false;
    for (const char* const name : {"snapshot", "restore"}) {
        const QString option = QLatin1String(name);
        if (!parser.isSet(option))
            continue;
        isSnapshotMeant = true;
        if (!emulator::StateFolder::isSnapshotName(parser.value(option)))
            return QStringLiteral("--%1 is a name of letters, digits, points, hyphens and underscores")
                .arg(option);
    }
    if (options.stateFolder.isEmpty() && (isSnapshotMeant || parser.isSet(QStringLiteral("state"))))
        return QStringLiteral("--state is the folder of the state");
    options.isWithoutLine = isSnapshotMeant && !hasLine(parser);
    return {};
}

QString readLine(const QCommandLineParser& parser, Options& options)
{
    const bool hasLink = parser.isSet(QStringLiteral("pty"));
    options.link = parser.value(QStringLiteral("pty"));
    if ((hasLink && options.port) || !(hasLine(parser) || options.isWithoutLine))
        return QStringLiteral("give one of --pty and --tcp, or --panel");
    if (const QString name = QStringLiteral("tcp-connections"); parser.isSet(name)) {
        const std::optional<TcpConnections> rule = tcpConnectionsNamed(parser.value(name));
        if (!rule || !options.port)
            return QStringLiteral("--tcp-connections is last, first or both, and goes with --tcp");
        options.connections = *rule;
    }
    return hasLink && options.link.isEmpty() ? QStringLiteral("--pty is the name of a link") : QString();
}

// A variable of a script that is empty is not to leave a file unwritten without a word.
QString readFiles(const QCommandLineParser& parser, Options& options)
{
    options.tapeFile = parser.value(QStringLiteral("tape"));
    options.journalFile = parser.value(QStringLiteral("journal"));
    options.conformanceFile = parser.value(QStringLiteral("conformance"));
    options.traceFile = parser.value(QStringLiteral("trace"));
    options.isTraceFull = parser.isSet(QStringLiteral("trace-full"));
    if (options.isTraceFull && !parser.isSet(QStringLiteral("trace")))
        return QStringLiteral("--trace-full goes with --trace");
    for (const char* const name : {"tape", "journal", "conformance", "trace"}) {
        const QString option = QLatin1String(name);
        if (parser.isSet(option) && parser.value(option).isEmpty())
            return QStringLiteral("--%1 is the name of a file").arg(option);
    }
    return {};
}

QString fill(const QCommandLineParser& parser, Options& options)
{
    int port = -1;
    QString error = readNumber(parser, "tcp", 0, 65535, port);
    if (error.isEmpty())
        error = readNumber(parser, "baud", 300, 4'000'000, options.baudRate);
    if (error.isEmpty())
        error = identityoptions::readNumbers(parser, options);
    if (!error.isEmpty())
        return error;
    if (!readProtocol(parser.value(QStringLiteral("protocol")), options.protocol))
        return QStringLiteral("--protocol is HEX, XML or auto");
    if (port >= 0)
        options.port = static_cast<quint16>(port);
    if (error = readState(parser, options); !error.isEmpty())
        return error;
    if (error = readLine(parser, options); !error.isEmpty())
        return error;
    if (error = readFiles(parser, options); !error.isEmpty())
        return error;
    options.given = parser.optionNames();
    if (error = identityoptions::read(parser, options); !error.isEmpty())
        return error;
    error = readFaults(parser, options);
    return error.isEmpty() ? paneloptions::read(parser, options) : error;
}

} // namespace

Options::Outcome Options::parse(const QStringList& arguments, Options& options)
{
    QCommandLineParser parser;
    describe(parser);
    identityoptions::describe(parser);
    paneloptions::describe(parser);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const bool understood = parser.parse(paneloptions::withPort(arguments));
    if (understood && parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return Outcome::Done;
    }
    if (understood && parser.isSet(version)) {
        std::printf("%s %s\n", qPrintable(QCoreApplication::applicationName()),
            qPrintable(QCoreApplication::applicationVersion()));
        return Outcome::Done;
    }
    QString error = understood ? QString() : parser.errorText();
    if (understood && !parser.positionalArguments().isEmpty())
        error = QStringLiteral("what is \"%1\"?").arg(parser.positionalArguments().constFirst());
    if (error.isEmpty())
        error = fill(parser, options);
    if (!error.isEmpty()) {
        std::fprintf(stderr, "spf-emulator: %s\n", qPrintable(error));
        return Outcome::Wrong;
    }
    options.quiet = parser.isSet(QStringLiteral("quiet"));
    options.lenient = parser.isSet(QStringLiteral("lenient"));
    options.resetPassword = parser.isSet(QStringLiteral("reset-password"));
    options.paperOut = parser.isSet(QStringLiteral("paper-out"));
    options.operatorReachable = parser.isSet(QStringLiteral("ofd"));
    return Outcome::Run;
}

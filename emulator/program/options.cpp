#include "program/options.h"

#include "memory/statefolder.h"
#include "program/paneloptions.h"
#include "register/drivenumber.h"
#include "register/register.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QMap>
#include <QRegularExpression>

#include <cstdio>
#include <limits>

namespace {

constexpr int noDays = std::numeric_limits<int>::min();

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
        {QStringLiteral("model"), QStringLiteral("Model code."), QStringLiteral("CODE")},
        {QStringLiteral("serial"), QStringLiteral("Factory number, 20 characters at the most."),
            QStringLiteral("NUMBER")},
        {QStringLiteral("drive"),
            QStringLiteral(
                "Number of the fiscal drive: 16 digits, the first four 9999 (another one each start)."),
            QStringLiteral("NUMBER")},
        {QStringLiteral("drive-phase"),
            QStringLiteral("Phase of the drive's life: ready, fiscal, closed, read, or a number (fiscal)."),
            QStringLiteral("NAME")},
        {QStringLiteral("drive-documents-left"),
            QStringLiteral("Documents that the drive has room for (no end)."), QStringLiteral("COUNT")},
        {QStringLiteral("drive-days-left"),
            QStringLiteral("Days until the drive expires, negative when it has (15 months)."),
            QStringLiteral("DAYS")},
        {QStringLiteral("electronic-without-paper"),
            QStringLiteral("yes: receipts by mail only are not printed; no: they are, as all others (yes)."),
            QStringLiteral("WORD")},
        {QStringLiteral("clock"),
            QStringLiteral("Let the clock run from that time, as 2026-03-01T09:00:00 (the computer's)."),
            QStringLiteral("TIME")},
        {QStringLiteral("width"), QStringLiteral("Characters on a line of the tape, 44 or 48."),
            QStringLiteral("WIDTH")},
    });
}

// Characters 4 and 5 of the factory number tell the model.
QString defaultSerial(int model)
{
    return QStringLiteral("001") + QStringLiteral("%1").arg(model % 100, 2, 10, QLatin1Char('0'))
        + QStringLiteral("000000012345678");
}

// It stands in answers of both protocols: nothing that is a sign of a line's own, and not nothing.
bool isSerial(const QString& number)
{
    static const QRegularExpression form(QStringLiteral("\\A(?! *\\z)[\\x20-\\x7E]{1,20}\\z"));
    return form.match(number).hasMatch();
}

QString readDrive(const QCommandLineParser& parser, QString& number)
{
    const QString name = QStringLiteral("drive");
    number = parser.isSet(name) ? parser.value(name) : emulator::drivenumber::fresh();
    return emulator::drivenumber::isGood(number) ? QString()
                                                 : QStringLiteral("--drive is 9999 and 12 more digits");
}

QString readClock(const QCommandLineParser& parser, qint64& ahead)
{
    if (!parser.isSet(QStringLiteral("clock")))
        return {};
    const QDateTime time = QDateTime::fromString(parser.value(QStringLiteral("clock")), Qt::ISODate);
    ahead = QDateTime::currentDateTime().msecsTo(time);
    return emulator::Register::isClockTime(time)
        ? QString()
        : QStringLiteral("--clock is a time as 2026-03-01T09:00:00, in the years 2000 to 2099");
}

bool readNumber(
    const QCommandLineParser& parser, const char* name, int least, int most, int& value, QString& error)
{
    const QString option = QLatin1String(name);
    if (!parser.isSet(option))
        return true;
    bool ok = false;
    const int number = parser.value(option).toInt(&ok);
    if (!ok || number < least || number > most) {
        error = QStringLiteral("--%1 must be a number from %2 to %3").arg(option).arg(least).arg(most);
        return false;
    }
    value = number;
    return true;
}

int drivePhase(const QString& text)
{
    static const QMap<QString, int> names{{QStringLiteral("ready"), emulator::DriveLife::ready},
        {QStringLiteral("fiscal"), emulator::DriveLife::fiscalMode},
        {QStringLiteral("closed"), emulator::DriveLife::closed},
        {QStringLiteral("read"), emulator::DriveLife::archiveRead}};
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && number >= 0 && number <= emulator::DriveLife::archiveRead ? number : names.value(text, -1);
}

QString readDriveLife(const QCommandLineParser& parser, emulator::DriveLife& life)
{
    QString error;
    int documents = -1;
    int days = noDays;
    if (!readNumber(parser, "drive-documents-left", 0, 1'000'000'000, documents, error)
        || !readNumber(parser, "drive-days-left", -10'000, 10'000, days, error))
        return error;
    if (documents >= 0)
        life.documentsLeft = documents;
    if (days != noDays)
        life.daysLeft = days;
    if (parser.isSet(QStringLiteral("drive-phase")))
        life.phase = drivePhase(parser.value(QStringLiteral("drive-phase")));
    return life.phase >= 0 ? QString()
                           : QStringLiteral("--drive-phase is ready, fiscal, closed, read, or 0 to 15");
}

bool readYesNo(const QString& word, bool& value)
{
    if (!word.isEmpty())
        value = word == QStringLiteral("yes");
    return word.isEmpty() || value || word == QStringLiteral("no");
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
    QString error;
    int port = -1;
    emulator::Identity& identity = options.identity;
    if (!readNumber(parser, "tcp", 0, 65535, port, error)
        || !readNumber(parser, "baud", 300, 4'000'000, options.baudRate, error)
        || !readNumber(parser, "model", 0, 9999, identity.model, error)
        || !readNumber(parser, "width", 44, 48, identity.width, error))
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
    if (identity.width != 44 && identity.width != 48)
        return QStringLiteral("--width is 44 or 48");
    options.given = parser.optionNames();
    identity.serialNumber = defaultSerial(identity.model);
    if (parser.isSet(QStringLiteral("serial")))
        identity.serialNumber = parser.value(QStringLiteral("serial")).leftJustified(20);
    if (!isSerial(identity.serialNumber))
        return QStringLiteral("--serial is 1 to 20 digits, Latin letters and signs");
    if (error = readDrive(parser, identity.driveNumber); !error.isEmpty())
        return error;
    if (error = readDriveLife(parser, identity.driveLife); !error.isEmpty())
        return error;
    if (!readYesNo(parser.value(QStringLiteral("electronic-without-paper")), identity.electronicWithoutPaper))
        return QStringLiteral("--electronic-without-paper is yes or no");
    if (error = readClock(parser, options.clockAhead); !error.isEmpty())
        return error;
    error = readFaults(parser, options);
    return error.isEmpty() ? paneloptions::read(parser, options) : error;
}

} // namespace

Options::Outcome Options::parse(const QStringList& arguments, Options& options)
{
    QCommandLineParser parser;
    describe(parser);
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

#include "program/paneloptions.h"

#include "program/options.h"
#include "register/drivenumber.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QRegularExpression>

#include <limits>

namespace paneloptions {

namespace {

constexpr int usualPort = 8402;
constexpr int mostRegisters = 100;
constexpr int greatestPort = std::numeric_limits<quint16>::max();
/// A token that can be guessed lets everybody in.
constexpr qsizetype shortestToken = 16;

const QString panelName = QStringLiteral("panel");
const QString addressName = QStringLiteral("panel-address");
const QString tokenName = QStringLiteral("panel-token");
const QString tokenFileName = QStringLiteral("panel-token-file");
const QString hostName = QStringLiteral("panel-host");
const QString registersName = QStringLiteral("registers");

std::optional<int> numberWithin(const QString& text, int least, int most)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

QString readToken(const QCommandLineParser& parser, QByteArray& token)
{
    token = parser.value(tokenName).toUtf8();
    if (parser.isSet(tokenFileName)) {
        QFile file(parser.value(tokenFileName));
        if (!file.open(QIODevice::ReadOnly))
            return QStringLiteral("cannot read %1: %2").arg(file.fileName(), file.errorString());
        token = file.readAll().trimmed();
    }
    const bool isGiven = parser.isSet(tokenName) || parser.isSet(tokenFileName);
    return isGiven && token.size() < shortestToken
        ? QStringLiteral("the token of the panel has at least %1 characters").arg(shortestToken)
        : QString();
}

QString readPanel(const QCommandLineParser& parser, Options& options)
{
    const std::optional<int> port = numberWithin(parser.value(panelName), 0, greatestPort);
    if (!port)
        return QStringLiteral("--panel is a port from 0 to %1").arg(greatestPort);
    options.panelPort = static_cast<quint16>(*port);
    options.panelHosts = parser.values(hostName);
    static const QRegularExpression name(QStringLiteral("\\A[A-Za-z0-9]([A-Za-z0-9.-]*[A-Za-z0-9])?\\z"));
    for (const QString& host : std::as_const(options.panelHosts)) {
        if (!name.match(host).hasMatch())
            return QStringLiteral("--panel-host is the name of a host, without a port");
    }
    if (parser.isSet(addressName))
        options.panelAddress = parser.value(addressName);
    const QHostAddress address(options.panelAddress);
    if (address.isNull())
        return QStringLiteral("--panel-address is an address in digits");
    if (const QString error = readToken(parser, options.panelToken); !error.isEmpty())
        return error;
    return address.isLoopback() || !options.panelToken.isEmpty()
        ? QString()
        : QStringLiteral(
            "others than this machine are let in with --panel-token or --panel-token-file alone");
}

QString readRegisters(const QCommandLineParser& parser, Options& options)
{
    if (!parser.isSet(registersName))
        return {};
    const std::optional<int> count = numberWithin(parser.value(registersName), 1, mostRegisters);
    if (!count)
        return QStringLiteral("--registers is a number from 1 to %1").arg(mostRegisters);
    options.registers = *count;
    if (options.port && *options.port != 0 && *options.port + *count - 1 > greatestPort)
        return QStringLiteral("--tcp is the first of %1 ports").arg(*count);
    const std::pair<const char*, const QString&> numbers[]
        = {{"drive", options.identity.driveNumber}, {"serial", options.identity.serialNumber}};
    for (const auto& [name, number] : numbers) {
        if (*count > 1 && !emulator::drivenumber::countedOn(number, *count - 1))
            return QStringLiteral("--%1 ends with digits that %2 registers can count on from")
                .arg(QLatin1String(name))
                .arg(*count);
    }
    return {};
}

// No two of them have a number in common.
QString countedOn(const QString& number, int by)
{
    return emulator::drivenumber::countedOn(number, by).value_or(number);
}

void addNumber(QString& file, int number)
{
    if (!file.isEmpty() && file != QStringLiteral("-"))
        file += QStringLiteral(".%1").arg(number);
}

} // namespace

void describe(QCommandLineParser& parser)
{
    parser.addOptions({
        {panelName,
            QStringLiteral("Show the register in a browser, and let it be worked over HTTP (%1).")
                .arg(usualPort),
            QStringLiteral("[PORT]")},
        {addressName, QStringLiteral("Listen there instead of 127.0.0.1."), QStringLiteral("ADDRESS")},
        {tokenName, QStringLiteral("Let in with that token alone."), QStringLiteral("TOKEN")},
        {tokenFileName, QStringLiteral("The same, from a file."), QStringLiteral("FILE")},
        {hostName, QStringLiteral("A name that the panel is asked for by, such as one of a container."),
            QStringLiteral("NAME")},
        {registersName,
            QStringLiteral(
                "So many registers: LINK.1, LINK.2 ... or ports from PORT on, DIR/1 ... for states."),
            QStringLiteral("N")},
        {QStringLiteral("magic"),
            QStringLiteral("The kopecks of the price of a position \"ТЕСТ\" choose a fault.")},
    });
}

QString read(const QCommandLineParser& parser, Options& options)
{
    options.magic = parser.isSet(QStringLiteral("magic"));
    if (const QString error = readRegisters(parser, options); !error.isEmpty())
        return error;
    if (parser.isSet(panelName))
        return readPanel(parser, options);
    for (const QString& option : {addressName, tokenName, tokenFileName, hostName}) {
        if (parser.isSet(option))
            return QStringLiteral("--%1 goes with --panel").arg(option);
    }
    return {};
}

QStringList withPort(const QStringList& arguments)
{
    QStringList complete;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        complete.append(arguments.at(index));
        const QString next = arguments.value(index + 1);
        const bool hasPort = !next.isEmpty() && !next.startsWith(QLatin1Char('-'));
        if (arguments.at(index) == QStringLiteral("--panel") && !hasPort)
            complete.append(QString::number(usualPort));
    }
    return complete;
}

Options forRegister(const Options& options, int number)
{
    Options own = options;
    if (options.registers == 1)
        return own;
    if (own.port && *own.port != 0)
        own.port = static_cast<quint16>(*own.port + number - 1);
    for (QString* const file :
        {&own.link, &own.tapeFile, &own.journalFile, &own.conformanceFile, &own.traceFile})
        addNumber(*file, number);
    if (!own.stateFolder.isEmpty())
        own.stateFolder = QDir(own.stateFolder).filePath(QString::number(number));
    own.identity.driveNumber = countedOn(own.identity.driveNumber, number - 1);
    own.identity.serialNumber = countedOn(own.identity.serialNumber, number - 1);
    return own;
}

} // namespace paneloptions

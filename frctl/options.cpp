#include "options.h"

#include "errors.h"
#include "plaintext.h"
#include "portname.h"
#include "showntext.h"
#include "taxnumber.h"

#include <QCommandLineParser>

namespace frctl {

namespace {

struct OptionRow
{
    const char* name;
    /// Null for a switch.
    const char* value;
    const char* help;
};

constexpr OptionRow optionRows[] = {
    {"port", "PORT", "The register's line: /dev/tty..., the link of a pty, or tcp:host:port."},
    {"wait", "SECONDS", "How long to wait for a port that another program works (0)."},
    {"protocol", "HEX|XML", "Protocol of the register (XML)."},
    {"protocol-version", "TEXT", "Version of the control protocol that XML requests carry."},
    {"plugin", "FILE|DIR", "The driver plugin, or a folder to look for it; may be repeated."},
    {"exclusive", "yes|no",
        "Whether only programs of this machine that take its lock work the register (yes; no for tcp:)."},
    {"device-id", "N", "Number of the register, 0 to 19 (0)."},
    {"no-speed-enumeration", nullptr, "Keep to the last good speed when a connection is repeated."},
    {"option", "BIT=on|off", "Overrule a driver option, BIT as 0x10 or 16; may be repeated."},
    {"cashier", "NAME", "The cashier; goes before the one that a receipt names."},
    {"cashier-inn", "INN", "The cashier's tax number."},
    {"tax-systems", "LIST", "For registration: osn, usnIncome, usnIncomeOutcome, envd, esn, patent."},
    {"id", "TEXT", "For sell and refund: the sale's name; the same name again is never sold twice."},
    {"journal", "FILE",
        "The journal of documents (/var/lib/frspf/sales.sqlite, or in $XDG_STATE_HOME/frspf)."},
    {"state", "STATE", "For journal list and export: queued, running, issued, notIssued or unknown."},
    {"since", "DATE", "For journal list and export: accepted on that day or later."},
    {"before", "DATE", "For journal anonymise: accepted before that day."},
    {"document", "N", "For journal resolve: the number on the receipt."},
    {"note", "TEXT", "For journal resolve and accept: what was seen."},
    {"drop", "PATH", "For sell and refund: a field that the protocol does not carry; may be repeated."},
    {"split", nullptr,
        "For sell and refund: two positions where a discount leaves no whole kopecks a piece."},
    {"marks", "strict|warn|any",
        "For sell and refund: marking codes that were not checked on line are errors too, or none is (warn)."},
    {"strict", nullptr, "Warnings are errors, and --marks strict."},
    {"force", nullptr,
        "For params set: write also the password of the link (31), which shuts this driver out."},
    {"clear", nullptr, "For logo: remove the picture."},
    {"log-level", "LEVEL", "trace, debug, info, warn or error (error); the log goes to stderr."},
    {"trace", "FILE", "Add what goes over the line to FILE, a line a frame; - is standard error."},
    {"trace-full", nullptr, "Names, addresses and passwords stand in the trace."},
    {"as", "register|host", "For trace replay: whose side is played."},
    {"password", "TEXT", "For trace replay --as host: the register's password over HEX (QZXW)."},
    {"json", nullptr, "Print one JSON object."},
    {"help", nullptr, "Show this help."},
    {"version", nullptr, "Show the version."},
};

void addOptions(QCommandLineParser& parser)
{
    for (const OptionRow& row : optionRows) {
        QCommandLineOption option(QString::fromLatin1(row.name), QString::fromLatin1(row.help));
        if (row.value != nullptr)
            option.setValueName(QString::fromLatin1(row.value));
        parser.addOption(option);
    }
}

QString protocol(const QString& text)
{
    // The plugin takes whatever is not HEX for XML; a misspelt name must not end there.
    if (text != QStringLiteral("HEX") && text != QStringLiteral("XML"))
        throw UsageError(QStringLiteral("--protocol: \"%1\" is neither HEX nor XML").arg(text));
    return text;
}

/// Texts of the command line that reach the register.
QString line(const char* option, const QString& text)
{
    if (const std::optional<QString> fault = receipt::textFault(text))
        throw UsageError(QStringLiteral("--%1: %2").arg(QLatin1String(option), *fault));
    return text;
}

QString cashierName(const QString& text)
{
    // Tag 1021.
    constexpr int longestName = 64;
    if (text.size() > longestName)
        throw UsageError(QStringLiteral("--cashier: must have at most %1 characters, not %2")
                             .arg(longestName)
                             .arg(text.size()));
    // It would take the place of the receipt's cashier. An empty one is none.
    if (!text.isEmpty() && text.trimmed().isEmpty())
        throw UsageError(QStringLiteral("--cashier: has nothing but blanks"));
    return line("cashier", text);
}

QString cashierInn(const QString& text)
{
    if (!receipt::isInn(text))
        throw UsageError(QStringLiteral("--cashier-inn: \"%1\" is no tax number of 10 or 12 digits, the last "
                                        "of which are right for the others")
                             .arg(receipt::shownText(text)));
    return text;
}

sale::MarkPolicy markPolicy(const QString& text)
{
    if (text == QStringLiteral("strict"))
        return sale::MarkPolicy::Strict;
    if (text == QStringLiteral("warn"))
        return sale::MarkPolicy::Warn;
    if (text != QStringLiteral("any"))
        throw UsageError(QStringLiteral("--marks: \"%1\" is none of strict, warn, any").arg(text));
    return sale::MarkPolicy::Any;
}

bool exclusive(const QString& text)
{
    if (text != QStringLiteral("yes") && text != QStringLiteral("no"))
        throw UsageError(QStringLiteral("--exclusive: \"%1\" is neither yes nor no").arg(text));
    return text == QStringLiteral("yes");
}

unsigned deviceId(const QString& text)
{
    bool ok = false;
    const unsigned id = text.toUInt(&ok);
    if (!ok || id > 19)
        throw UsageError(QStringLiteral("--device-id: \"%1\" is not a number from 0 to 19").arg(text));
    return id;
}

int waitSeconds(const QString& text)
{
    bool ok = false;
    const int seconds = text.toInt(&ok);
    if (!ok || seconds < 0 || seconds > 86400)
        throw UsageError(QStringLiteral("--wait: \"%1\" is not a number from 0 to 86400").arg(text));
    return seconds;
}

void addDriverOption(const QString& text, hw::fr::DriverOptions& options)
{
    const QStringList parts = text.split(QLatin1Char('='));
    bool ok = false;
    const quint64 bit = parts.constFirst().toULongLong(&ok, 0);
    const bool on = parts.size() == 2 && parts.at(1) == QStringLiteral("on");
    const bool off = parts.size() == 2 && parts.at(1) == QStringLiteral("off");
    if (!ok || bit == 0 || (bit & (bit - 1)) != 0 || (!on && !off))
        throw UsageError(QStringLiteral("--option: \"%1\" is not BIT=on or BIT=off").arg(text));
    options.insert(static_cast<hw::fr::Option>(bit), on);
}

Options::LogLevel logLevel(const QString& text)
{
    static const QStringList names{QStringLiteral("trace"), QStringLiteral("debug"), QStringLiteral("info"),
        QStringLiteral("warn"), QStringLiteral("error")};
    const qsizetype index = names.indexOf(text);
    if (index < 0)
        throw UsageError(
            QStringLiteral("--log-level: \"%1\" is none of %2").arg(text, names.join(QStringLiteral(", "))));
    return static_cast<Options::LogLevel>(index);
}

void readValues(const QCommandLineParser& parser, Options& options)
{
    const auto value = [&parser](const char* name) { return parser.value(QString::fromLatin1(name)); };
    const auto isSet = [&parser](const char* name) { return parser.isSet(QString::fromLatin1(name)); };
    options.port = value("port");
    options.isExclusive
        = isSet("exclusive") ? exclusive(value("exclusive")) : !devices::isTcpName(options.port);
    options.protocolVersion = line("protocol-version", value("protocol-version"));
    options.plugins = parser.values(QStringLiteral("plugin"));
    options.speedEnumerate = !isSet("no-speed-enumeration");
    options.taxSystems = value("tax-systems");
    options.clear = isSet("clear");
    options.id = line("id", value("id"));
    options.journal = std::make_shared<JournalAccess>(value("journal"));
    options.state = value("state");
    options.since = value("since");
    options.before = value("before");
    options.documentNumber = value("document");
    options.note = value("note");
    options.cashier.name = cashierName(value("cashier"));
    options.drop = parser.values(QStringLiteral("drop"));
    options.split = isSet("split");
    options.force = isSet("force");
    if (isSet("trace"))
        options.trace = std::make_shared<LineTrace>(value("trace"), !isSet("trace-full"));
    options.replaySide = value("as");
    options.password = value("password");
    options.strict = isSet("strict");
    if (isSet("cashier-inn"))
        options.cashier.inn = cashierInn(value("cashier-inn"));
    if (isSet("marks"))
        options.markPolicy = markPolicy(value("marks"));
    if (options.strict && isSet("marks") && options.markPolicy != sale::MarkPolicy::Strict)
        throw UsageError(
            QStringLiteral("--marks %1 contradicts --strict, with which marking codes are judged strictly")
                .arg(value("marks")));
    if (options.strict)
        options.markPolicy = sale::MarkPolicy::Strict;
    options.isProtocolGiven = isSet("protocol");
    if (options.isProtocolGiven)
        options.protocol = protocol(value("protocol"));
    if (isSet("wait"))
        options.waitSeconds = waitSeconds(value("wait"));
    if (isSet("device-id"))
        options.deviceId = deviceId(value("device-id"));
    if (isSet("log-level"))
        options.logLevel = logLevel(value("log-level"));
    for (const QString& text : parser.values(QStringLiteral("option")))
        addDriverOption(text, options.driverOptions);
}

/// An option that a command does not know would be taken for one that it heeds.
void refuseMisplaced(const QCommandLineParser& parser, const Options& options)
{
    if (parser.isSet(QStringLiteral("tax-systems")) && options.command != QStringLiteral("registration"))
        throw UsageError(QStringLiteral("--tax-systems goes with registration"));
    if (options.clear && options.command != QStringLiteral("logo"))
        throw UsageError(QStringLiteral("--clear goes with logo"));
    const bool isSetting
        = options.command == QStringLiteral("params") && options.arguments.value(0) == QStringLiteral("set");
    if (options.force && !isSetting)
        throw UsageError(QStringLiteral("--force goes with params set"));
    if (parser.isSet(QStringLiteral("id")) && (options.id.trimmed().isEmpty() || !options.isReceipt()))
        throw UsageError(QStringLiteral("--id names a sale for sell and refund"));
    for (const char* const name : {"state", "since", "before", "document", "note"}) {
        if (parser.isSet(QString::fromLatin1(name)) && options.command != QStringLiteral("journal"))
            throw UsageError(QStringLiteral("--%1 goes with journal").arg(QLatin1String(name)));
    }
    if (parser.isSet(QStringLiteral("trace-full")) && !options.trace)
        throw UsageError(QStringLiteral("--trace-full goes with --trace"));
    for (const char* const name : {"as", "password"}) {
        if (parser.isSet(QString::fromLatin1(name)) && options.command != QStringLiteral("trace"))
            throw UsageError(QStringLiteral("--%1 goes with trace replay").arg(QLatin1String(name)));
    }
    for (const char* const name : {"drop", "split", "marks"}) {
        if (parser.isSet(QString::fromLatin1(name)) && !options.isReceipt())
            throw UsageError(QStringLiteral("--%1 goes with sell and refund").arg(QLatin1String(name)));
    }
}

} // namespace

void Options::requireCashier() const
{
    if (cashier.name.isEmpty())
        throw UsageError(QStringLiteral("%1 needs a cashier: --cashier").arg(command));
}

sale::DeskOptions Options::desk() const
{
    return {line(), registerName(), cashier, markPolicy};
}

QString Options::registerName() const
{
    return devices::isTcpName(port) ? port : devices::devicePath(port);
}

Options parseOptions(const QStringList& commandLine)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(commandLine))
        throw UsageError(parser.errorText());
    Options options;
    options.json = parser.isSet(QStringLiteral("json"));
    options.help = parser.isSet(QStringLiteral("help"));
    options.version = parser.isSet(QStringLiteral("version"));
    readValues(parser, options);
    options.arguments = parser.positionalArguments();
    if (!options.arguments.isEmpty())
        options.command = options.arguments.takeFirst();
    refuseMisplaced(parser, options);
    return options;
}

QString optionsHelp()
{
    QString help = QStringLiteral("Options:\n");
    for (const OptionRow& row : optionRows) {
        QString name = QStringLiteral("--") + QString::fromLatin1(row.name);
        if (row.value != nullptr)
            name += QLatin1Char(' ') + QString::fromLatin1(row.value);
        help += QStringLiteral("  %1 %2\n").arg(name.leftJustified(26), QString::fromLatin1(row.help));
    }
    return help;
}

} // namespace frctl

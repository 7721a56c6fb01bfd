#include "optiontable.h"

#include "errors.h"
#include "frctltr.h"
#include "language.h"
#include "options.h"
#include "plaintext.h"
#include "showntext.h"
#include "taxnumber.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <optional>

namespace frctl {

namespace {

template <auto Member>
void takeText(const QString& text, Options& options)
{
    options.*Member = text;
}

template <auto Member>
void appendText(const QString& text, Options& options)
{
    (options.*Member).append(text);
}

template <auto Member>
void switchOn(const QString&, Options& options)
{
    options.*Member = true;
}

/// Texts of the command line that reach the register or the journal.
template <auto Member>
void takeLine(const QString& text, Options& options)
{
    if (const std::optional<QString> fault = receipt::textFault(text))
        throw UsageError(*fault);
    options.*Member = text;
}

int numberUpTo(const QString& text, int most)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    if (!ok || number < 0 || number > most)
        throw UsageError(tr("\"%1\" is not a number from 0 to %2").arg(text).arg(most));
    return number;
}

/// The index of the word.
qsizetype oneOf(const QString& text, const QStringList& words)
{
    const qsizetype index = words.indexOf(text);
    if (index < 0)
        throw UsageError(tr("\"%1\" is none of %2").arg(text, words.join(QStringLiteral(", "))));
    return index;
}

void takeRegister(const QString& text, Options& options)
{
    if (text.isEmpty())
        throw UsageError(tr("is empty"));
    options.registerSection = text;
}

void takeSerial(const QString& text, Options& options)
{
    // An empty one would be as none, and whoever wrote it relies on it.
    if (text.trimmed().isEmpty())
        throw UsageError(tr("is empty"));
    options.expected.serial = text;
}

void takeExpectedInn(const QString& text, Options& options)
{
    // A test drive may be registered with any digits.
    static const QRegularExpression inn(QStringLiteral("\\A([0-9]{10}|[0-9]{12})\\z"));
    if (!inn.match(text).hasMatch())
        throw UsageError(tr("\"%1\" has not 10 or 12 digits").arg(receipt::shownText(text)));
    options.expected.inn = text;
}

void takeProtocol(const QString& text, Options& options)
{
    // The plugin takes whatever is not HEX for XML; a misspelt name must not end there.
    const QString name = text.toUpper();
    if (name != QStringLiteral("HEX") && name != QStringLiteral("XML"))
        throw UsageError(tr("\"%1\" is neither HEX nor XML").arg(text));
    options.protocol = name;
}

void takeCashier(const QString& text, Options& options)
{
    // Tag 1021.
    constexpr int longestName = 64;
    if (text.size() > longestName)
        throw UsageError(tr("must have at most %1 characters, not %2").arg(longestName).arg(text.size()));
    // It would take the place of the receipt's cashier. An empty one is none.
    if (!text.isEmpty() && text.trimmed().isEmpty())
        throw UsageError(tr("has nothing but blanks"));
    if (const std::optional<QString> fault = receipt::textFault(text))
        throw UsageError(*fault);
    options.cashier.name = text;
}

void takeCashierInn(const QString& text, Options& options)
{
    if (!receipt::isInn(text))
        throw UsageError(tr("\"%1\" is no tax number of 10 or 12 digits, the last of which are "
                            "right for the others")
                             .arg(receipt::shownText(text)));
    options.cashier.inn = text;
}

void takeId(const QString& text, Options& options)
{
    takeLine<&Options::id>(text, options);
    if (text.trimmed().isEmpty())
        throw UsageError(tr("is empty"));
}

void takeMarkPolicy(const QString& text, Options& options)
{
    static const QStringList names{QStringLiteral("strict"), QStringLiteral("warn"), QStringLiteral("any")};
    constexpr sale::MarkPolicy policies[]
        = {sale::MarkPolicy::Strict, sale::MarkPolicy::Warn, sale::MarkPolicy::Any};
    options.markPolicy = policies[oneOf(text, names)];
}

void takeExclusive(const QString& text, Options& options)
{
    if (text != QStringLiteral("yes") && text != QStringLiteral("no"))
        throw UsageError(tr("\"%1\" is neither yes nor no").arg(text));
    options.isExclusive = text == QStringLiteral("yes");
}

void addDriverOption(const QString& text, Options& options)
{
    const QStringList parts = text.split(QLatin1Char('='));
    bool ok = false;
    const quint64 bit = parts.constFirst().toULongLong(&ok, 0);
    const bool on = parts.size() == 2 && parts.at(1) == QStringLiteral("on");
    const bool off = parts.size() == 2 && parts.at(1) == QStringLiteral("off");
    if (!ok || bit == 0 || (bit & (bit - 1)) != 0 || (!on && !off))
        throw UsageError(tr("\"%1\" is not BIT=on or BIT=off").arg(text));
    options.driverOptions.insert(static_cast<hw::fr::Option>(bit), on);
}

void takeLanguage(const QString& text, Options& options)
{
    options.language = languages().at(oneOf(text, languages()));
}

void takeLogLevel(const QString& text, Options& options)
{
    static const QStringList names{QStringLiteral("trace"), QStringLiteral("debug"), QStringLiteral("info"),
        QStringLiteral("warn"), QStringLiteral("error")};
    options.logLevel = static_cast<Options::LogLevel>(oneOf(text, names));
}

void takeWait(const QString& text, Options& options)
{
    constexpr int longestWait = 86400;
    options.waitSeconds = numberUpTo(text, longestWait);
}

void takeDeviceId(const QString& text, Options& options)
{
    constexpr int lastDevice = 19;
    options.deviceId = static_cast<unsigned>(numberUpTo(text, lastDevice));
}

void takePaperWidth(const QString& text, Options& options)
{
    if (text != QStringLiteral("44") && text != QStringLiteral("48"))
        throw UsageError(tr("\"%1\" is neither 44 nor 48").arg(text));
    options.paperWidth = text.toInt();
}

/// An empty name would be no file.
template <auto Member>
void takeFile(const QString& text, Options& options)
{
    if (text.isEmpty())
        throw UsageError(tr("wants a file"));
    options.*Member = text;
}

constexpr OptionRow optionTable[] = {
    {"port", "PORT",
        QT_TR_NOOP(
            "The register's line: /dev/tty..., the link of a pty, tcp:host:port, or a service's service:name."),
        OptionRow::Line, takeText<&Options::port>, "port"},
    {"register", "NAME",
        QT_TR_NOOP("The section of the configuration that tells port, protocol and the rest."),
        OptionRow::Line, takeRegister},
    {"config", "FILE",
        QT_TR_NOOP("The configuration (~/.config/frspf/frctl.ini, then /etc/frspf/frctl.ini)."),
        OptionRow::Line, takeText<&Options::configFile>},
    {"wait", "SECONDS",
        QT_TR_NOOP("How long to wait for a port that another program works (0), or for a service (180)."),
        OptionRow::Line, takeWait, "wait"},
    {"token-file", "FILE", QT_TR_NOOP("The token for a service is in that file ($FRSERVER_TOKEN)."),
        OptionRow::Line, takeFile<&Options::tokenFile>, "token-file"},
    {"protocol", "HEX|XML", QT_TR_NOOP("Protocol of the register (XML; for check, detect and names both)."),
        OptionRow::Line, takeProtocol, "protocol"},
    {"expect-serial", "TEXT",
        QT_TR_NOOP("The register's own number; another register is an error, and gets nothing."),
        OptionRow::Line, takeSerial, "serial"},
    {"expect-inn", "INN", QT_TR_NOOP("The tax number that it is registered with; compared over HEX."),
        OptionRow::Line, takeExpectedInn, "inn"},
    {"protocol-version", "TEXT", QT_TR_NOOP("Version of the control protocol that XML requests carry."),
        OptionRow::Line, takeLine<&Options::protocolVersion>, "protocol-version"},
    {"plugin", "FILE|DIR", QT_TR_NOOP("The driver plugin, or a folder to look for it; may be repeated."),
        OptionRow::Line, appendText<&Options::plugins>, "plugin", 0, true},
    {"exclusive", "yes|no",
        QT_TR_NOOP(
            "Whether only programs of this machine that take its lock work the register (yes; no for tcp:)."),
        OptionRow::Line, takeExclusive, "exclusive"},
    {"device-id", "N", QT_TR_NOOP("Number of the register, 0 to 19 (0)."), OptionRow::Line, takeDeviceId,
        "device-id"},
    {"no-speed-enumeration", nullptr,
        QT_TR_NOOP("Keep to the last good speed when a connection is repeated."), OptionRow::Line,
        [](const QString&, Options& options) { options.speedEnumerate = false; }, "no-speed-enumeration"},
    {"option", "BIT=on|off", QT_TR_NOOP("Overrule a driver option, BIT as 0x10 or 16; may be repeated."),
        OptionRow::Line, addDriverOption, nullptr, 0, true},
    {"journal", "FILE",
        QT_TR_NOOP("The journal of documents (/var/lib/frspf/sales.sqlite, or in $XDG_STATE_HOME/frspf)."),
        OptionRow::Line,
        [](const QString& text, Options& options) {
            options.journal = std::make_shared<JournalAccess>(text);
        },
        "journal"},
    {"cashier", "NAME", QT_TR_NOOP("The cashier; goes before the one that a receipt names."),
        OptionRow::Document, takeCashier, "cashier"},
    {"cashier-inn", "INN", QT_TR_NOOP("The cashier's tax number."), OptionRow::Document, takeCashierInn,
        "cashier-inn"},
    {"tax-systems", "LIST",
        QT_TR_NOOP("osn, usnIncome, usnIncomeOutcome, envd, esn, patent, with commas between."),
        OptionRow::Own, takeText<&Options::taxSystems>},
    {"id", "TEXT", QT_TR_NOOP("The sale's name; the same name again is never sold twice."), OptionRow::Own,
        takeId},
    {"state", "STATE", QT_TR_NOOP("For list and export: queued, running, issued, notIssued or unknown."),
        OptionRow::Own, takeText<&Options::state>},
    {"since", "DATE", QT_TR_NOOP("For list and export: accepted on that day or later."), OptionRow::Own,
        takeText<&Options::since>},
    {"before", "DATE", QT_TR_NOOP("For anonymise: accepted before that day."), OptionRow::Own,
        takeText<&Options::before>},
    {"document", "N", QT_TR_NOOP("For resolve: the number on the receipt."), OptionRow::Own,
        takeText<&Options::documentNumber>},
    {"note", "TEXT", QT_TR_NOOP("For resolve and accept: what was seen."), OptionRow::Own,
        takeText<&Options::note>},
    {"width", "44|48", QT_TR_NOOP("Characters on a line of the paper (44)."), OptionRow::Own, takePaperWidth},
    {"png", "OUT", QT_TR_NOOP("A picture, a pixel a dot, instead of text."), OptionRow::Own,
        takeFile<&Options::png>},
    {"pdf", "OUT", QT_TR_NOOP("The same as PDF."), OptionRow::Own, takeFile<&Options::pdf>},
    {"svg", "OUT", QT_TR_NOOP("The same as SVG."), OptionRow::Own, takeFile<&Options::svg>},
    {"drop", "PATH", QT_TR_NOOP("A field that the protocol does not carry is left out; may be repeated."),
        OptionRow::Own, appendText<&Options::drop>, nullptr, 0, true},
    {"split", nullptr, QT_TR_NOOP("Two positions where a discount leaves no whole kopecks a piece."),
        OptionRow::Own, switchOn<&Options::split>},
    {"marks", "strict|warn|any",
        QT_TR_NOOP("Marking codes that were not checked on line are errors too, or none is (warn)."),
        OptionRow::Own, takeMarkPolicy, "marks"},
    {"force", nullptr,
        QT_TR_NOOP(
            "Also what does harm: params set 31, time set far off, journal settle without the drive, trace "
            "replay; see the manual page."),
        OptionRow::Own, switchOn<&Options::force>},
    {"all", nullptr, QT_TR_NOOP("Every serial port is asked; bytes may do harm to what is no register."),
        OptionRow::Own, switchOn<&Options::isAll>},
    {"clear", nullptr, QT_TR_NOOP("Remove the picture."), OptionRow::Own, switchOn<&Options::clear>},
    {"strict", nullptr, QT_TR_NOOP("Warnings are errors, and --marks strict."), OptionRow::Common,
        switchOn<&Options::strict>, "strict"},
    {"log-level", "trace|debug|info|warn|error", QT_TR_NOOP("The driver's log on stderr (none)."),
        OptionRow::Common, takeLogLevel},
    {"trace", "FILE", QT_TR_NOOP("Add what goes over the line to FILE, a line a frame; - is standard error."),
        OptionRow::Line, takeFile<&Options::traceFile>},
    {"trace-full", nullptr, QT_TR_NOOP("Names, texts and passwords stand in the trace."), OptionRow::Line,
        switchOn<&Options::isTraceFull>},
    {"as", "register|host", QT_TR_NOOP("For replay: whose side is played."), OptionRow::Own,
        takeText<&Options::replaySide>},
    {"password", "TEXT", QT_TR_NOOP("For replay --as host: the register's password over HEX (QZXW)."),
        OptionRow::Own, takeText<&Options::password>},
    {"lang", "en|ru", QT_TR_NOOP("Language of the texts (that of LC_ALL, LC_MESSAGES or LANG)."),
        OptionRow::Common, takeLanguage, "lang"},
    {"json", nullptr, QT_TR_NOOP("Print one JSON object."), OptionRow::Common, switchOn<&Options::json>},
    {"help", nullptr, QT_TR_NOOP("Show this help."), OptionRow::Common, switchOn<&Options::help>, nullptr,
        'h'},
    {"version", nullptr, QT_TR_NOOP("Show the version."), OptionRow::Common, switchOn<&Options::version>,
        nullptr, 'v'},
};

template <typename Matches>
const OptionRow* findRow(const Matches& matches)
{
    const auto* const row = std::find_if(std::begin(optionTable), std::end(optionTable), matches);
    return row == std::end(optionTable) ? nullptr : row;
}

} // namespace

std::span<const OptionRow> optionRows()
{
    return optionTable;
}

const OptionRow* findOption(const QString& name)
{
    return findRow([&name](const OptionRow& row) { return name == QLatin1String(row.name); });
}

const OptionRow* findKey(const QString& key)
{
    return findRow(
        [&key](const OptionRow& row) { return row.key != nullptr && key == QLatin1String(row.key); });
}

const OptionRow* findLetter(QChar letter)
{
    return findRow(
        [letter](const OptionRow& row) { return row.letter != 0 && letter == QLatin1Char(row.letter); });
}

QStringList optionNames()
{
    QStringList names;
    for (const OptionRow& row : optionTable)
        names.append(QLatin1String(row.name));
    return names;
}

} // namespace frctl

#include "program/options.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <optional>

namespace frserver {

namespace {

using Command = Options::Command;

const QString usualConfig = QStringLiteral("/etc/frspf/frserver.ini");

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Owns the fiscal registers of a machine and sells over HTTP; see docs/service.md.\n\n"
        "frserver                        serve, as the configuration says\n"
        "frserver check-config           say what is wrong in the configuration, with file and line\n"
        "frserver token add NAME --role read|sell|admin [--registers a,b]\n"
        "frserver token list\n"
        "frserver token remove NAME\n"
        "frserver backup FILE            copy the journal, also while the service runs\n"
        "frserver export FILE            move the journal to another machine: this one sells no more\n"
        "frserver import FILE            go on with the journal of another machine\n"
        "frserver upgrade                have the running service replaced by the program that is installed\n"
        "frserver migrate                make the tables of [store], or bring them up to this release\n"
        "frserver restored               after an older state was put back: what was unfinished in it is unknown\n"
        "frserver cert init HOST         make an authority, a certificate and its key for TLS"));
    parser.addOptions({
        {QStringLiteral("config"), QStringLiteral("The configuration (%1).").arg(usualConfig),
            QStringLiteral("FILE"), usualConfig},
        {QStringLiteral("listen"), QStringLiteral("Listen there, whatever the configuration says."),
            QStringLiteral("ADDRESS:PORT")},
        {QStringLiteral("role"), QStringLiteral("Of token add: read, sell or admin."),
            QStringLiteral("ROLE")},
        {QStringLiteral("registers"),
            QStringLiteral("Of token add: the registers that it is for, with commas between them (all)."),
            QStringLiteral("NAMES")},
    });
    // The service starts them itself.
    for (const char* const name : {"worker", "preview"}) {
        QCommandLineOption hidden(QString::fromLatin1(name));
        hidden.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(hidden);
    }
}

struct CommandRow
{
    const char* words;
    int names;
    Command command;
};

constexpr CommandRow commands[] = {
    {"", 0, Command::Serve},
    {"check-config", 0, Command::CheckConfig},
    {"token add", 1, Command::AddToken},
    {"token list", 0, Command::ListTokens},
    {"token remove", 1, Command::RemoveToken},
    {"backup", 1, Command::BackUp},
    {"export", 1, Command::Export},
    {"import", 1, Command::Import},
    {"upgrade", 0, Command::Upgrade},
    {"migrate", 0, Command::Migrate},
    {"restored", 0, Command::Restored},
    {"cert init", 1, Command::MakeCertificate},
};

std::optional<Command> commandOf(const QStringList& words, QString& name)
{
    for (const CommandRow& row : commands) {
        const QStringList fixed = QString::fromLatin1(row.words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.size() != fixed.size() + row.names || words.mid(0, fixed.size()) != fixed)
            continue;
        name = words.value(fixed.size());
        return row.command;
    }
    return std::nullopt;
}

QString fill(const QCommandLineParser& parser, Options& options)
{
    const QStringList words = parser.positionalArguments();
    const std::optional<Command> command = commandOf(words, options.name);
    if (!command)
        return QStringLiteral("\"%1\" is none of its commands; see --help").arg(words.join(QLatin1Char(' ')));
    options.command = parser.isSet(QStringLiteral("worker")) ? Command::Worker
        : parser.isSet(QStringLiteral("preview"))            ? Command::Preview
                                                             : *command;
    options.configFile = parser.value(QStringLiteral("config"));
    options.listen = parser.value(QStringLiteral("listen"));
    options.role = parser.value(QStringLiteral("role"));
    options.registers = parser.value(QStringLiteral("registers")).split(QLatin1Char(','), Qt::SkipEmptyParts);
    const bool isAdding = options.command == Command::AddToken;
    if (isAdding && options.role.isEmpty())
        return QStringLiteral("token add needs --role read, sell or admin");
    if (!isAdding && (parser.isSet(QStringLiteral("role")) || parser.isSet(QStringLiteral("registers"))))
        return QStringLiteral("--role and --registers go with token add");
    const bool isListening = options.command == Command::Serve || options.command == Command::CheckConfig;
    if (!isListening && parser.isSet(QStringLiteral("listen")))
        return QStringLiteral("--listen goes without a command, or with check-config");
    return {};
}

} // namespace

Options::Outcome Options::parse(const QStringList& arguments, Options& options)
{
    QCommandLineParser parser;
    describe(parser);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const bool isUnderstood = parser.parse(arguments);
    if (isUnderstood && parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return Outcome::Done;
    }
    if (isUnderstood && parser.isSet(version)) {
        std::printf("%s %s\n", qPrintable(QCoreApplication::applicationName()),
            qPrintable(QCoreApplication::applicationVersion()));
        return Outcome::Done;
    }
    const QString error = isUnderstood ? fill(parser, options) : parser.errorText();
    if (error.isEmpty())
        return Outcome::Run;
    std::fprintf(stderr, "frserver: %s\n", qPrintable(error));
    return Outcome::Wrong;
}

} // namespace frserver

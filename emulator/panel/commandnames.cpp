#include "panel/commandnames.h"

#include "trace/commandtable.h"

namespace emulator::panel::commandnames {

namespace {

using Command = std::pair<QString, QString>;

/// Codes and names.
const QList<Command>& commandsOf(Language language)
{
    static const QList<Command> hex = [] {
        QList<Command> commands;
        for (const trace::HexCommandRow& row : trace::commandtable::hexCommands())
            commands.append({QString::fromLatin1(row.code), row.command.name});
        return commands;
    }();
    static const QList<Command> xml = [] {
        QList<Command> commands;
        const auto& table = trace::commandtable::xmlCommands();
        for (auto row = table.cbegin(); row != table.cend(); ++row)
            commands.append({QString::number(row.key()), row->name});
        return commands;
    }();
    return language == Language::Hex ? hex : xml;
}

} // namespace

QStringList codesOf(const QString& command, Language language)
{
    QStringList codes;
    for (const auto& [code, name] : commandsOf(language)) {
        if ((code == command || name == command) && !codes.contains(code))
            codes.append(code);
    }
    return codes;
}

QStringList codes(Language language)
{
    QStringList found;
    for (const auto& [code, name] : commandsOf(language)) {
        if (!found.contains(code))
            found.append(code);
    }
    return found;
}

const QStringList& all()
{
    static const QStringList names = [] {
        QStringList found;
        for (const Language language : {Language::Hex, Language::Xml}) {
            for (const auto& [code, name] : commandsOf(language)) {
                if (!found.contains(name))
                    found.append(name);
            }
        }
        return found;
    }();
    return names;
}

const QStringList& withCodes()
{
    static const QStringList both = [] {
        QStringList found = all();
        for (const Language language : {Language::Hex, Language::Xml}) {
            for (const auto& [code, name] : commandsOf(language)) {
                if (!found.contains(code))
                    found.append(code);
            }
        }
        return found;
    }();
    return both;
}

bool mayStore(const QString& code, Language language)
{
    static const QStringList hex{QStringLiteral("08"), QStringLiteral("22"), QStringLiteral("61"),
        QStringLiteral("6A"), QStringLiteral("6B")};
    static const QStringList xml{QStringLiteral("4"), QStringLiteral("6"), QStringLiteral("8"),
        QStringLiteral("12"), QStringLiteral("18")};
    return (language == Language::Hex ? hex : xml).contains(code);
}

} // namespace emulator::panel::commandnames

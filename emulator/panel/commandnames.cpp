#include "panel/commandnames.h"

#include "trace/commandtable.h"

namespace emulator::panel::commandnames {

namespace {

using Command = std::pair<QString, QString>;

/// Codes and names; a code of HEX that has several questions stands once for each.
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
    QStringList found;
    for (const auto& [code, name] : commandsOf(language)) {
        if (code == command || name == command)
            found.append(code);
    }
    found.removeDuplicates();
    return found;
}

QStringList codes(Language language)
{
    QStringList found;
    for (const auto& [code, name] : commandsOf(language))
        found.append(code);
    found.removeDuplicates();
    return found;
}

const QStringList& all()
{
    static const QStringList names = [] {
        QStringList found;
        for (const Language language : {Language::Hex, Language::Xml}) {
            for (const auto& [code, name] : commandsOf(language))
                found.append(name);
        }
        found.removeDuplicates();
        return found;
    }();
    return names;
}

const QStringList& withCodes()
{
    static const QStringList both = [] {
        QStringList found = all() + codes(Language::Hex) + codes(Language::Xml);
        found.removeDuplicates();
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

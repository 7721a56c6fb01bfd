#include "panel/rulecheck.h"

#include "line/faultplan.h"
#include "panel/commandnames.h"
#include "panel/requestfields.h"

#include <algorithm>

namespace emulator::panel::rulecheck {

namespace {

const QString between = QStringLiteral(", ");

/// The protocols that have what the rule is about, and the commands there that it may hit; all of them when
/// it names none.
QList<std::pair<Language, QStringList>> targetsOf(const FaultRule& rule)
{
    QList<std::pair<Language, QStringList>> targets;
    for (const Language language : {Language::Hex, Language::Xml}) {
        QStringList codes = rule.command.isEmpty() ? commandnames::codes(language)
                                                   : commandnames::codesOf(rule.command, language);
        if (rule.isForStoring)
            codes.removeIf(
                [language](const QString& code) { return !commandnames::mayStore(code, language); });
        if (!codes.isEmpty() && FaultPlan::fits(rule.fault, language))
            targets.append({language, codes});
    }
    return targets;
}

bool isKnown(const QString& command)
{
    return command.isEmpty() || commandnames::withCodes().contains(command);
}

void checkCommand(const Members& members, const FaultRule& rule)
{
    const QString name = QStringLiteral("command");
    if (!isKnown(rule.command))
        members.fail(name,
            QStringLiteral("is the code of a command as its protocol writes it, or one of: ")
                + commandnames::all().join(between));
    if (targetsOf(rule).isEmpty())
        members.fail(
            name, QStringLiteral("is none that mode and storing can hit: no request would suffer it"));
}

void checkField(const Members& members, const FaultRule& rule)
{
    QStringList known;
    for (const auto& [language, codes] : targetsOf(rule)) {
        if (requestfields::mayHave(rule.field->first, codes, language))
            return;
        known += requestfields::namesOf(codes, language);
    }
    known.sort();
    known.removeDuplicates();
    members.fail(QStringLiteral("field.name"),
        QStringLiteral("is none that such a request has; known are: %1; over HEX those without a name are "
                       "field1, field2 ... by their place")
            .arg(known.join(between)));
}

void checkCounts(const Members& members, const FaultRule& rule)
{
    const int first = rule.nth.value_or(rule.each.value_or(1));
    if (rule.nth && rule.each)
        members.fail(QStringLiteral("nth"), QStringLiteral("and each do not go together"));
    if (rule.lifetime && *rule.lifetime < first)
        members.fail(QStringLiteral("lifetime"),
            QStringLiteral("is over before exchange %1, the first that would be hit").arg(first));
    if (rule.probability == 0)
        members.fail(QStringLiteral("probability"), QStringLiteral("is 0: no request would suffer it"));
}

} // namespace

void check(const Members& members, const FaultRule& rule)
{
    checkCounts(members, rule);
    checkCommand(members, rule);
    if (rule.field)
        checkField(members, rule);
}

} // namespace emulator::panel::rulecheck

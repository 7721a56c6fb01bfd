#include "http/problem.h"
#include "line/faultplan.h"
#include "panel/desk.h"
#include "panel/deskroute.h"
#include "panel/members.h"
#include "panel/rulecheck.h"

#include <QJsonArray>

namespace emulator::panel {

namespace {

using http::Answer;
using http::Request;
using http::Response;

constexpr qsizetype mostRules = 1000;
const QString rulesName = QStringLiteral("rules");

/// The objects of the list "rules", which is all that the body has.
QList<Members> rulesOf(const Request& request)
{
    Members body(request.json());
    const QJsonArray list = body.list(rulesName);
    body.finish();
    if (list.size() > mostRules)
        body.fail(rulesName, QStringLiteral("has more than %1 entries").arg(mostRules));
    QList<Members> rules;
    for (qsizetype index = 0; index < list.size(); ++index) {
        const QString path = QStringLiteral("%1[%2].").arg(rulesName).arg(index);
        if (!list.at(index).isObject())
            body.fail(path.chopped(1), QStringLiteral("is an object"));
        rules.append(Members(list.at(index).toObject(), path));
    }
    return rules;
}

// ---- faults

std::pair<QString, QString> fieldOf(Members field)
{
    const std::pair<QString, QString> wanted{
        field.text(QStringLiteral("name")), field.text(QStringLiteral("value"))};
    field.finish();
    return wanted;
}

[[noreturn]] void failOfMode(const Members& members, const QString& mode)
{
    const QString wanted = FaultPlan::mistake(mode);
    members.fail(QStringLiteral("mode"),
        wanted.isEmpty() ? QStringLiteral("is none of those that /faults/modes tells")
                         : QStringLiteral("is no fault: ") + wanted);
}

void readChance(Members& members, FaultRule& rule)
{
    const QString probability = QStringLiteral("probability");
    const QString seed = QStringLiteral("seed");
    if (members.has(probability))
        rule.probability = members.fraction(probability, 0, 1);
    if (members.has(seed) && !members.has(probability))
        members.fail(seed, QStringLiteral("goes with probability"));
    rule.seed = static_cast<quint64>(members.optionalNumber(seed, 0).value_or(1));
}

FaultRule faultRuleOf(Members& members)
{
    const QString modeName = QStringLiteral("mode");
    const QString storingName = QStringLiteral("storing");
    const QString commandKey = QStringLiteral("command");
    FaultRule rule;
    rule.mode = members.text(modeName);
    const std::optional<Fault> fault = FaultPlan::parseFault(rule.mode);
    if (!fault)
        failOfMode(members, rule.mode);
    rule.fault = *fault;
    rule.command = members.optionalText(commandKey).value_or(QString());
    if (rule.command.isEmpty() && members.has(commandKey))
        members.fail(commandKey, QStringLiteral("is empty; a rule without it is for all commands"));
    rule.isForStoring = members.has(storingName) && members.flag(storingName);
    if (members.has(QStringLiteral("field")))
        rule.field = fieldOf(members.object(QStringLiteral("field")));
    rule.nth = members.optionalNumber(QStringLiteral("nth"), 1);
    rule.each = members.optionalNumber(QStringLiteral("each"), 1);
    rule.lifetime = members.optionalNumber(QStringLiteral("lifetime"), 1);
    readChance(members, rule);
    members.finish();
    rulecheck::check(members, rule);
    return rule;
}

void putIf(QJsonObject& json, const char* name, const std::optional<int>& number)
{
    if (number)
        json[QLatin1String(name)] = *number;
}

QJsonObject useJson(const FaultRules::Use& use)
{
    QJsonObject json{{QStringLiteral("mode"), use.rule.mode}, {QStringLiteral("fitting"), use.fitting},
        {QStringLiteral("hits"), use.hits}, {QStringLiteral("over"), use.isOver()}};
    if (!use.rule.command.isEmpty())
        json[QStringLiteral("command")] = use.rule.command;
    if (use.rule.isForStoring)
        json[QStringLiteral("storing")] = true;
    if (use.rule.field)
        json[QStringLiteral("field")] = QJsonObject{{QStringLiteral("name"), use.rule.field->first},
            {QStringLiteral("value"), use.rule.field->second}};
    putIf(json, "nth", use.rule.nth);
    putIf(json, "each", use.rule.each);
    putIf(json, "lifetime", use.rule.lifetime);
    if (use.rule.probability < 1) {
        json[QStringLiteral("probability")] = use.rule.probability;
        json[QStringLiteral("seed")] = static_cast<qint64>(use.rule.seed);
    }
    return json;
}

QJsonObject plannedJson(const FaultDesk::Planned& planned)
{
    return {{QStringLiteral("fault"), planned.entry.words()},
        {QStringLiteral("mode"), FaultPlan::words(planned.entry.fault)},
        {QStringLiteral("exchange"), planned.entry.exchange},
        {QStringLiteral("lasting"), planned.entry.isLasting}, {QStringLiteral("hits"), planned.hits}};
}

Answer faults(Desk& desk, const Request&)
{
    QJsonArray rules;
    for (const FaultRules::Use& use : desk.faults().rules().uses())
        rules.append(useJson(use));
    QJsonArray planned;
    for (const FaultDesk::Planned& fault : desk.faults().planned())
        planned.append(plannedJson(fault));
    return Response::json(QJsonObject{{rulesName, rules}, {QStringLiteral("planned"), planned}});
}

QList<FaultRule> faultRulesOf(const Request& request)
{
    QList<FaultRule> rules;
    for (Members& members : rulesOf(request))
        rules.append(faultRuleOf(members));
    return rules;
}

Answer addFaults(Desk& desk, const Request& request)
{
    const QList<FaultRule> rules = faultRulesOf(request);
    if (desk.faults().rules().uses().size() + rules.size() > mostRules)
        throw http::Problem(400,
            QStringLiteral("There would be more than %1 rules, which is the most: clear them first.")
                .arg(mostRules));
    desk.faults().addRules(rules);
    desk.changed(QStringLiteral("faults"));
    return faults(desk, request);
}

Answer setFaults(Desk& desk, const Request& request)
{
    desk.faults().setRules(faultRulesOf(request));
    desk.changed(QStringLiteral("faults"));
    return faults(desk, request);
}

Answer clearFaults(Desk& desk, const Request&)
{
    desk.faults().clear();
    desk.changed(QStringLiteral("faults"));
    return Response::empty();
}

QJsonObject modeJson(const QString& name, const QString& argument, const QStringList& protocols)
{
    return {{QStringLiteral("mode"), name},
        {QStringLiteral("argument"), argument.isEmpty() ? QJsonValue() : QJsonValue(argument)},
        {QStringLiteral("protocols"), QJsonArray::fromStringList(protocols)}};
}

// An answer is one of either protocol by its code, which the mode has not yet.
QStringList protocolsOf(FaultMode mode)
{
    QStringList protocols;
    if (mode == FaultMode::Answer || FaultPlan::fits({mode, 1}, Language::Hex))
        protocols.append(QStringLiteral("HEX"));
    if (mode == FaultMode::Answer || FaultPlan::fits({mode, 1}, Language::Xml))
        protocols.append(QStringLiteral("XML"));
    return protocols;
}

Answer faultModes(Desk&, const Request&)
{
    QJsonArray modes;
    for (const FaultMode mode : FaultPlan::allModes())
        modes.append(modeJson(FaultPlan::modeName(mode), FaultPlan::argumentName(mode), protocolsOf(mode)));
    for (const QString& mode : {FaultPlan::powerOffBefore, FaultPlan::powerOffAfter})
        modes.append(modeJson(mode, {}, {QStringLiteral("HEX"), QStringLiteral("XML")}));
    return Response::json(QJsonObject{{QStringLiteral("modes"), modes}});
}

// ---- marks

MarkVerdict verdictOf(Members& members)
{
    constexpr int allBits = 15;
    const QString patternName = QStringLiteral("pattern");
    const QRegularExpression pattern(members.text(patternName));
    if (!pattern.isValid())
        members.fail(patternName, QStringLiteral("is no regular expression: ") + pattern.errorString());
    const auto result = static_cast<int>(members.number(QStringLiteral("result"), 0, allBits));
    members.finish();
    return {pattern, result};
}

Answer marks(Desk& desk, const Request&)
{
    QJsonArray rules;
    for (const MarkVerdict& verdict : desk.device().markVerdicts())
        rules.append(QJsonObject{{QStringLiteral("pattern"), verdict.pattern.pattern()},
            {QStringLiteral("result"), verdict.result}});
    return Response::json(QJsonObject{{rulesName, rules}});
}

Answer setMarks(Desk& desk, const Request& request)
{
    QList<MarkVerdict> verdicts;
    for (Members& members : rulesOf(request))
        verdicts.append(verdictOf(members));
    desk.device().setMarkVerdicts(verdicts);
    desk.changed(QStringLiteral("marks"));
    return marks(desk, request);
}

Answer clearMarks(Desk& desk, const Request&)
{
    desk.device().setMarkVerdicts({});
    desk.changed(QStringLiteral("marks"));
    return Response::empty();
}

} // namespace

const QList<DeskRoute>& faultRoutes()
{
    static const QList<DeskRoute> routes{
        {"GET", "/faults", faults},
        {"PUT", "/faults", setFaults},
        {"POST", "/faults", addFaults},
        {"DELETE", "/faults", clearFaults},
        {"GET", "/faults/modes", faultModes},
        {"GET", "/marks", marks},
        {"PUT", "/marks", setMarks},
        {"DELETE", "/marks", clearMarks},
    };
    return routes;
}

} // namespace emulator::panel

#include "parametercommand.h"

#include "abstractfrdriver.h"
#include "errors.h"
#include "parameterlist.h"
#include "progress.h"

#include <QJsonArray>
#include <QRegularExpression>

namespace frctl {

namespace {

/// A parameter to be written, named as on the command line.
struct Assignment
{
    QString name;
    QString value;
};

QStringList readPrintout(AbstractFrDriver& driver)
{
    const Progress progress(QStringLiteral("reading the register's parameters ..."));
    return driver.getParametersDescription();
}

QList<ParameterEntry> entriesOf(AbstractFrDriver& driver, const QStringList& printout, bool isHex)
{
    const auto width = static_cast<int>(driver.getDeviceInfo().getBandWidth());
    return isHex ? readHexDescription(printout, width) : readXmlDescription(printout, width);
}

QJsonObject json(const QList<ParameterEntry>& entries)
{
    QJsonArray parameters;
    for (const ParameterEntry& entry : entries)
        parameters.append(QJsonObject{{QStringLiteral("id"), entry.id},
            {QStringLiteral("caption"), entry.caption}, {QStringLiteral("value"), entry.value}});
    return {{QStringLiteral("parameters"), parameters}};
}

Output list(AbstractFrDriver& driver, bool isHex)
{
    const QStringList printout = readPrintout(driver);
    return {printout, json(entriesOf(driver, printout, isHex))};
}

QList<ParameterEntry> matching(const QList<ParameterEntry>& entries, const QString& wanted)
{
    QList<ParameterEntry> found;
    for (const ParameterEntry& entry : entries) {
        if (entry.matches(wanted))
            found.append(entry);
    }
    if (found.isEmpty())
        throw Refusal(QStringLiteral("no parameter \"%1\"").arg(wanted));
    return found;
}

Output get(AbstractFrDriver& driver, const QStringList& wanted, bool isHex)
{
    const QList<ParameterEntry> all = entriesOf(driver, readPrintout(driver), isHex);
    QList<ParameterEntry> found;
    for (const QString& name : wanted)
        found += matching(all, name);
    Output output{{}, json(found)};
    for (const ParameterEntry& entry : found)
        output.lines.append(QStringLiteral("%1 %2: %3").arg(entry.id, entry.caption, entry.value));
    return output;
}

/// Parameter and row out of "20.0" or "20"; nothing for a caption.
std::optional<FrParameter> byNumber(const QString& name, const QString& value)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,4})(?:\\.(\\d{1,4}))?$"));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch())
        return std::nullopt;
    return FrParameter(1, match.captured(2).toUShort(), match.captured(1).toUShort(), value);
}

FrParameter byCaption(const QList<ParameterEntry>& entries, const Assignment& assignment)
{
    QList<ParameterEntry> found;
    for (const ParameterEntry& entry : matching(entries, assignment.name)) {
        if (entry.caption.compare(assignment.name, Qt::CaseInsensitive) == 0)
            return byNumber(entry.id, assignment.value).value();
        found.append(entry);
    }
    if (found.size() > 1)
        throw Refusal(QStringLiteral("\"%1\" names %2 parameters, %3 and %4 among them")
                          .arg(assignment.name)
                          .arg(found.size())
                          .arg(found.at(0).id, found.at(1).id));
    return byNumber(found.constFirst().id, assignment.value).value();
}

QList<FrParameter> hexParameters(AbstractFrDriver& driver, const QList<Assignment>& assignments)
{
    QList<ParameterEntry> entries;
    QList<FrParameter> parameters;
    for (const Assignment& assignment : assignments) {
        const std::optional<FrParameter> numbered = byNumber(assignment.name, assignment.value);
        if (!numbered && entries.isEmpty())
            entries = entriesOf(driver, readPrintout(driver), true);
        parameters.append(numbered ? *numbered : byCaption(entries, assignment));
    }
    return parameters;
}

QList<FrParameter> xmlParameters(const QList<Assignment>& assignments)
{
    QList<FrParameter> parameters;
    for (const Assignment& assignment : assignments)
        parameters.append({0, 0, 0, assignment.name + QLatin1Char('.') + assignment.value});
    return parameters;
}

Output set(AbstractFrDriver& driver, const QList<Assignment>& assignments, bool isHex)
{
    const QList<FrParameter> parameters
        = isHex ? hexParameters(driver, assignments) : xmlParameters(assignments);
    if (!driver.setParams(parameters))
        throw Refusal(isHex ? QStringLiteral("a parameter was refused; those before it are written")
                            : QStringLiteral("a parameter was refused; nothing is written"));
    const auto count = static_cast<int>(parameters.size());
    return {{QStringLiteral("%1 parameters written").arg(count)}, {{QStringLiteral("written"), count}}};
}

Output defaults(AbstractFrDriver& driver)
{
    if (!driver.setDefaults())
        throw Refusal(QStringLiteral("a default was refused; those before it are written"));
    return {{QStringLiteral("defaults written")}, {{QStringLiteral("written"), true}}};
}

QList<Assignment> assignmentsFrom(const QStringList& texts, bool isHex)
{
    static const QRegularExpression path(QStringLiteral("^\\w+\\.[\\w-]+\\.\\w+$"));
    QList<Assignment> assignments;
    for (const QString& text : texts) {
        const qsizetype sign = text.indexOf(QLatin1Char('='));
        const Assignment assignment{text.left(sign).trimmed(), text.mid(sign + 1)};
        if (sign < 0 || assignment.name.isEmpty())
            throw UsageError(QStringLiteral("params set: \"%1\" is not NAME=VALUE").arg(text));
        if (!isHex && !path.match(assignment.name).hasMatch())
            throw UsageError(QStringLiteral("params set: \"%1\" is not section.subsection.parameter")
                                 .arg(assignment.name));
        // The drivers would write its first line, or send a frame that means something else.
        if (assignment.value.contains(QLatin1Char('\n')))
            throw UsageError(QStringLiteral("params set: the value of %1 must be one line").arg(text));
        assignments.append(assignment);
    }
    return assignments;
}

} // namespace

Task prepareParams(const Options& options)
{
    const bool isHex = options.isHex();
    const QString what = options.arguments.constFirst();
    const QStringList rest = options.arguments.mid(1);
    if (what == QStringLiteral("list") && rest.isEmpty())
        return onRegister([isHex](AbstractFrDriver& driver) { return list(driver, isHex); });
    if (what == QStringLiteral("defaults") && rest.isEmpty())
        return onRegister(defaults);
    if (what == QStringLiteral("get") && !rest.isEmpty())
        return onRegister([rest, isHex](AbstractFrDriver& driver) { return get(driver, rest, isHex); });
    if (what == QStringLiteral("set") && !rest.isEmpty()) {
        const QList<Assignment> assignments = assignmentsFrom(rest, isHex);
        return onRegister(
            [assignments, isHex](AbstractFrDriver& driver) { return set(driver, assignments, isHex); });
    }
    throw UsageError(QStringLiteral("params takes list, get NAME..., set NAME=VALUE... or defaults"));
}

} // namespace frctl

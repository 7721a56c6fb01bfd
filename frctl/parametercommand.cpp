#include "parametercommand.h"

#include "abstractfrdriver.h"
#include "abstractregisterparameters.h"
#include "errors.h"
#include "frctltr.h"
#include "parametersearch.h"
#include "parameterwriting.h"
#include "progress.h"
#include "textcheck.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace frctl {

namespace {

using hw::AbstractRegisterParameters;
using hw::fr::RegisterParameter;
using Parameters = QList<RegisterParameter>;

/// A parameter to be written, named as on the command line.
struct Assignment
{
    QString name;
    QString value;
};

/// The link password of HEX. The driver knows that of the factory alone.
constexpr unsigned short linkPassword = 31;

const QString mask = QStringLiteral("****");

bool isSecret(const QString& name)
{
    return name == QStringLiteral("%1.0").arg(linkPassword) || name == QStringLiteral("POS.Proxy.Password");
}

/// A password is not for the eyes of whoever stands by, nor for a log: a word for it, when there is one.
QString shownValue(const RegisterParameter& parameter)
{
    return isSecret(parameter.name) && !parameter.value.isEmpty() ? mask : parameter.value;
}

QString typeName(RegisterParameter::Type type)
{
    switch (type) {
    case RegisterParameter::Type::Number:
        return QStringLiteral("number");
    case RegisterParameter::Type::Percent:
        return QStringLiteral("percent");
    case RegisterParameter::Type::Date:
        return QStringLiteral("date");
    case RegisterParameter::Type::Text:
        break;
    }
    return QStringLiteral("text");
}

QJsonObject json(const RegisterParameter& parameter)
{
    QJsonObject object{{QStringLiteral("id"), parameter.name}, {QStringLiteral("caption"), parameter.caption},
        {QStringLiteral("type"), typeName(parameter.type)}, {QStringLiteral("value"), shownValue(parameter)}};
    if (parameter.least)
        object.insert(QStringLiteral("least"), *parameter.least);
    if (parameter.greatest)
        object.insert(QStringLiteral("greatest"), *parameter.greatest);
    if (isSecret(parameter.name))
        object.insert(QStringLiteral("masked"), true);
    if (parameter.isReadOnly)
        object.insert(QStringLiteral("readOnly"), true);
    return object;
}

/// One line a setting, for those who read line by line.
QString oneLine(const RegisterParameter& parameter)
{
    QString value = shownValue(parameter);
    value.replace(QLatin1Char('\r'), QStringLiteral("\\r")).replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    return QStringLiteral("%1 %2: %3").arg(parameter.name, parameter.caption, value);
}

Output tell(const Parameters& parameters)
{
    QJsonArray array;
    QStringList lines;
    for (const RegisterParameter& parameter : parameters) {
        array.append(json(parameter));
        lines.append(oneLine(parameter));
    }
    return {lines, {{QStringLiteral("parameters"), array}}};
}

Parameters read(AbstractRegisterParameters& source, const QStringList& names)
{
    const Progress progress(tr("reading the register's parameters"));
    return source.readParameters(names);
}

/// By the name, the beginning of the name up to a point, or, unless it is a number, a part of the caption.
bool fits(const RegisterParameter& parameter, const QString& wanted)
{
    static const QRegularExpression number(QStringLiteral("^[\\d.]+$"));
    return parameter.name == wanted || parameter.name.startsWith(wanted + QLatin1Char('.'))
        || (!number.match(wanted).hasMatch() && parameter.caption.contains(wanted, Qt::CaseInsensitive));
}

Parameters fitting(const Parameters& known, const QString& wanted)
{
    Parameters found;
    std::copy_if(known.cbegin(), known.cend(), std::back_inserter(found),
        [&wanted](const RegisterParameter& parameter) { return fits(parameter, wanted); });
    if (found.isEmpty())
        throw Refusal(tr("no parameter \"%1\"").arg(wanted));
    return found;
}

/// What is wanted, in that order, out of what was read.
Parameters pick(const Parameters& read, const QStringList& names)
{
    Parameters picked;
    for (const QString& name : names) {
        const RegisterParameter* const found = findParameter(read, name);
        if (found == nullptr)
            throw Refusal(tr("the register does not tell %1").arg(name));
        picked.append(*found);
    }
    return picked;
}

Output get(AbstractRegisterParameters& source, const QStringList& wanted)
{
    const Parameters known = source.knownParameters();
    QStringList names;
    for (const QString& text : wanted) {
        for (const RegisterParameter& parameter : fitting(known, text))
            names.append(parameter.name);
    }
    return tell(pick(read(source, names), names));
}

QString nameByCaption(const Parameters& known, const QString& caption)
{
    const Parameters found = fitting(known, caption);
    for (const RegisterParameter& parameter : found) {
        if (parameter.caption.compare(caption, Qt::CaseInsensitive) == 0)
            return parameter.name;
    }
    if (found.size() > 1)
        throw Refusal(tr("\"%1\" names %2 parameters, %3 and %4 among them")
                          .arg(caption)
                          .arg(found.size())
                          .arg(found.at(0).name, found.at(1).name));
    return found.constFirst().name;
}

FrParameter toBeWritten(const AbstractRegisterParameters& source, const Assignment& assignment)
{
    if (const std::optional<FrParameter> named = source.assignment(assignment.name, assignment.value))
        return *named;
    const QString name = nameByCaption(source.knownParameters(), assignment.name);
    return source.assignment(name, assignment.value).value();
}

/// After its password is another one, a register answers nothing that this driver asks.
void refuseLockOut(const Options& options, unsigned parameter)
{
    if (options.isHex() && !options.force && parameter == linkPassword)
        throw UsageError(tr("params set: %1 is the password of the link, and this driver knows only that of "
                            "the factory: with another one it does not reach the register any more; --force "
                            "writes it all the same")
                             .arg(parameter));
}

/// Over HEX the register refuses what is too long for it, after it has written those before.
void judgeLengths(
    const Options& options, const AbstractRegisterParameters& source, const QList<ParameterChange>& changes)
{
    const Parameters table = source.knownParameters();
    TextCheck texts(options);
    for (const ParameterChange& change : changes) {
        const FrParameter& parameter = change.parameter;
        const RegisterParameter* const known = findParameter(
            table, QStringLiteral("%1.%2").arg(parameter.getFieldNum()).arg(parameter.getRowNum()));
        if (options.isHex() && known != nullptr && known->type == RegisterParameter::Type::Text)
            texts.keptText(
                change.name, change.value, known->greatest, isSecret(known->name) ? mask : change.value);
    }
    texts.finish();
}

Output set(AbstractFrDriver& driver, AbstractRegisterParameters& source, const QList<Assignment>& assignments,
    const Options& options)
{
    QList<ParameterChange> changes;
    for (const Assignment& assignment : assignments) {
        changes.append({assignment.name, assignment.value, toBeWritten(source, assignment)});
        refuseLockOut(options, changes.constLast().parameter.getFieldNum());
    }
    judgeLengths(options, source, changes);
    writeParameters(driver, source, changes, options.isHex());
    const auto count = static_cast<int>(changes.size());
    return {{tr("%1 parameters written").arg(count)}, {{QStringLiteral("written"), count}}};
}

Output defaults(AbstractFrDriver& driver, const AbstractRegisterParameters& source, bool isHex)
{
    writeDefaults(driver, source, isHex);
    return {{tr("defaults written")}, {{QStringLiteral("written"), true}}};
}

Task onParameters(const std::function<Output(AbstractFrDriver&, AbstractRegisterParameters&)>& run)
{
    Task task;
    task.onParameters = run;
    return task;
}

QList<Assignment> assignmentsFrom(const QStringList& texts, const Options& options)
{
    static const QRegularExpression path(QStringLiteral("^\\w+\\.[\\w-]+\\.\\w+$"));
    QList<Assignment> assignments;
    TextCheck values(options);
    for (const QString& text : texts) {
        const qsizetype sign = text.indexOf(QLatin1Char('='));
        Assignment assignment{text.left(sign).trimmed(), text.mid(sign + 1)};
        if (sign < 0 || assignment.name.isEmpty())
            throw UsageError(tr("params set: \"%1\" is not NAME=VALUE").arg(text));
        // Said before the register is reached: the driver would only say no afterwards.
        if (!options.isHex() && !path.match(assignment.name).hasMatch())
            throw UsageError(
                tr("params set: \"%1\" is not section.subsection.parameter").arg(assignment.name));
        refuseLockOut(options, assignment.name.section(QLatin1Char('.'), 0, 0).toUInt());
        assignment.value = values.line(assignment.name, assignment.value);
        assignments.append(assignment);
    }
    values.finish();
    return assignments;
}

} // namespace

Task prepareParams(const Options& options)
{
    const bool isHex = options.isHex();
    const QString what = options.arguments.constFirst();
    const QStringList rest = options.arguments.mid(1);
    if (options.force && what != QStringLiteral("set"))
        throw UsageError(tr("--force goes with params set"));
    if (what == QStringLiteral("list") && rest.isEmpty())
        return onParameters(
            [](AbstractFrDriver&, AbstractRegisterParameters& source) { return tell(read(source, {})); });
    if (what == QStringLiteral("defaults") && rest.isEmpty())
        return onParameters([isHex](AbstractFrDriver& driver, AbstractRegisterParameters& source) {
            return defaults(driver, source, isHex);
        });
    if (what == QStringLiteral("get") && !rest.isEmpty())
        return onParameters(
            [rest](AbstractFrDriver&, AbstractRegisterParameters& source) { return get(source, rest); });
    if (what == QStringLiteral("set") && !rest.isEmpty()) {
        const QList<Assignment> assignments = assignmentsFrom(rest, options);
        return onParameters(
            [assignments, options](AbstractFrDriver& driver, AbstractRegisterParameters& source) {
                return set(driver, source, assignments, options);
            });
    }
    throw UsageError(tr("params takes list, get NAME..., set NAME=VALUE... or defaults"));
}

} // namespace frctl

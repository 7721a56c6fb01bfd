#include "parameterwriting.h"

#include "abstractfrdriver.h"
#include "abstractregisterparameters.h"
#include "errors.h"
#include "frctltr.h"
#include "parametersearch.h"

namespace frctl {

namespace {

using hw::AbstractRegisterParameters;
using hw::fr::RegisterParameter;
using Parameters = QList<RegisterParameter>;

/// What the HEX driver writes as defaults, in its order; it tells only that one was refused.
constexpr std::pair<unsigned short, char16_t> hexDefaults[] = {
    {4, u'0'}, {5, u'0'}, {6, u'1'}, {8, u'0'}, {11, u'0'}, {13, u'0'}, {30, u'1'}, {38, u'1'}, {40, u'0'}};

QString nameOf(const FrParameter& parameter)
{
    return QStringLiteral("%1.%2").arg(parameter.getFieldNum()).arg(parameter.getRowNum());
}

[[noreturn]] void refuseHex(const AbstractRegisterParameters& source, const FrParameter& parameter)
{
    const QString name = nameOf(parameter);
    const Parameters table = source.knownParameters();
    const RegisterParameter* const known = findParameter(table, name);
    const QString caption = known == nullptr ? QString() : QLatin1Char(' ') + known->caption;
    throw Refusal(tr("%1%2 was refused; those before it are written").arg(name, caption), {name});
}

/// Each is a frame of its own anyway.
void writeSingly(
    AbstractFrDriver& driver, const AbstractRegisterParameters& source, const QList<FrParameter>& parameters)
{
    for (const FrParameter& parameter : parameters) {
        if (!driver.setParams({parameter}))
            refuseHex(source, parameter);
    }
}

bool isOutside(const RegisterParameter& parameter, const QString& value)
{
    if (parameter.type != RegisterParameter::Type::Number)
        return false;
    bool ok = false;
    const int number = value.toInt(&ok);
    return !ok || number < parameter.least.value_or(number) || number > parameter.greatest.value_or(number);
}

/// The names of those that the register does not have, or whose value it cannot take; of all where none
/// stands out.
QStringList suspects(AbstractRegisterParameters& source, const QList<ParameterChange>& changes)
{
    const Parameters told = source.readParameters({});
    QStringList all;
    QStringList some;
    for (const ParameterChange& change : changes) {
        const RegisterParameter* const parameter = findParameter(told, change.name);
        all.append(change.name);
        if (parameter == nullptr || parameter->isReadOnly || isOutside(*parameter, change.value))
            some.append(change.name);
    }
    return some.isEmpty() ? all : some;
}

void writeTogether(
    AbstractFrDriver& driver, AbstractRegisterParameters& source, const QList<ParameterChange>& changes)
{
    QList<FrParameter> parameters;
    for (const ParameterChange& change : changes)
        parameters.append(change.parameter);
    if (driver.setParams(parameters))
        return;
    const QStringList refused
        = changes.size() == 1 ? QStringList(changes.constFirst().name) : suspects(source, changes);
    const QString names = refused.join(tr(" or "));
    throw Refusal(tr("%1 was refused; nothing is written").arg(names), refused);
}

} // namespace

void writeParameters(AbstractFrDriver& driver, AbstractRegisterParameters& source,
    const QList<ParameterChange>& changes, bool isHex)
{
    if (!isHex)
        return writeTogether(driver, source, changes);
    QList<FrParameter> parameters;
    for (const ParameterChange& change : changes)
        parameters.append(change.parameter);
    writeSingly(driver, source, parameters);
}

void writeDefaults(AbstractFrDriver& driver, const AbstractRegisterParameters& source, bool isHex)
{
    if (driver.setDefaults())
        return;
    const QString xmlDefault = QStringLiteral("MACRO.KKTCounters.GetCumulativeCounters");
    if (!isHex)
        throw Refusal(tr("%1 was refused; nothing is written").arg(xmlDefault), {xmlDefault});
    // Once more, one by one: the same values, but now the refused one is known.
    QList<FrParameter> defaults;
    for (const auto& [field, value] : hexDefaults)
        defaults.append(FrParameter(1, 0, field, QString(QChar(value))));
    writeSingly(driver, source, defaults);
}

} // namespace frctl

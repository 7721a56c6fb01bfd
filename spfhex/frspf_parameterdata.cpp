// Parameters as data, beside the printout.

#include "frspf.h"

#include "command.h"
#include "driverlogger.h"
#include "paramtable.h"
#include "protocol.h"

#include <QRegularExpression>

namespace spfhex {

namespace {

using hw::fr::RegisterParameter;

RegisterParameter::Type typeOf(utils::DataType type)
{
    switch (type) {
    case utils::DataType::Number:
        return RegisterParameter::Type::Number;
    case utils::DataType::Percent:
        return RegisterParameter::Type::Percent;
    case utils::DataType::Date:
        return RegisterParameter::Type::Date;
    default:
        return RegisterParameter::Type::Text;
    }
}

RegisterParameter describe(int number, int row, const utils::TableParameter& parameter, const char* caption)
{
    RegisterParameter known;
    known.name = QStringLiteral("%1.%2").arg(number).arg(row);
    known.caption = QString::fromUtf8(caption);
    known.type = typeOf(parameter.getType());
    // A percentage has no bounds; -1 is the table's word for no limit.
    if (known.type != RegisterParameter::Type::Percent) {
        known.least = parameter.getMin();
        if (parameter.getMax() >= 0)
            known.greatest = parameter.getMax();
    }
    known.isReadOnly = parameter.isReadOnly();
    return known;
}

QList<RegisterParameter> describe(int number, const utils::TableParameter& parameter)
{
    if (parameter.getType() != utils::DataType::Array)
        return {describe(number, 0, parameter, parameter.getDescription())};
    QList<RegisterParameter> known;
    const QMap<int, utils::TableParameter> rows = parameter.getSubParams();
    for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
        const char* const own = row->getDescription();
        known.append(describe(number, row.key(), *row, own == nullptr ? parameter.getDescription() : own));
    }
    return known;
}

} // namespace

QList<RegisterParameter> FrSpf::knownParameters() const
{
    QList<RegisterParameter> known;
    const QMap<int, utils::TableParameter> table = utils::getParamTableStructure();
    for (auto entry = table.cbegin(); entry != table.cend(); ++entry)
        known.append(describe(entry.key(), *entry));
    return known;
}

QList<RegisterParameter> FrSpf::readParameters(const QStringList& names)
{
    logger->info(QStringLiteral("Получение параметров"));
    isPortReady();
    QList<RegisterParameter> read;
    const QList<RegisterParameter> known = knownParameters();
    for (RegisterParameter parameter : known) {
        if (!names.isEmpty() && !names.contains(parameter.name))
            continue;
        const std::optional<FrParameter> place = assignment(parameter.name, QString());
        parameter.value = command->getParameter(place->getFieldNum(), place->getRowNum()).trimmed();
        read.append(parameter);
    }
    logger->info(QStringLiteral("Параметры получены"));
    return read;
}

std::optional<FrParameter> FrSpf::assignment(const QString& name, const QString& value) const
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,4})(?:\\.(\\d{1,4}))?$"));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch())
        return std::nullopt;
    return FrParameter(
        protocol::parameterTable, match.captured(2).toUShort(), match.captured(1).toUShort(), value);
}

} // namespace spfhex

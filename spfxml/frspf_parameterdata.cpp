// Settings as data, beside the printout.

#include "frspf.h"
#include "parametercatalogue.h"

#include <QRegularExpression>

namespace spfxml {

namespace {

using hw::fr::RegisterParameter;

RegisterParameter describe(
    const QString& path, const RequestParams& node, const QMap<QString, QString>& captions)
{
    RegisterParameter known;
    known.name = path + QLatin1Char('.') + node.getName();
    known.caption = captions.value(node.getName());
    known.type = node.getType() == RequestParams::EParamType::Integer ? RegisterParameter::Type::Number
                                                                      : RegisterParameter::Type::Text;
    known.value = node.getFormattedValue().trimmed();
    return known;
}

QList<RegisterParameter> describe(const QList<RequestParams>& sections)
{
    QList<RegisterParameter> parameters;
    const QMap<QString, QString> captions = spf::utils::getParametersDescription();
    for (const RequestParams& section : sections) {
        for (const RequestParams& subsection : section.getParams()) {
            const QString path = section.getName() + QLatin1Char('.') + subsection.getName();
            for (const RequestParams& parameter : subsection.getParams())
                parameters.append(describe(path, parameter, captions));
        }
    }
    return parameters;
}

} // namespace

QList<RegisterParameter> FrSpf::knownParameters() const
{
    return describe(spf::utils::getParamsList());
}

QList<RegisterParameter> FrSpf::readParameters(const QStringList& names)
{
    logger->info(QStringLiteral("Получение параметров"));
    isPortReady();
    QList<RegisterParameter> read = describe(command->getParameters().getParams());
    read.removeIf([&names](const RegisterParameter& parameter) {
        return !names.isEmpty() && !names.contains(parameter.name);
    });
    logger->info(QStringLiteral("Параметры получены"));
    return read;
}

std::optional<FrParameter> FrSpf::assignment(const QString& name, const QString& value) const
{
    // Each path of the catalogue has this form. setParams knows no hyphen and refuses those of ims-client.
    static const QRegularExpression path(QStringLiteral("^\\w+\\.[\\w-]+\\.\\w+$"));
    if (!path.match(name).hasMatch())
        return std::nullopt;
    return FrParameter(0, 0, 0, name + QLatin1Char('.') + value);
}

} // namespace spfxml

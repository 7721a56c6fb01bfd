#include "names.h"
#include "parametercatalogue.h"
#include "spffrcommand.h"

#include <exceptions.h>
#include <log4qt/logger.h>

#include <QDomDocument>

#include <algorithm>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

// Never null. A reference looks to GCC 13 like one into a text that is gone.
const RequestParams* namedNode(const QList<RequestParams>& nodes, const QString& name, const QString& refusal)
{
    const auto found = std::find_if(
        nodes.cbegin(), nodes.cend(), [&name](const RequestParams& node) { return node.getName() == name; });
    if (found == nodes.cend())
        throw FrCommandException(refusal);
    return &*found;
}

// A text that is no number is meant to become 0 where the device wants a number.
QVariant parameterValue(ParamType type, const QString& text)
{
    return type == ParamType::Integer ? QVariant(text.toUInt()) : QVariant(text);
}

// An empty group is dropped, never sent.
void appendGroup(QList<RequestParams>& groups, const QString& name, const QList<RequestParams>& children)
{
    if (!children.isEmpty())
        groups.append({ParamType::Structure, name, children});
}

QList<RequestParams> subsectionNodes(
    const QList<RequestParams>& catalogue, const QString& path, const QMap<QString, QString>& values)
{
    QList<RequestParams> nodes;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const RequestParams* known = namedNode(
            catalogue, value.key(), QStringLiteral("Настройка '%1.%2' не найдена").arg(path, value.key()));
        nodes.append({known->getType(), value.key(), parameterValue(known->getType(), value.value())});
    }
    return nodes;
}

QList<RequestParams> sectionNodes(const QList<RequestParams>& catalogue, const QString& section,
    const QMap<QString, QMap<QString, QString>>& subsections)
{
    QList<RequestParams> nodes;
    for (auto subsection = subsections.cbegin(); subsection != subsections.cend(); ++subsection) {
        const QString path = section + QLatin1Char('.') + subsection.key();
        const RequestParams* known
            = namedNode(catalogue, subsection.key(), QStringLiteral("Подсекция '%1' не найдена").arg(path));
        appendGroup(nodes, subsection.key(), subsectionNodes(known->getParams(), path, subsection.value()));
    }
    return nodes;
}

} // namespace

RequestParams SpfFrCommand::getParameters() const
{
    logger->debug(QStringLiteral("Чтение параметров ККТ"));
    const RequestParams question(
        ParamType::Structure, names::document::settingsRead, spf::utils::getParamsList());
    const QDomDocument answer = requestData(ECommandCode::GetParameters, question, repeatableAttempts);
    return RequestParams::fromElement(answer.documentElement());
}

void SpfFrCommand::setParameters(const ParameterMap& values) const
{
    logger->debug(QStringLiteral("Установка параметров ККТ"));
    const QList<RequestParams> catalogue = spf::utils::getParamsList();
    QList<RequestParams> sections;
    for (auto section = values.cbegin(); section != values.cend(); ++section) {
        const RequestParams* known = namedNode(
            catalogue, section.key(), QStringLiteral("Секция '%1' не найдена").arg(section.key()));
        appendGroup(
            sections, section.key(), sectionNodes(known->getParams(), section.key(), section.value()));
    }
    if (!sections.isEmpty())
        sendStructure(ECommandCode::SetParameters, names::document::settingsWritten, sections);
}

} // namespace spfxml

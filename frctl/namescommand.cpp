#include "namescommand.h"

#include "errors.h"
#include "fieldtable.h"

#include <QJsonArray>

#include <algorithm>
#include <numeric>

namespace frctl {

namespace {

using receipt::FieldCarriage;
using receipt::FieldRule;

QJsonObject carriageJson(const FieldCarriage& carriage)
{
    const bool isText = carriage.form != FieldCarriage::NotCarried && carriage.form != FieldCarriage::Value;
    QJsonObject json{{QStringLiteral("carried"), carriage.form != FieldCarriage::NotCarried}};
    if (!isText)
        return json;
    const QString encoding
        = carriage.form == FieldCarriage::Utf8 ? QStringLiteral("UTF-8") : QStringLiteral("CP866");
    json.insert(QStringLiteral("encoding"), encoding);
    json.insert(QStringLiteral("limit"), carriage.limit);
    return json;
}

qsizetype widest(qsizetype width, const FieldRule& rule)
{
    return std::max(width, static_cast<qsizetype>(qstrlen(rule.path)));
}

/// Over both protocols, or that of the command line alone.
Output fields(const QList<receipt::Protocol>& protocols)
{
    const auto rules = receipt::fieldRules();
    const qsizetype width = std::accumulate(rules.begin(), rules.end(), qsizetype{0}, widest);
    QJsonArray json;
    Output output;
    for (const FieldRule& rule : rules) {
        QString line = QString::fromLatin1(rule.path).leftJustified(width);
        QJsonObject field{{QStringLiteral("path"), QString::fromLatin1(rule.path)}};
        for (const receipt::Protocol protocol : protocols) {
            const QString name = receipt::protocolName(protocol);
            line += QStringLiteral("  %1: %2").arg(name, rule.over(protocol).text().leftJustified(10));
            field.insert(name, carriageJson(rule.over(protocol)));
        }
        output.lines.append(line.trimmed());
        json.append(field);
    }
    output.json = {{QStringLiteral("fields"), json}};
    return output;
}

} // namespace

Task prepareNames(const Options& options)
{
    if (options.arguments.constFirst() != QStringLiteral("fields"))
        throw UsageError(
            QStringLiteral("names: \"%1\" is no list; there is fields").arg(options.arguments.constFirst()));
    const QList<receipt::Protocol> protocols = options.isGiven("protocol")
        ? QList{options.receiptProtocol()}
        : QList{receipt::Protocol::Xml, receipt::Protocol::Hex};
    Task task;
    task.alone = [protocols] { return fields(protocols); };
    return task;
}

} // namespace frctl

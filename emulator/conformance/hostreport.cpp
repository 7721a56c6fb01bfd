#include "conformance/hostreport.h"

#include "conformance/hostrecord.h"

#include <QJsonArray>

namespace emulator::hostreport {

namespace {

constexpr int formatVersion = 1;
constexpr qsizetype mostBytes = 1024;

QString nameOf(const QString& protocol, const QString& code, const QString& name)
{
    const QString command = code.isEmpty() ? QStringLiteral("without a command") : code;
    return QStringLiteral("%1 %2 %3").arg(protocol, command, name).trimmed();
}

QString nameOf(const Exchange& exchange)
{
    return nameOf(exchange.protocol, exchange.command, exchange.name);
}

QJsonObject place(const Exchange& exchange)
{
    return {{QStringLiteral("protocol"), exchange.protocol}, {QStringLiteral("command"), exchange.command},
        {QStringLiteral("name"), exchange.name}, {QStringLiteral("exchange"), exchange.number}};
}

QJsonObject entry(const HostRecord::Command& command)
{
    return {{QStringLiteral("protocol"), command.protocol}, {QStringLiteral("command"), command.code},
        {QStringLiteral("name"), command.name}, {QStringLiteral("count"), command.count},
        {QStringLiteral("refused"), command.refused}};
}

QJsonObject entry(const HostRecord::Refused& refused)
{
    QJsonObject object = place(refused.first);
    const QByteArray& request = refused.first.request;
    object[QStringLiteral("error")] = refused.first.error;
    object[QStringLiteral("reason")] = refused.first.reason;
    object[QStringLiteral("count")] = refused.count;
    object[QStringLiteral("size")] = request.size();
    object[QStringLiteral("request")] = QString::fromLatin1(request.left(mostBytes).toHex());
    return object;
}

QJsonObject entry(const HostRecord::Warning& warning)
{
    QJsonObject object = place(warning.at);
    object[QStringLiteral("kind")] = warning.kind;
    object[QStringLiteral("text")] = warning.text;
    return object;
}

template <typename Entry>
QJsonArray entries(const QList<Entry>& list)
{
    QJsonArray array;
    for (const Entry& one : list)
        array.append(entry(one));
    return array;
}

} // namespace

QJsonObject toJson(const HostRecord& record)
{
    return {{QStringLiteral("format"), formatVersion}, {QStringLiteral("exchanges"), record.exchanges},
        {QStringLiteral("refused"), record.refused}, {QStringLiteral("commands"), entries(record.commands)},
        {QStringLiteral("refusals"), entries(record.refusals)},
        {QStringLiteral("warnings"), entries(record.warnings)}};
}

QString toText(const HostRecord& record)
{
    QString text = QStringLiteral("conformance: %1 exchanges, %2 refused, %3 warnings\n")
                       .arg(record.exchanges)
                       .arg(record.refused)
                       .arg(record.warnings.size());
    for (const HostRecord::Command& command : record.commands)
        text += QStringLiteral("  %1: %2\n")
                    .arg(nameOf(command.protocol, command.code, command.name))
                    .arg(command.count);
    for (const HostRecord::Refused& refused : record.refusals)
        text += QStringLiteral("  refused, %1: exchange %2: %3: %4, %5\n")
                    .arg(refused.count)
                    .arg(refused.first.number)
                    .arg(nameOf(refused.first), refused.first.error, refused.first.reason.simplified());
    for (const HostRecord::Warning& warning : record.warnings)
        text += QStringLiteral("  warning: exchange %1: %2: %3\n")
                    .arg(warning.at.number)
                    .arg(nameOf(warning.at), warning.text);
    return text;
}

} // namespace emulator::hostreport

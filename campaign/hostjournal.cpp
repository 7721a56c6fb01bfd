#include "hostjournal.h"

#include "firstgoods.h"
#include "violation.h"

#include <QHash>
#include <QJsonDocument>

namespace hostjournal {

namespace {

QString compact(const QJsonObject& json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

/// What no other document of the register has.
QString keyOf(const QString& kind, const QString& goods, const QString& sum, const QJsonValue& number)
{
    if (kind == QStringLiteral("sell"))
        return kind + goods;
    return kind + (kind == QStringLiteral("cashIn") ? sum : QString::number(number.toInteger()));
}

QString keyOfDocument(const QJsonObject& document)
{
    return keyOf(kindOf(document), firstGoodsOf(document), document.value(QStringLiteral("total")).toString(),
        document.value(QStringLiteral("number")));
}

QString keyOfRecord(const QJsonObject& record)
{
    const QJsonObject body = record.value(QStringLiteral("body")).toObject();
    return keyOf(record.value(QStringLiteral("kind")).toString(), firstGoodsOf(body),
        QString::number(body.value(QStringLiteral("sum")).toDouble(), 'f', 2),
        record.value(QStringLiteral("documentNumber")));
}

bool isIssuedOn(const QString& port, const QJsonObject& record)
{
    return record.value(QStringLiteral("register")) == port
        && record.value(QStringLiteral("state")) == QStringLiteral("issued");
}

} // namespace

QString kindOf(const QJsonObject& document)
{
    const QString type = document.value(QStringLiteral("type")).toString();
    return type == QStringLiteral("closeShift") ? QStringLiteral("zReport") : type;
}

void checkRecord(const QJsonObject& record, const QJsonObject& document)
{
    QJsonObject expected{{QStringLiteral("state"), QStringLiteral("issued")}, {QStringLiteral("times"), 1},
        {QStringLiteral("kind"), kindOf(document)}};
    // Cash is no document of the fiscal drive.
    if (document.contains(QStringLiteral("fiscalDrive"))) {
        expected.insert(QStringLiteral("documentNumber"), document.value(QStringLiteral("number")));
        expected.insert(QStringLiteral("drive"), document.value(QStringLiteral("fiscalDrive")));
    }
    for (auto field = expected.begin(); field != expected.end(); ++field)
        expect(record.value(field.key()) == field.value(),
            QStringLiteral("another %1: %2 of %3").arg(field.key(), compact(record), compact(document)));
}

void checkAll(const QList<QJsonObject>& records, const QList<QJsonObject>& documents, const QString& port)
{
    QHash<QString, QJsonObject> issued;
    for (const QJsonObject& record : records) {
        if (!isIssuedOn(port, record))
            continue;
        expect(!issued.contains(keyOfRecord(record)), QStringLiteral("issued twice: ") + compact(record));
        issued.insert(keyOfRecord(record), record);
    }
    for (const QJsonObject& document : documents)
        checkRecord(issued.take(keyOfDocument(document)), document);
    expect(
        issued.isEmpty(), QStringLiteral("issued, and not in the register: %1 documents").arg(issued.size()));
}

} // namespace hostjournal

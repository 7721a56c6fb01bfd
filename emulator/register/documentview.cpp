#include "register/documentview.h"

#include "register/documentname.h"
#include "register/storeddocument.h"
#include "register/tags.h"
#include "register/tagtext.h"
#include "register/tlv.h"
#include "tape/pagetext.h"

#include <QJsonArray>

namespace emulator::documentview {

namespace {

QJsonObject requisitesOf(const StoredDocument& document)
{
    return tlv::decode(document.record.tags).value_or(QJsonObject());
}

QString kindOf(const StoredDocument& document, const QJsonObject& requisites)
{
    const int settlement = requisites.value(tag::settlement).toInt();
    const QString title = documentnames::find(document.record.type, settlement).title;
    return settlement == 0 ? title : title + QStringLiteral(", ") + documentnames::settlement(settlement);
}

QJsonObject headJson(const StoredDocument& document, const QJsonObject& requisites)
{
    const FiscalRecord& record = document.record;
    QJsonObject head{{QStringLiteral("number"), static_cast<qint64>(record.number)},
        {QStringLiteral("type"), static_cast<int>(record.type)},
        {QStringLiteral("kind"), kindOf(document, requisites)},
        {QStringLiteral("dateTime"), record.dateTime.toString(Qt::ISODate)},
        {QStringLiteral("fiscalSign"), record.sign}};
    if (requisites.contains(tag::total))
        head[QStringLiteral("total")] = requisites.value(tag::total);
    return head;
}

QString line(const StoredDocument& document)
{
    constexpr int numberWidth = 6;
    constexpr int kindWidth = 34;
    constexpr int sumWidth = 14;
    const FiscalRecord& record = document.record;
    const QJsonObject requisites = requisitesOf(document);
    const QStringList columns{QString::number(record.number).rightJustified(numberWidth),
        record.dateTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
        kindOf(document, requisites).leftJustified(kindWidth),
        requisites.value(tag::total).toString().rightJustified(sumWidth), record.sign};
    return columns.join(QStringLiteral("  "));
}

} // namespace

QString list(const QList<StoredDocument>& documents)
{
    QString text;
    for (const StoredDocument& document : documents)
        text += line(document) + QLatin1Char('\n');
    return text;
}

QJsonArray listJson(const QList<StoredDocument>& documents)
{
    QJsonArray heads;
    for (const StoredDocument& document : documents)
        heads.append(headJson(document, requisitesOf(document)));
    return heads;
}

QString whole(const StoredDocument& document)
{
    const QStringList lines
        = tagtext::lines(requisitesOf(document)) + QStringList{QString()} + tape::toText(document.page);
    return lines.join(QLatin1Char('\n')).trimmed() + QLatin1Char('\n');
}

QJsonObject wholeJson(const StoredDocument& document)
{
    const QJsonObject requisites = requisitesOf(document);
    QJsonObject object = headJson(document, requisites);
    object[QStringLiteral("tags")] = tagtext::json(requisites);
    object[QStringLiteral("page")] = QJsonArray::fromStringList(tape::toText(document.page));
    return object;
}

} // namespace emulator::documentview

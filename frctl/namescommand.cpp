#include "namescommand.h"

#include "errorkind.h"
#include "errors.h"
#include "fieldtable.h"
#include "frctltr.h"
#include "options.h"
#include "receiptnames.h"
#include "texttable.h"
#include "wordlists.h"

#include <QJsonArray>

#include <algorithm>
#include <numeric>

namespace frctl {

namespace {

using receipt::FieldCarriage;
using receipt::FieldRule;

QString fieldList()
{
    return QStringLiteral("fields");
}

QString errorList()
{
    return QStringLiteral("error-kinds");
}

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

/// Of a barcode, which not every protocol prints.
QStringList printedOver(int type)
{
    QStringList over;
    for (const receipt::Protocol protocol : {receipt::Protocol::Xml, receipt::Protocol::Hex}) {
        if (receipt::isBarcodePrinted(type, protocol))
            over.append(receipt::protocolName(protocol));
    }
    return over;
}

Output wordsOf(const WordList& list)
{
    const bool areBarcodes = list.words().data() == receipt::names::barcodeTypes().data();
    QList<QStringList> rows;
    QJsonArray values;
    for (const receipt::NamedValue& word : list.words()) {
        const QString name = QLatin1String(word.name);
        const QString meaning = meaningOf(list, word);
        QJsonObject value{{QStringLiteral("name"), name}, {QStringLiteral("value"), word.value},
            {QStringLiteral("text"), meaning}};
        QStringList row{name, QString::number(word.value)};
        if (areBarcodes) {
            const QStringList over = printedOver(word.value);
            value.insert(QStringLiteral("printedOver"), QJsonArray::fromStringList(over));
            row.append(over.isEmpty() ? tr("not printed") : over.join(QStringLiteral(", ")));
        }
        values.append(value);
        rows.append(row << meaning);
    }
    return {textTable(rows),
        {{QStringLiteral("list"), QLatin1String(list.name)},
            {QStringLiteral("field"), QLatin1String(list.field)}, {QStringLiteral("values"), values}}};
}

/// Of an answer: what the error's kind is called, and what a cashier does.
Output errorKindList()
{
    QList<QStringList> rows;
    QJsonArray values;
    for (int kind = 0; kind <= static_cast<int>(sale::ErrorKind::Other); ++kind) {
        const QString name = sale::errorKindName(static_cast<sale::ErrorKind>(kind));
        const QString action = sale::errorAction(static_cast<sale::ErrorKind>(kind));
        values.append(QJsonObject{{QStringLiteral("name"), name}, {QStringLiteral("text"), action}});
        rows.append({name, action});
    }
    return {textTable(rows),
        {{QStringLiteral("list"), errorList()}, {QStringLiteral("field"), QStringLiteral("error.kind")},
            {QStringLiteral("values"), values}}};
}

Output allLists()
{
    QList<QStringList> rows;
    for (const WordList& list : wordLists())
        rows.append({QLatin1String(list.name), QLatin1String(list.field)});
    rows.append({errorList(), tr("error.kind of an answer")});
    rows.append({fieldList(), tr("all fields of a receipt, and how the protocols carry them")});
    QJsonArray json;
    for (const QStringList& row : rows)
        json.append(row.constFirst());
    return {textTable(rows), {{QStringLiteral("lists"), json}}};
}

Output namedList(const QString& name, const QList<receipt::Protocol>& protocols)
{
    if (name.isEmpty())
        return allLists();
    if (name == fieldList())
        return fields(protocols);
    if (name == errorList())
        return errorKindList();
    for (const WordList& list : wordLists()) {
        if (name == QLatin1String(list.name))
            return wordsOf(list);
    }
    throw UsageError(tr("names: \"%1\" is no list; frctl names tells which there are").arg(name));
}

} // namespace

QStringList listNames()
{
    QStringList names;
    for (const WordList& list : wordLists())
        names.append(QLatin1String(list.name));
    return names << errorList() << fieldList();
}

Task prepareNames(const Options& options)
{
    return alone(
        [output = namedList(options.arguments.value(0), options.receiptProtocols())] { return output; });
}

} // namespace frctl

#include "register/entrytags.h"

#include "register/codepage.h"
#include "register/documentname.h"
#include "register/entrywords.h"
#include "register/tags.h"
#include "register/tagtable.h"
#include "register/tlv.h"

#include <QJsonArray>

#include <algorithm>

namespace emulator::entrytags {

namespace {

using entrywords::Level;
/// Each value with the path to it.
using Leaves = QList<std::pair<QString, QJsonValue>>;

const QString typeField = QStringLiteral("type");
const QString itemsField = QStringLiteral("items");
const QString paymentsField = QStringLiteral("payments");
const QString taxesField = QStringLiteral("taxes");
const QString unprintedField = QStringLiteral("unprinted");
const QString noMoney = QStringLiteral("0.00");
const QStringList paymentKindFields{QStringLiteral("payments.cash"),
    QStringLiteral("payments.electronically"), QStringLiteral("payments.prepaid"),
    QStringLiteral("payments.credit"), QStringLiteral("payments.other")};

// An object without fields is a value, too.
Leaves leavesOf(const QJsonObject& object, const QString& path = {})
{
    Leaves leaves;
    for (auto field = object.begin(); field != object.end(); ++field) {
        const QJsonObject inside = field.value().toObject();
        if (inside.isEmpty())
            leaves.append({path + field.key(), field.value()});
        else
            leaves += leavesOf(inside, path + field.key() + QLatin1Char('.'));
    }
    return leaves;
}

void putAt(QJsonObject& object, const QString& path, const QJsonValue& value)
{
    const qsizetype point = path.indexOf(QLatin1Char('.'));
    if (point < 0) {
        object[path] = value;
        return;
    }
    QJsonObject inside = object.value(path.left(point)).toObject();
    putAt(inside, path.mid(point + 1), value);
    object[path.left(point)] = inside;
}

TagKind kindOf(const QString& name)
{
    return tagtable::row(name.toInt()).kind;
}

bool holds(const QString& path, const QJsonValue& value)
{
    QStringList tags = path.split(QLatin1Char('.'));
    const int last = tags.takeLast().toInt();
    const bool areStructures = std::all_of(
        tags.cbegin(), tags.cend(), [](const QString& name) { return kindOf(name) == TagKind::Structure; });
    return areStructures && tlv::holds(last, value);
}

QString extraText(const QJsonValue& value)
{
    return value.isBool() ? QStringLiteral("ДА") : codepage::escaped(value.toVariant().toString());
}

void addExtra(QJsonObject& requisites, const QString& field, const QJsonValue& value)
{
    QJsonArray extras = requisites.value(tag::extra).toArray();
    extras.append(
        QJsonObject{{tag::extraName, entrywords::extraOf(field)}, {tag::extraValue, extraText(value)}});
    requisites[tag::extra] = extras;
}

// The fiscal drive's code page has all that it says.
bool isPlain(const QJsonValue& value)
{
    const QString text = value.toString();
    return codepage::toText(codepage::fromText(text)) == text;
}

QJsonObject levelToTags(const QJsonObject& fields, Level level)
{
    QJsonObject requisites;
    for (const auto& [field, value] : leavesOf(fields)) {
        const QString path = entrywords::tagsOf(field, level);
        const bool isHeld = !path.isEmpty() && holds(path, value);
        if (isHeld)
            putAt(requisites, path, value);
        if (!isHeld || !isPlain(value))
            addExtra(requisites, field, value);
    }
    return requisites;
}

// A text that its tag could not have, or one of a field that is no text.
QJsonValue extraValue(const QString& field, const QString& text, Level level)
{
    if (field == unprintedField)
        return true;
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    const TagKind kind = kindOf(entrywords::tagsOf(field, level).section(QLatin1Char('.'), -1));
    const bool wantsNumber = kind == TagKind::Byte || kind == TagKind::Word || kind == TagKind::Integer;
    return isNumber && wantsNumber ? QJsonValue(number) : QJsonValue(text);
}

QJsonObject levelFromTags(QJsonObject requisites, Level level)
{
    QJsonObject fields;
    const QJsonArray extras = requisites.take(tag::extra).toArray();
    for (const auto& [path, value] : leavesOf(requisites))
        putAt(fields, entrywords::fieldOf(path, level), value);
    for (const auto& extra : extras) {
        const QString field = entrywords::fieldOfExtra(extra[tag::extraName].toString());
        const QString text = codepage::unescaped(extra[tag::extraValue].toString());
        putAt(fields, field, extraValue(field, text, level));
    }
    return fields;
}

// The document has all five sums, the entry those that are not nothing.
void fillPayments(QJsonObject& requisites)
{
    for (const QString& kind : paymentKindFields) {
        const QString path = entrywords::tagsOf(kind, Level::Document);
        if (!requisites.contains(path))
            requisites[path] = noMoney;
    }
}

void dropEmptyPayments(QJsonObject& entry)
{
    QJsonObject payments = entry.value(paymentsField).toObject();
    const QStringList kinds = payments.keys();
    for (const QString& kind : kinds) {
        if (payments.value(kind) == noMoney)
            payments.remove(kind);
    }
    entry[paymentsField] = payments;
}

// Rates that came later share one tag, which tells of each its rate and its sum.
QJsonArray takeLaterTaxes(QJsonObject& fields)
{
    QJsonObject taxes = fields.take(taxesField).toObject();
    QJsonArray later;
    const QStringList rates = taxes.keys();
    for (const QString& rate : rates) {
        const QString path = taxesField + QLatin1Char('.') + rate;
        if (entrywords::tagsOf(path, Level::Document).isEmpty())
            later.append(QJsonObject{{tag::taxRate, rate.toInt()}, {tag::laterTaxSum, taxes.take(rate)}});
    }
    fields[taxesField] = taxes;
    return later;
}

void putLaterTaxes(QJsonObject& entry, const QJsonArray& later)
{
    for (const auto& tax : later)
        putAt(entry, taxesField + QLatin1Char('.') + QString::number(tax[tag::taxRate].toInt()),
            tax[tag::laterTaxSum]);
}

QJsonArray converted(const QJsonArray& positions, QJsonObject (*convert)(const QJsonObject& position))
{
    QJsonArray all;
    for (const auto& position : positions)
        all.append(convert(position.toObject()));
    return all;
}

} // namespace

QJsonObject toTags(const QJsonObject& entry)
{
    const DocumentName kind = documentnames::byWord(entry.value(typeField).toString());
    QJsonObject fields = entry;
    fields.remove(typeField);
    const QJsonArray positions = fields.take(itemsField).toArray();
    const QJsonArray later = takeLaterTaxes(fields);
    for (const QString& name : {paymentsField, taxesField}) {
        if (fields.value(name).toObject().isEmpty())
            fields.remove(name);
    }
    QJsonObject requisites = levelToTags(fields, Level::Document);
    requisites[tag::documentTitle] = kind.title;
    if (kind.settlement == 0)
        return requisites;
    requisites[tag::settlement] = kind.settlement;
    if (!later.isEmpty())
        requisites[tag::laterTaxes] = QJsonObject{{tag::laterTax, later}};
    fillPayments(requisites);
    requisites[tag::positions] = converted(
        positions, [](const QJsonObject& position) { return levelToTags(position, Level::Position); });
    return requisites;
}

QJsonObject fromTags(const QJsonObject& requisites)
{
    QJsonObject rest = requisites;
    const int settlement = rest.take(tag::settlement).toInt();
    const QString title = rest.take(tag::documentTitle).toString();
    const QJsonArray positions = rest.take(tag::positions).toArray();
    const QJsonArray later = rest.take(tag::laterTaxes)[tag::laterTax].toArray();
    QJsonObject entry = levelFromTags(rest, Level::Document);
    entry[typeField] = documentnames::byTitle(title, settlement).word;
    if (settlement == 0)
        return entry;
    dropEmptyPayments(entry);
    putLaterTaxes(entry, later);
    entry[itemsField] = converted(
        positions, [](const QJsonObject& position) { return levelFromTags(position, Level::Position); });
    return entry;
}

} // namespace emulator::entrytags

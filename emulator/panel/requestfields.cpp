#include "panel/requestfields.h"

#include "register/settingtable.h"
#include "trace/commandtable.h"
#include "trace/tagtable.h"

#include <QRegularExpression>

#include <algorithm>

namespace emulator::panel::requestfields {

namespace {

/// The fields of each kind of request with one of these codes.
QList<QList<trace::FieldRow>> hexRows(const QStringList& codes)
{
    QList<QList<trace::FieldRow>> rows;
    for (const trace::HexCommandRow& row : trace::commandtable::hexCommands()) {
        if (codes.contains(QString::fromLatin1(row.code)))
            rows.append(row.command.requestFields);
    }
    return rows;
}

QStringList hexNames(const QStringList& codes)
{
    QStringList names;
    for (const QList<trace::FieldRow>& fields : hexRows(codes)) {
        for (const trace::FieldRow& field : fields) {
            if (!field.name.isEmpty() && !names.contains(field.name))
                names.append(field.name);
        }
    }
    return names;
}

/// Hosts may send more fields than are known.
bool isPlaceWithoutName(const QString& name, const QStringList& codes)
{
    static const QRegularExpression form(QStringLiteral("\\Afield([1-9]\\d{0,2})\\z"));
    const QRegularExpressionMatch match = form.match(name);
    const qsizetype index = match.captured(1).toInt() - 1;
    const QList<QList<trace::FieldRow>> rows = hexRows(codes);
    return match.hasMatch()
        && std::any_of(rows.cbegin(), rows.cend(), [index](const QList<trace::FieldRow>& fields) {
               return index >= fields.size() || fields.at(index).name.isEmpty();
           });
}

const QStringList& xmlNames()
{
    static const QStringList names = [] {
        QStringList all = trace::tagtable::names().values();
        // Those that are no tags.
        for (const char* const name : {"CashSumm", "DateTime", "DoNotPrint", "Footer", "ItemDiscounts",
                 "MoneyOperationType", "Name", "PriceWithDiscount", "Value"})
            all.append(QLatin1String(name));
        for (const SettingEntry& entry : settingTable())
            all += entry.path.split(QLatin1Char('.'));
        all.removeDuplicates();
        return all;
    }();
    return names;
}

bool isXmlName(const QString& path)
{
    static const QRegularExpression place(QStringLiteral("\\[\\d+\\]\\z"));
    static const QRegularExpression tag(QStringLiteral("\\A\\d{4}\\z"));
    QString name = path.section(QLatin1Char('.'), -1);
    name.remove(place);
    const bool isBareTag = tag.match(name).hasMatch() && trace::tagtable::name(name) == name;
    return isBareTag || xmlNames().contains(name);
}

} // namespace

QStringList namesOf(const QStringList& codes, Language language)
{
    return language == Language::Hex ? hexNames(codes) : xmlNames();
}

bool mayHave(const QString& name, const QStringList& codes, Language language)
{
    if (language == Language::Xml)
        return isXmlName(name);
    return hexNames(codes).contains(name) || isPlaceWithoutName(name, codes);
}

} // namespace emulator::panel::requestfields

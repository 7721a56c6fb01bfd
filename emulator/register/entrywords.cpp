#include "register/entrywords.h"

#include <algorithm>
#include <iterator>

namespace emulator::entrywords {

namespace {

struct Word
{
    const char* field;
    const char* tags;
};

// Those that end with a point are for all that lies below; the first that fits is taken.
constexpr Word documentWords[] = {
    {"serialNumber", "1013"},
    {"registrationNumber", "1037"},
    {"userInn", "1018"},
    {"userName", "1048"},
    {"address", "1009"},
    {"formatVersion", "1209"},
    {"shift", "1038"},
    {"cashier", "1021"},
    {"cashierInn", "1203"},
    {"number", "1040"},
    {"dateTime", "1012"},
    {"fiscalSign", "1077"},
    {"fiscalDrive", "1041"},
    {"receipt", "1042"},
    {"taxSystem", "1055"},
    {"customer", "1008"},
    {"total", "1020"},
    {"payments.cash", "1031"},
    {"payments.electronically", "1081"},
    {"payments.prepaid", "1215"},
    {"payments.credit", "1216"},
    {"payments.other", "1217"},
    {"taxes.1", "1102"},
    {"taxes.2", "1103"},
    {"taxes.3", "1106"},
    {"taxes.4", "1107"},
    {"taxes.5", "1104"},
    {"taxes.6", "1105"},
    {"receipts", "1118"},
    {"sales", "1194.1129.1201"},
    {"returns", "1194.1130.1201"},
    {"unsent", "1097"},
    {"taxSystems", "1062"},
    {"reasons", "1205"},
    {"requisites.", ""},
};

constexpr Word positionWords[] = {
    {"name", "1030"},
    {"price", "1079"},
    {"quantity", "1023"},
    {"sum", "1043"},
    {"tax", "1199"},
    {"paymentMethod", "1214"},
    {"paymentObject", "1212"},
    {"unit", "2108"},
    {"measure", "1197"},
    {"country", "1230"},
    {"declaration", "1231"},
    {"markingCode", "2000"},
    {"markingStatus", "2106"},
    {"assignedStatus", "2110"},
    {"goodsCode.", "1163."},
    {"agent.1171", "1224.1171"},
    {"agent.1222", "1222"},
    {"agent.1225", "1224.1225"},
    {"agent.1226", "1226"},
    {"agent.", "1223."},
    {"industry.", "1260."},
};

// Fields without a tag, with what paper calls them.
constexpr Word extras[] = {
    {"barcode", "ШТРИХКОД"},
    {"cashInDrawer", "НАЛИЧНЫХ В ДЕНЕЖНОМ ЯЩИКЕ"},
    {"change", "СДАЧА"},
    {"discount", "СКИДКА"},
    {"fullPrice", "ЦЕНА БЕЗ СКИДКИ"},
    {"unprinted", "БЕЗ ПЕЧАТИ"},
};

using Side = const char* Word::*;

// The path on the other side; nothing when the word is not for it.
QString translated(const Word& word, const QString& path, Side from, Side to)
{
    const QString begin = QLatin1String(word.*from);
    const QString other = QLatin1String(word.*to);
    const bool isForAll = QLatin1String(word.field).endsWith(QLatin1Char('.'));
    if (path == begin)
        return other;
    return isForAll && path.startsWith(begin) ? other + path.mid(begin.size()) : QString();
}

template <size_t Size>
QString translated(const Word (&words)[Size], const QString& path, Side from, Side to)
{
    for (const Word& word : words) {
        if (QString other = translated(word, path, from, to); !other.isEmpty())
            return other;
    }
    return {};
}

QString translated(const QString& path, Level level, Side from, Side to)
{
    return level == Level::Document ? translated(documentWords, path, from, to)
                                    : translated(positionWords, path, from, to);
}

} // namespace

QString tagsOf(const QString& field, Level level)
{
    return translated(field, level, &Word::field, &Word::tags);
}

QString fieldOf(const QString& tags, Level level)
{
    return translated(tags, level, &Word::tags, &Word::field);
}

QString extraOf(const QString& field)
{
    const Word* const extra = std::find_if(std::begin(extras), std::end(extras),
        [&field](const Word& word) { return QLatin1String(word.field) == field; });
    return extra == std::end(extras) ? field : QString::fromUtf8(extra->tags);
}

QString fieldOfExtra(const QString& name)
{
    const Word* const extra = std::find_if(std::begin(extras), std::end(extras),
        [&name](const Word& word) { return QString::fromUtf8(word.tags) == name; });
    return extra == std::end(extras) ? name : QString::fromUtf8(extra->field);
}

} // namespace emulator::entrywords

#include "xml/sequence.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace emulator::xmlsequence {

namespace {

// Blanks stand between the places. What shares one, with bars between, may come in any order and repeat:
// hosts send such requisites as they were given them.
struct Sequence
{
    const char* structure;
    const char* places;
};

constexpr Sequence sequences[] = {
    {"2", "1021 1203"}, // shift opened
    {"5", "1021 1203"}, // shift closed
    {"11", "1021 1205 1062"}, // registration
    {"200007", "1021 CashSumm MoneyOperationType HeaderText"},
    {"200017", "1023 2000 2003 2102 2108 1163"}, // marking check
    {"3",
        "1059 1031 1081 1215 1216 1217 1021 1054 DoNotPrint 1203|1008|1171|1187|1192|1256|1055 HeaderText Footer "
        "TextAfterDoc"},
    {"1059",
        "1030 1079 1197 1023 1199 1212 1214 2108 2102 1163 2110 2000 ItemDiscounts PriceWithDiscount 1224 1222 "
        "1226 1223 1260 1230 1231"},
    {"ItemDiscounts", "Name Value"}, {"1223", "1005 1016 1026 1044 1073 1074 1075"}, // agent
    {"1224", "1171 1225"}, // supplier
    {"1256", "1227 1228"}, // customer
    {"1260", "1262 1263 1264 1265"}, // industry
};

qsizetype placeOf(const QStringList& places, const QString& name)
{
    const auto place = std::find_if(places.cbegin(), places.cend(), [&name](const QString& names) {
        return names == name
            || (names.contains(QLatin1Char('|')) && names.split(QLatin1Char('|')).contains(name));
    });
    return place == places.cend() ? -1 : place - places.cbegin();
}

XmlVerdict compare(const XmlNode& node, const QStringList& places)
{
    qsizetype reached = -1;
    QString before;
    for (const XmlNode& part : node.children) {
        const qsizetype place = placeOf(places, part.name);
        if (place < 0)
            continue;
        const bool shared = places.at(place).contains(QLatin1Char('|'));
        if (place == reached && !shared)
            return XmlVerdict::badValue(QStringLiteral("pa %1: %2 twice").arg(node.name, part.name));
        if (place < reached)
            return XmlVerdict::badData(
                QStringLiteral("pa %1: %2 before %3").arg(node.name, before, part.name));
        reached = place;
        before = part.name;
    }
    return {};
}

} // namespace

XmlVerdict check(const XmlNode& node)
{
    const auto* const sequence = std::find_if(std::begin(sequences), std::end(sequences),
        [&node](const Sequence& candidate) { return node.name == QLatin1String(candidate.structure); });
    if (sequence != std::end(sequences) && node.type == XmlType::Structure) {
        const QStringList places = QString::fromLatin1(sequence->places).split(QLatin1Char(' '));
        if (const XmlVerdict verdict = compare(node, places); !verdict.isGood())
            return verdict;
    }
    for (const XmlNode& part : node.children) {
        if (const XmlVerdict verdict = check(part); !verdict.isGood())
            return verdict;
    }
    return {};
}

} // namespace emulator::xmlsequence

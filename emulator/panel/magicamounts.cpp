#include "panel/magicamounts.h"

#include "line/faultplan.h"
#include "register/amounts.h"
#include "trace/meaning.h"

#include <algorithm>
#include <utility>

namespace emulator::panel {

namespace {

constexpr int kopecksInRouble = 100;

QString valueOf(const trace::Meaning& request, const QString& field)
{
    const auto found = std::find_if(request.fields.cbegin(), request.fields.cend(),
        [&field](const trace::Meaning::Field& candidate) { return candidate.name == field; });
    return found == request.fields.cend() ? QString() : found->value;
}

// Of the first position with that name; 0 when there is none, or its price is none.
int magicKopecks(const trace::Meaning& request)
{
    static const QString name = QStringLiteral("name");
    static const QString magic = QStringLiteral("ТЕСТ");
    for (const trace::Meaning::Field& field : request.fields) {
        if (!field.name.endsWith(name) || field.value.trimmed() != magic)
            continue;
        const QString price = field.name.chopped(name.size()) + QStringLiteral("price");
        const Money money = parseDecimal(valueOf(request, price).toLatin1(), 2).value_or(0);
        return static_cast<int>(money % kopecksInRouble);
    }
    return 0;
}

Fault faultOf(int kopecks, Language language)
{
    for (const MagicAmounts::Row& row : MagicAmounts::table()) {
        const char* const mode = language == Language::Hex ? row.onHex : row.onXml;
        if (row.kopecks == kopecks)
            return FaultPlan::parseFault(QLatin1String(mode)).value_or(Fault());
    }
    return {};
}

} // namespace

const QList<MagicAmounts::Row>& MagicAmounts::table()
{
    // clang-format off
    static const QList<Row> rows{
        {1, "silence", "silence"},
        {2, "lost", "lost"},
        {3, "late", "late"},
        {4, "slow:5", "slow:5"},
        {5, "busy:5", "busy:5"},
        {6, "cut", "cut"},
        {7, "badcheck", "badcheck"},
        {8, "noise", "noise"},
        {9, "stale", "stale"},
        {10, "paper-out", "paper-out"},
        {11, "paper-ends:3", "paper-ends:3"},
        {12, "restart", "restart"},
        {20, "answer:1", "answer:1.1002"},
        {21, "answer:8", "answer:3.8"},
        {22, "answer:10", "answer:2.22"},
        {23, "answer:86", "answer:2.2005"},
        {24, "answer:101", "answer:4.4004"},
    };
    // clang-format on
    return rows;
}

Fault MagicAmounts::choose(const trace::Meaning& request, Language language)
{
    return language == Language::Hex ? chooseHex(request) : faultOf(magicKopecks(request), language);
}

Fault MagicAmounts::chooseHex(const trace::Meaning& request)
{
    static const QString position = QStringLiteral("30");
    static const QString finishing = QStringLiteral("22");
    static const QString opening = QStringLiteral("20");
    if (request.code == opening)
        m_kopecks = 0;
    if (request.code == position && m_kopecks == 0)
        m_kopecks = magicKopecks(request);
    return request.code == finishing ? faultOf(std::exchange(m_kopecks, 0), Language::Hex) : Fault();
}

} // namespace emulator::panel

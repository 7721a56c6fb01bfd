#include "line/faultplan.h"
#include "line/faultrules.h"

#include <gtest/gtest.h>
#include <QSet>

#include <functional>

using emulator::FaultRule;

namespace {

/// Sales of one position each, by HEX: command 30 with a name, then 22.
const emulator::FaultRequest milkItem{"30", "AddPaymentObject", {{"name", "Молоко"}, {"price", "10.00"}}};
const emulator::FaultRequest breadItem{"30", "AddPaymentObject", {{"item[1].name", "Хлеб"}}};
const emulator::FaultRequest closing{"22", "FinishDocument", {}};
const QList<emulator::FaultRequest> day{
    milkItem, closing, breadItem, closing, milkItem, closing, breadItem, closing};

FaultRule ruleOf(const char* mode)
{
    FaultRule made;
    made.mode = mode;
    made.fault = emulator::FaultPlan::parseFault(mode).value_or(emulator::Fault());
    return made;
}

FaultRule with(FaultRule rule, const std::function<void(FaultRule&)>& change)
{
    change(rule);
    return rule;
}

FaultRule lostAt(const char* field, const char* value)
{
    FaultRule rule = ruleOf("lost");
    rule.field = {field, value};
    return rule;
}

/// The numbers of the exchanges of the day that are hit.
QString hitsOf(const QList<FaultRule>& rules, emulator::Language language = emulator::Language::Hex)
{
    emulator::FaultRules all;
    all.set(rules);
    QString hits;
    for (const emulator::FaultRequest& request : day) {
        const FaultRule* const hit = all.hit(request, language);
        hits += hit == nullptr ? QString(".") : hit->mode.left(1);
    }
    return hits;
}

} // namespace

TEST(FaultRules, ChooseTheirExchanges)
{
    const FaultRule lost = ruleOf("lost");
    const std::pair<const char*, QList<FaultRule>> rows[] = {
        {"llllllll", {lost}},
        {"l.......", {with(lost, [](auto& r) { r.nth = 1; })}},
        {".....l..", {with(lost, [](auto& r) { r.nth = 3, r.command = "22"; })}},
        {"...l...l", {with(lost, [](auto& r) { r.each = 2, r.command = "FinishDocument"; })}},
        {"llll....", {with(lost, [](auto& r) { r.lifetime = 4; })}},
        {"l...l...", {lostAt("name", "Молоко")}},
        {"..l...l.", {lostAt("name", "Хлеб")}},
        {"........", {lostAt("ame", "Хлеб")}},
        {"........", {with(lost, [](auto& r) { r.probability = 0; })}},
        // The first one that hits; the second has had its turn then.
        {"lsss....",
            {with(lost, [](auto& r) { r.nth = 1; }),
                with(ruleOf("silence"), [](auto& r) { r.lifetime = 4; })}},
        {"........", {ruleOf("answer:4.4004")}},
    };
    for (const auto& [hits, rules] : rows)
        EXPECT_EQ(hitsOf(rules), hits);
    EXPECT_EQ(hitsOf({ruleOf("answer:4.4004")}, emulator::Language::Xml), "aaaaaaaa");
}

TEST(FaultRules, ChanceIsTheSameEachTime)
{
    const auto lucky = [](quint64 seed) {
        return hitsOf({with(ruleOf("lost"), [seed](auto& r) { r.probability = 0.5, r.seed = seed; })});
    };
    QSet<QString> different;
    for (quint64 seed = 0; seed < 20; ++seed) {
        EXPECT_EQ(lucky(seed), lucky(seed));
        different.insert(lucky(seed));
    }
    EXPECT_GT(different.size(), 10);
}

TEST(FaultRules, CountWhatTheyHit)
{
    emulator::FaultRules rules;
    rules.set({with(ruleOf("lost"), [](auto& r) { r.nth = 2, r.command = "22"; })});
    for (const emulator::FaultRequest& request : day) {
        EXPECT_EQ(rules.uses().constFirst().isOver(), rules.uses().constFirst().hits == 1);
        rules.hit(request, emulator::Language::Hex);
    }
    EXPECT_EQ(rules.uses().constFirst().fitting, 2);
}

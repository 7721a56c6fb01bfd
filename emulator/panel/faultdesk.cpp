#include "panel/faultdesk.h"

#include "panel/commandnames.h"
#include "register/register.h"
#include "trace/meaning.h"

#include <utility>

namespace emulator::panel {

namespace {

Fault faultOf(PowerCut cut)
{
    const QString& mode
        = cut == PowerCut::AfterStoring ? FaultPlan::powerOffAfter : FaultPlan::powerOffBefore;
    return FaultPlan::parseFault(mode).value_or(Fault());
}

} // namespace

Fault FaultDesk::choose(const QByteArray& request, Language language, int exchange)
{
    // The rules count what they may hit, which this is not.
    if (m_cut)
        return faultOf(*std::exchange(m_cut, std::nullopt));
    const Fault chosen = chooseByRules(request, language);
    return chosen.mode == FaultMode::None ? chooseByPlan(exchange, language) : chosen;
}

FaultRequest FaultDesk::lookedAt(const trace::Meaning& request, Language language) const
{
    FaultRequest asked{request.code, request.name, {}};
    for (qsizetype index = 0; index < request.fields.size(); ++index) {
        const trace::Meaning::Field& field = request.fields.at(index);
        const QString name = field.name.isEmpty() ? QStringLiteral("field%1").arg(index + 1) : field.name;
        asked.fields.append({name, field.value});
    }
    static const QString finishing = QStringLiteral("22");
    // What is finished over HEX may also be a text, or a receipt that waits for paper alone.
    const bool isOther = language == Language::Hex && request.code == finishing
        && (m_device == nullptr || !m_device->document().isReceiptInWork());
    asked.isStoring = commandnames::mayStore(request.code, language) && !isOther;
    return asked;
}

Fault FaultDesk::chooseByRules(const QByteArray& request, Language language)
{
    if (m_rules.isEmpty() && !m_isMagic)
        return {};
    const trace::Meaning meaning = trace::Decoder().decode({0, 1, trace::Direction::ToRegister, request});
    const FaultRule* const rule = m_rules.hit(lookedAt(meaning, language), language);
    const Fault magic = m_isMagic ? m_magic.choose(meaning, language) : Fault();
    return rule != nullptr ? rule->fault : magic;
}

Fault FaultDesk::chooseByPlan(int exchange, Language language)
{
    const FaultPlan::Entry entry = m_plan.entryAt(exchange);
    for (Planned& planned : m_planned) {
        if (planned.entry.isAt(entry) && FaultPlan::fits(entry.fault, language))
            ++planned.hits;
    }
    return entry.fault;
}

void FaultDesk::setPlan(const FaultPlan& plan)
{
    m_plan = plan;
    m_planned.clear();
    for (const FaultPlan::Entry& entry : plan.entries())
        m_planned.append({entry});
}

void FaultDesk::clear()
{
    m_rules.set({});
    setPlan({});
}

} // namespace emulator::panel

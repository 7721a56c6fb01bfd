#include "panel/faultdesk.h"

#include "line/faultplan.h"
#include "trace/meaning.h"

#include <utility>

namespace emulator::panel {

namespace {

FaultRequest lookedAt(const trace::Meaning& request)
{
    FaultRequest asked{request.code, request.name, {}};
    for (qsizetype index = 0; index < request.fields.size(); ++index) {
        const trace::Meaning::Field& field = request.fields.at(index);
        const QString name = field.name.isEmpty() ? QStringLiteral("field%1").arg(index + 1) : field.name;
        asked.fields.append({name, field.value});
    }
    return asked;
}

Fault faultOf(PowerCut cut)
{
    const QString& mode
        = cut == PowerCut::AfterStoring ? FaultPlan::powerOffAfter : FaultPlan::powerOffBefore;
    return FaultPlan::parseFault(mode).value_or(Fault());
}

} // namespace

Fault FaultDesk::choose(const QByteArray& request, Language language)
{
    // The rules count what they may hit, which this is not.
    if (m_cut)
        return faultOf(*std::exchange(m_cut, std::nullopt));
    if (m_rules.isEmpty() && !m_isMagic)
        return {};
    const trace::Meaning meaning = trace::Decoder().decode({0, 1, trace::Direction::ToRegister, request});
    const FaultRule* const rule = m_rules.hit(lookedAt(meaning), language);
    const Fault magic = m_isMagic ? m_magic.choose(meaning, language) : Fault();
    return rule != nullptr ? rule->fault : magic;
}

} // namespace emulator::panel

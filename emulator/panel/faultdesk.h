#pragma once

#include "line/faultplan.h"
#include "line/faultrules.h"
#include "line/faultsource.h"
#include "panel/magicamounts.h"

#include <optional>

namespace emulator {
class Register;
}

namespace trace {
struct Meaning;
}

namespace emulator::panel {

/// When the power goes.
enum class PowerCut { BeforeStoring, AfterStoring };

/// All that chooses faults while the register runs: a cut of the power, rules, magic amounts, the plan of the
/// command line; the first of them that has one.
class FaultDesk : public FaultSource
{
public:
    /// A fault of the plan, and how often it was met.
    struct Planned
    {
        FaultPlan::Entry entry;
        int hits = 0;
    };

    /// The register whose documents they are about.
    void attend(const Register& device) { m_device = &device; }
    Fault choose(const QByteArray& request, Language language, int exchange) override;

    void setRules(const QList<FaultRule>& rules) { m_rules.set(rules); }
    void addRules(const QList<FaultRule>& rules) { m_rules.add(rules); }
    const FaultRules& rules() const { return m_rules; }
    void setPlan(const FaultPlan& plan);
    const QList<Planned>& planned() const { return m_planned; }
    /// Neither rules nor plan.
    void clear();
    /// With the next request; no value for no more.
    void setPowerCut(std::optional<PowerCut> cut) { m_cut = cut; }
    std::optional<PowerCut> powerCut() const { return m_cut; }
    void setMagic(bool isMagic) { m_isMagic = isMagic; }

private:
    FaultRequest lookedAt(const trace::Meaning& request, Language language) const;
    Fault chooseByRules(const QByteArray& request, Language language);
    Fault chooseByPlan(int exchange, Language language);

    const Register* m_device = nullptr;
    FaultRules m_rules;
    FaultPlan m_plan;
    QList<Planned> m_planned;
    std::optional<PowerCut> m_cut;
    MagicAmounts m_magic;
    bool m_isMagic = false;
};

} // namespace emulator::panel

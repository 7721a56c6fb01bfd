#pragma once

#include "line/faultrules.h"
#include "line/faultsource.h"
#include "panel/magicamounts.h"

#include <optional>

namespace emulator::panel {

/// When the power goes.
enum class PowerCut { BeforeStoring, AfterStoring };

/// All that chooses faults while the register runs: a cut of the power, rules, magic amounts; the first of
/// them that has one.
class FaultDesk : public FaultSource
{
public:
    Fault choose(const QByteArray& request, Language language) override;

    void setRules(const QList<FaultRule>& rules) { m_rules.set(rules); }
    const FaultRules& rules() const { return m_rules; }
    /// With the next request; no value for no more.
    void setPowerCut(std::optional<PowerCut> cut) { m_cut = cut; }
    std::optional<PowerCut> powerCut() const { return m_cut; }
    void setMagic(bool isMagic) { m_isMagic = isMagic; }

private:
    FaultRules m_rules;
    std::optional<PowerCut> m_cut;
    MagicAmounts m_magic;
    bool m_isMagic = false;
};

} // namespace emulator::panel

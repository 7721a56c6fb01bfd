#pragma once

#include "line/faultrequest.h"
#include "line/faultrule.h"
#include "line/language.h"

#include <QList>

#include <random>

namespace emulator {

/// Chooses the fault of each exchange by rules. The same rules and exchanges give the same faults.
class FaultRules
{
public:
    /// A rule and what became of it.
    struct Use
    {
        FaultRule rule;
        /// Exchanges that it was in force for, and those of them that fitted.
        int exchanges = 0;
        int fitting = 0;
        int hits = 0;
        std::mt19937_64 chance;

        /// It will hit no more.
        bool isOver() const;
    };

    void set(const QList<FaultRule>& rules);
    /// Those that there are go on counting.
    void add(const QList<FaultRule>& rules);
    bool isEmpty() const { return m_uses.isEmpty(); }
    const QList<Use>& uses() const { return m_uses; }
    /// Of the first rule that hits the exchange; null for none.
    const FaultRule* hit(const FaultRequest& request, Language language);

private:
    QList<Use> m_uses;
};

} // namespace emulator

#pragma once

#include "line/fault.h"

#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace emulator {

/// Tells for each exchange which fault it suffers. Exchanges are counted from 1.
class FaultPlan
{
public:
    /// Reads "mode[:n]@exchange", several with commas between them; "@5+" means the fifth and all that
    /// follow.
    static std::optional<FaultPlan> parse(const QString& text, QString* error);
    static QString modeName(FaultMode mode);
    static const QList<FaultMode>& allModes();

    void add(int exchange, const Fault& fault) { m_faults[exchange] = fault; }
    void addFrom(int exchange, const Fault& fault) { m_lasting[exchange] = fault; }
    Fault at(int exchange) const;

private:
    QMap<int, Fault> m_faults;
    QMap<int, Fault> m_lasting;
};

} // namespace emulator

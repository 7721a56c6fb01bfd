#pragma once

#include "line/fault.h"
#include "line/language.h"

#include <QList>
#include <QString>

#include <optional>

namespace trace {
struct Meaning;
}

namespace emulator::panel {

/// Faults for hosts that cannot ask for them: the kopecks of the price of a position named "ТЕСТ" choose one,
/// which the exchange suffers that would store its receipt.
class MagicAmounts
{
public:
    struct Row
    {
        int kopecks;
        /// As a rule has it, over HEX and over XML.
        const char* onHex;
        const char* onXml;
    };

    static const QList<Row>& table();

    Fault choose(const trace::Meaning& request, Language language);

private:
    Fault chooseHex(const trace::Meaning& request);

    /// Of the receipt that is open over HEX.
    int m_kopecks = 0;
};

} // namespace emulator::panel

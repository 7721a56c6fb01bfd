#include "register/names.h"

#include "register/parameterstore.h"
#include "register/parametertable.h"

#include <QMap>

namespace emulator::names {

QString taxRate(const ParameterStore& parameters, int tax)
{
    // Rates that came later have no row among the parameters; a position without a rate is one without VAT.
    static const QMap<int, QString> laterRates{{7, QStringLiteral("НДС 5%")}, {8, QStringLiteral("НДС 7%")},
        {9, QStringLiteral("НДС 5/105")}, {10, QStringLiteral("НДС 7/107")}, {11, QStringLiteral("НДС 22%")},
        {12, QStringLiteral("НДС 22/122")}};
    constexpr int rowWithoutTax = 5;
    if (laterRates.contains(tax))
        return laterRates.value(tax);
    return parameters.text(parameter::taxNames, tax == 0 ? rowWithoutTax : tax - 1);
}

QString paymentKind(const ParameterStore& parameters, size_t kind)
{
    return parameters.text(parameter::paymentNames, static_cast<int>(kind));
}

QString taxSystems(int mask)
{
    static const QMap<int, QString> systems{{1, QStringLiteral("ОСН")}, {2, QStringLiteral("УСН доход")},
        {4, QStringLiteral("УСН доход - расход")}, {8, QStringLiteral("ЕНВД")}, {16, QStringLiteral("ЕСХН")},
        {32, QStringLiteral("Патент")}};
    QStringList found;
    for (auto system = systems.cbegin(); system != systems.cend(); ++system) {
        if ((mask & system.key()) != 0)
            found.append(system.value());
    }
    return found.join(QStringLiteral(", "));
}

} // namespace emulator::names

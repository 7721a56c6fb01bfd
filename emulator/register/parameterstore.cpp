#include "register/parameterstore.h"

#include "register/parametertable.h"
#include "register/shortdate.h"

#include <QStringList>

#include <algorithm>

namespace emulator {

namespace {

bool isWithinLimits(const ParameterEntry& entry, const QString& value)
{
    if (entry.kind == ParameterEntry::Kind::Number) {
        bool ok = false;
        const int number = value.toInt(&ok);
        return ok && number >= entry.smallest && number <= entry.greatest;
    }
    if (value.size() < entry.smallest || (entry.greatest >= 0 && value.size() > entry.greatest))
        return false;
    return entry.kind != ParameterEntry::Kind::Date || shortDate(value).isValid();
}

// A device has more parameters than anybody has told of.
bool isFurther(int number, int row)
{
    constexpr int highest = 65'535;
    const QList<ParameterEntry>& table = parameterTable();
    return number >= 0 && number <= highest && row >= 0 && row <= highest
        && std::none_of(table.cbegin(), table.cend(),
            [number](const ParameterEntry& entry) { return entry.number == number; });
}

} // namespace

ParameterStore::ParameterStore()
{
    for (const ParameterEntry& entry : parameterTable())
        m_values[{entry.number, entry.row}] = QString::fromUtf16(entry.initial);
}

void ParameterStore::reset(int number)
{
    for (const ParameterEntry& entry : parameterTable()) {
        if (entry.number == number)
            set(number, entry.row, QString::fromUtf16(entry.initial));
    }
}

std::optional<QString> ParameterStore::value(int number, int row) const
{
    const auto found = m_values.constFind({number, row});
    return found == m_values.cend() ? std::nullopt : std::optional<QString>(*found);
}

QStringList ParameterStore::rows(int number) const
{
    QStringList result;
    for (auto row = m_values.lowerBound({number, 0}); row != m_values.cend() && row.key().first == number;
         ++row)
        result.append(row.value());
    return result;
}

Refusal ParameterStore::write(int number, int row, const QString& value)
{
    if (isFurther(number, row)) {
        set(number, row, value);
        return Refusal::None;
    }
    const QList<ParameterEntry>& table = parameterTable();
    const auto entry = std::find_if(table.cbegin(), table.cend(),
        [=](const ParameterEntry& candidate) { return candidate.number == number && candidate.row == row; });
    if (entry == table.cend())
        return Refusal::BadValue;
    if (entry->readOnly)
        return Refusal::WrongState;
    if (!isWithinLimits(*entry, value))
        return Refusal::BadValue;
    set(number, row, value);
    return Refusal::None;
}

} // namespace emulator

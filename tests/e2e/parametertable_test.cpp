// The driver's table of parameters against the software register's, which were written apart from each other.

#include <emulator/register/parameterstore.h>
#include <emulator/register/parametertable.h>

#include <spfhex/paramtable.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using emulator::Refusal;
using spfhex::utils::DataType;
using spfhex::utils::TableParameter;

namespace {

QString digits(int length)
{
    return QString(length, QLatin1Char('1'));
}

// What the table says of a row, tried out on the register.
void expectLimits(int number, int row, const TableParameter& parameter)
{
    SCOPED_TRACE(testing::Message() << "parameter " << number << '.' << row);
    emulator::ParameterStore store;
    ASSERT_TRUE(store.value(number, row).has_value());
    if (parameter.isReadOnly()) {
        EXPECT_EQ(store.write(number, row, store.text(number, row)), Refusal::WrongState);
        return;
    }
    const bool isNumber = parameter.getType() == DataType::Number;
    const auto valueOf = [isNumber](int limit) { return isNumber ? QString::number(limit) : digits(limit); };
    const auto write = [&](const QString& value) { return store.write(number, row, value); };
    // The device takes the driver's default, which lies below the bound that the driver's table tells.
    if (number == 11) {
        EXPECT_EQ(write(QStringLiteral("0")), Refusal::None);
    } else if (parameter.getMin() > 0) {
        EXPECT_EQ(write(valueOf(parameter.getMin() - 1)), Refusal::BadValue);
    }
    if (parameter.getMax() >= 0 && parameter.getMax() < std::numeric_limits<int>::max()) {
        EXPECT_EQ(write(valueOf(parameter.getMax() + 1)), Refusal::BadValue);
    }
    // A date has to be one, and an address has its own form; the limits of the others are values to take.
    const bool hasForm = parameter.getType() == DataType::Date || (!isNumber && parameter.getMin() > 4);
    if (!hasForm) {
        EXPECT_EQ(write(valueOf(parameter.getMin())), Refusal::None);
        EXPECT_EQ(write(valueOf(qMax(parameter.getMin(), parameter.getMax()))), Refusal::None);
    }
}

} // namespace

TEST(ParameterTable, DriverAndRegisterAgreeOnEveryRow)
{
    QList<std::pair<int, int>> known;
    const auto table = spfhex::utils::getParamTableStructure();
    for (auto entry = table.cbegin(); entry != table.cend(); ++entry) {
        if (entry->getType() != DataType::Array) {
            known.append({entry.key(), 0});
            expectLimits(entry.key(), 0, *entry);
            continue;
        }
        const auto rows = entry->getSubParams();
        for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
            known.append({entry.key(), row.key()});
            expectLimits(entry.key(), row.key(), *row);
        }
    }
    QList<std::pair<int, int>> registers;
    for (const emulator::ParameterEntry& entry : emulator::parameterTable())
        registers.append({entry.number, entry.row});
    std::sort(registers.begin(), registers.end());
    EXPECT_EQ(known, registers);
    EXPECT_EQ(known.size(), 76);
}

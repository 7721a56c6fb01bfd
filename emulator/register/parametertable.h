#pragma once

#include <QList>
#include <QString>

namespace emulator {

/// One parameter, or one row of an array parameter, as it leaves the factory.
struct ParameterEntry
{
    enum class Kind { Number, Text, Date, Percent };

    int number;
    int row;
    Kind kind;
    /// For a number the smallest and greatest value, for a text the shortest and longest length; a greatest
    /// length of -1 means any.
    int smallest;
    int greatest;
    bool readOnly;
    const char16_t* initial;
};

/// Numbers that the register itself looks at.
namespace parameter {
constexpr int drawerOpens = 4;
constexpr int companyLogo = 5;
constexpr int cashControl = 6;
constexpr int automaticCollection = 8;
constexpr int headerLines = 20;
constexpr int tailLines = 21;
constexpr int paymentNames = 22;
constexpr int taxNames = 23;
constexpr int lineAboveTaxes = 25;
constexpr int automaticPayment = 30;
constexpr int password = 31;
constexpr int serialNumber = 50;
} // namespace parameter

const QList<ParameterEntry>& parameterTable();

} // namespace emulator

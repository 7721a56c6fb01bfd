#pragma once

#include "register/refusal.h"

#include <QMap>
#include <QString>

#include <optional>
#include <utility>

namespace emulator {

/// The register's numbered settings with the limits of each.
class ParameterStore
{
public:
    ParameterStore();

    /// No value for a parameter or row that does not exist and was not written either.
    std::optional<QString> value(int number, int row) const;
    QString text(int number, int row = 0) const { return value(number, row).value_or(QString()); }
    bool isOn(int number) const { return text(number).toInt() == 1; }
    QStringList rows(int number) const;

    /// What a host may do: a read-only parameter refuses with the wrong state, a value outside the limits as
    /// a bad value. Numbers that the table does not have take anything and keep it.
    Refusal write(int number, int row, const QString& value);
    /// What the register itself does.
    void set(int number, int row, const QString& value) { m_values[{number, row}] = value; }
    /// All there are, by number and row.
    const QMap<std::pair<int, int>, QString>& values() const { return m_values; }
    /// All rows are again as they left the factory.
    void reset(int number);

private:
    QMap<std::pair<int, int>, QString> m_values;
};

} // namespace emulator

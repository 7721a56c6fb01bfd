#pragma once

#include <QMap>

namespace spfhex::utils {

/// Kinds of parameter values, by the device's numbers.
enum class DataType { Date = 1, Percent = 3, Number = 5, String = 6, Array = 8 };

/// One row of the table of device parameters. The limits and the read-only mark are for the host's use; the
/// driver compares nothing with them.
class TableParameter
{
public:
    TableParameter(DataType type, const char* description, int min, int max,
        const QMap<int, TableParameter>& subParams, bool readOnly);
    // For QMap; no parameter is made this way.
    TableParameter() = default;

    DataType getType() const { return m_type; }
    /// The Russian caption in UTF-8, not owned; null for most rows of an array.
    const char* getDescription() const { return m_description; }
    /// Least value of a number, least length of a text or date.
    int getMin() const { return m_min; }
    /// Greatest value of a number, greatest length of a text or date; -1 for no limit.
    int getMax() const { return m_max; }
    /// Rows of an array by their numbers; empty for a scalar.
    QMap<int, TableParameter> getSubParams() const { return m_subParams; }
    bool isReadOnly() const { return m_readOnly; }

private:
    DataType m_type = DataType::Number;
    const char* m_description = nullptr;
    int m_min = 0;
    int m_max = 0;
    QMap<int, TableParameter> m_subParams;
    bool m_readOnly = false;
};

} // namespace spfhex::utils

#pragma once

#include <QString>

/// One parameter of the device: where it stands and the value to write, as text. HEX goes by field and row
/// and has no tables. XML goes by the value alone, which has the form "group.subgroup.name.value", and leaves
/// the numbers aside.
class FrParameter
{
public:
    FrParameter() = default;
    FrParameter(unsigned short table, unsigned short row, unsigned short field, const QString& value)
        : m_table(table)
        , m_row(row)
        , m_field(field)
        , m_value(value)
    {
    }

    unsigned short getTableNum() const { return m_table; }
    unsigned short getRowNum() const { return m_row; }
    unsigned short getFieldNum() const { return m_field; }
    QString getValue() const { return m_value; }

private:
    unsigned short m_table = 0;
    unsigned short m_row = 0;
    unsigned short m_field = 0;
    QString m_value;
};

#pragma once

#include <QString>

#include <optional>

namespace hw::fr {

/// A setting of the register as data: what it is called, what it takes, what it is set to.
struct RegisterParameter
{
    enum class Type { Text, Number, Percent, Date };

    /// The name under which it is read and written: "20.0", number and row, over HEX;
    /// "OFD.OFD.OFD_Host", section, subsection and parameter, over XML.
    QString name;
    /// In Russian, as the device's papers have it. A row of an array without a caption of its own carries the
    /// array's; empty where the driver knows none.
    QString caption;
    Type type = Type::Text;
    /// The least and the greatest number, or the least and the greatest length in characters. Neither is set
    /// where the device tells no bound. Nothing is compared with them on writing: the device decides.
    std::optional<int> least;
    std::optional<int> greatest;
    bool isReadOnly = false;
    /// As the device told it, without white space around it; empty when it was not read or the device
    /// refused.
    QString value;
};

} // namespace hw::fr

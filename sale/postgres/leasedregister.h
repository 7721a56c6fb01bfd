#pragma once

#include <QString>

namespace sale {

/// Who owns a register, for as long as nobody has taken it over.
struct LeasedRegister
{
    QString registerName;
    QString owner;
    /// Grows with each owner.
    qint64 epoch = 0;
};

} // namespace sale

#pragma once

#include "journalerror.h"

namespace frserver {

/// Another service may have the register by now: nothing more is sent to it, whatever a driver would do.
class LeaseOver : public sale::JournalError
{
public:
    LeaseOver()
        : JournalError(QStringLiteral("the register's lease is over"))
    {
    }
};

} // namespace frserver

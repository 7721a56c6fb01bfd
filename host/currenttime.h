#pragma once

#include "frhost_export.h"

#include <QDateTime>

/// The host's clock. Take it through MockFactory<CurrentTime>, so that a test can set the time.
class FRHOST_EXPORT CurrentTime
{
public:
    CurrentTime();
    virtual ~CurrentTime();

    /// The current local time.
    virtual QDateTime getCurrentDateTime() const;
};

#pragma once

#include "journalerror.h"

#include <QString>

#include <functional>

namespace sale {

/// What the journal says when that fails; empty when it does not.
inline QString textOf(const std::function<void()>& work)
{
    try {
        work();
        return {};
    } catch (const JournalError& error) {
        return QString::fromUtf8(error.what());
    }
}

} // namespace sale

#pragma once

#include "verdict.h"

#include <QString>

namespace sale {

/// A sale of an earlier run whose outcome was found out.
struct SettledSale
{
    QString id;
    Verdict verdict;
};

} // namespace sale

#pragma once

#include "register/amounts.h"

#include <QList>
#include <QMap>

namespace emulator {

struct Item;

/// The VAT that prices contain.
namespace taxes {

/// By the code of the rate: the tax, or the whole sum of what is sold at 0 % and without VAT. Positions for
/// which the host named no rate are those without.
QMap<int, Money> sums(const QList<Item>& items);

} // namespace taxes

} // namespace emulator

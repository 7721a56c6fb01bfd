#pragma once

#include "tableparameter.h"

#include <QMap>

namespace spfhex::utils {

/// The device's parameters by number: 49 of them, 7 arrays with 34 rows. A number that is missing here can be
/// written all the same.
QMap<int, TableParameter> getParamTableStructure();

} // namespace spfhex::utils

#pragma once

#include <QString>

namespace spf::utils {

/// Name of a model by the code that the device gives.
QString modelNameByModelCode(int code);

} // namespace spf::utils

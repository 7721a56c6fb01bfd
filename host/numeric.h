#pragma once

#include "frhost_export.h"

#include <QByteArray>

namespace numeric {

/// Longitudinal check value: the exclusive or of all bytes, 0 for none.
FRHOST_EXPORT int calcLRC(const QByteArray& data);

} // namespace numeric

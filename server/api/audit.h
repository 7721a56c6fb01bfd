#pragma once

#include "http/request.h"

namespace frserver {

/// A line of the log for what a person has changed, with who it was.
void audit(const http::Request& request, const QString& what);

} // namespace frserver

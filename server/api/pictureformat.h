#pragma once

#include "http/request.h"

namespace frserver {

/// "svg" or "png", whichever the client likes better; SVG for one that does not say. Throws http::Problem
/// (406) for one that takes neither.
QString pictureFormat(const http::Request& request);
QByteArray pictureType(const QString& format);

} // namespace frserver

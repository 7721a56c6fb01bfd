#pragma once

#include "api/pool.h"

#include <QJsonObject>

#include <optional>

namespace frserver {

class Api;

/// A pool with its registers, as they are now, and its queue.
QJsonObject poolView(const Api& api, const Pool& pool);
/// What the register says of its place in that pool; nothing when it does not serve it.
std::optional<QJsonObject> memberView(const QJsonObject& registerView, const QString& pool);

} // namespace frserver

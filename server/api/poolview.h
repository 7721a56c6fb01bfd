#pragma once

#include "api/pool.h"

#include <QJsonObject>

namespace frserver {

class Api;

/// A pool with its registers, as they are now, and its queue.
QJsonObject poolView(const Api& api, const Pool& pool);
/// Of a register: each pool that it serves, and why it takes nothing from it ("absent").
QJsonArray poolsOfRegister(const Api& api, const QString& registerName);

} // namespace frserver

#pragma once

#include <QJsonObject>

namespace frserver {

/// What a register tells without what grows by itself, for whoever reads it, too.
QJsonObject lastingView(QJsonObject view);

} // namespace frserver

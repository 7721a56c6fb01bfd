#pragma once

#include "receipterror.h"

#include <QJsonObject>
#include <QList>
#include <QStringList>

namespace frserver {

/// "openShift", "zReport" ...: what is posted besides receipts.
const QStringList& plainTypes();
/// What is wrong with the JSON of one of them.
QList<receipt::ReceiptError> plainErrors(const QJsonObject& json);

} // namespace frserver

#pragma once

#include "plaindocument.h"
#include "receipterror.h"

#include <QJsonObject>
#include <QList>

namespace frserver {

/// What is wrong with the JSON of a document that is no receipt, all of it, and as a client may post it.
QList<receipt::ReceiptError> plainErrors(sale::PlainDocument::Kind kind, const QJsonObject& json);

} // namespace frserver

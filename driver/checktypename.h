#pragma once

#include "checktype.h"

#include <QString>

/// The Russian name of a document type in log lines and printouts: "продажа", "возврат продажи" and so on.
QString checkTypeName(hw::fr::CheckType type);

/// The same as it follows "Открытие чека": "продажи", "возврата продажи". A copy of a document has no such
/// form.
QString checkTypeNameGenitive(hw::fr::CheckType type);

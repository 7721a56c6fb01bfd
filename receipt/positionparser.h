#pragma once

#include "frposition.h"

#include <QList>

namespace receipt {

class JsonFields;

/// Reads a position as it is to be issued. One whose discount does not divide into whole kopecks per unit is
/// refused, or becomes two when that is allowed here or in the position itself.
QList<FrPosition> positionsFromJson(JsonFields& fields, bool isSplitAllowed);
/// Reads agentInfo, supplierInfo, industryInfo, countryCode and customsDeclaration into the position.
void readPositionRequisites(JsonFields& fields, FrPosition& position);

} // namespace receipt

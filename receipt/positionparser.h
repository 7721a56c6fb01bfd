#pragma once

#include "frposition.h"

namespace receipt {

class JsonFields;
struct LineSum;

/// Reads a position; its sums in whole kopecks go into sum.
FrPosition positionFromJson(JsonFields& fields, LineSum& sum);
/// Reads agentInfo, supplierInfo, industryInfo, countryCode and customsDeclaration into the position.
void readPositionRequisites(JsonFields& fields, FrPosition& position);

} // namespace receipt

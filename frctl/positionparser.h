#pragma once

#include "frposition.h"

namespace frctl {

class JsonFields;
struct LineSum;

/// Reads a position; its sums in whole kopecks go into sum.
FrPosition positionFromJson(JsonFields& fields, LineSum& sum);
/// Reads agentInfo, supplierInfo, industryInfo, countryCode and customsDeclaration into the position.
void readPositionRequisites(JsonFields& fields, FrPosition& position);
/// A marking code as it was scanned, out of the plain text or out of base64.
QString markFromText(const QString& text);

} // namespace frctl

#pragma once

class QJsonValue;
class QString;

namespace frctl {

/// A value of JSON for people; a hyphen for none.
QString shownValue(const QJsonValue& value);

} // namespace frctl

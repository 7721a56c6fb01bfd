#pragma once

class QString;

namespace sale {

/// What is to be done about a file that this user cannot make, read or write: what keeps him from it is
/// looked at.
QString accessAdvice(const QString& fileName);

} // namespace sale

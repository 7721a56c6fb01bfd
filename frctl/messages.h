#pragma once

#include <QString>

namespace frctl {

/// Says it on standard error.
void complain(const QString& text);
/// A message that nobody could take; then the status must tell that there was something.
bool isMessageLost();

} // namespace frctl

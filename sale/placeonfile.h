#pragma once

#include <QString>

#include <optional>

namespace sale {

/// Whether there is such a file or folder: nothing when there is none, 0 when there is, and an errno when
/// nobody can say, since a folder cannot be looked into or a link leads to a disk that is not mounted.
std::optional<int> lookAt(const QString& name);

} // namespace sale

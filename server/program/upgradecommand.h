#pragma once

#include <QString>

namespace frserver {

/// Has the service that serves from the journal leave its place to the program in its file, once the
/// documents under way are done, and waits until that is ready. Throws std::runtime_error when it does not
/// come to that.
void runUpgrade(const QString& journal);

} // namespace frserver

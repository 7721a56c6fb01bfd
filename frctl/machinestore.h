#pragma once

#include <QString>

namespace frctl {

/// The database in which the service of this machine keeps its journal ([store] of its configuration); empty
/// without one. Throws JournalError when nobody can say: another journal in its stead would sell what that
/// one knows as sold.
QString machineStore(const QString& configuration = QStringLiteral("/etc/frspf/frserver.ini"));

} // namespace frctl

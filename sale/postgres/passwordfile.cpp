#include "postgres/passwordfile.h"

#include <QDir>
#include <QFileInfo>

namespace sale {

QString passwordFile(const PostgresPlace& place, const QString& machine)
{
    const QString name = QStringLiteral("/.pgpass");
    const bool isNamed = !place.password.isEmpty() || place.parameters.contains(QStringLiteral("passfile"))
        || qEnvironmentVariableIsSet("PGPASSFILE") || qEnvironmentVariableIsSet("PGPASSWORD");
    if (isNamed || QFileInfo(QDir::homePath() + name).isReadable())
        return {};
    return QFileInfo(machine + name).isReadable() ? machine + name : QString();
}

} // namespace sale

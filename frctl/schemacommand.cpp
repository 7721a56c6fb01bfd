#include "schemacommand.h"

#include "frctltr.h"
#include "options.h"
#include "schemas.h"

namespace frctl {

Task prepareSchema(const Options& options)
{
    const QString name = options.arguments.constFirst();
    if (!schemaNames().contains(name))
        throw UsageError(tr("schema: \"%1\" is no schema; there are %2")
                             .arg(name, schemaNames().join(QStringLiteral(", "))));
    return alone([name] { return plainText(QString::fromUtf8(schemaText(name)).trimmed()); });
}

} // namespace frctl

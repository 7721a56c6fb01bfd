#include "schemacommand.h"

#include "frctltr.h"
#include "options.h"
#include "schemas.h"

namespace frctl {

namespace {

Output printedSchema(const QString& name)
{
    Output output;
    output.lines = {QString::fromUtf8(schemaText(name)).trimmed()};
    output.areLinesAll = true;
    return output;
}

} // namespace

Task prepareSchema(const Options& options)
{
    const QString name = options.arguments.constFirst();
    if (!schemaNames().contains(name))
        throw UsageError(tr("schema: \"%1\" is no schema; there are %2")
                             .arg(name, schemaNames().join(QStringLiteral(", "))));
    Task task;
    task.alone = [name] { return printedSchema(name); };
    return task;
}

} // namespace frctl

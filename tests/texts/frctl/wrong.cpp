#include "frctltr.h"

namespace frctl {

QStringList wrong(const QString& name)
{
    // "in a comment" is no text.
    return {QStringLiteral("for people alone"), tr("new to the file"), tr("not translated"),
        tr("has %1").arg(name), tr("in order"), QStringLiteral("untold reason"), // untranslated: told here
        QStringLiteral("frctl --json help")};
}

} // namespace frctl

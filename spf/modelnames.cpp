#include "modelnames.h"

#include <QMap>

namespace spf::utils {

QString modelNameByModelCode(int code)
{
    static const QString unknown = QStringLiteral("Неизвестная модель");
    static const QMap<int, QString> names{
        {1, QStringLiteral("ЧекВей7-Ф")},
        {2, QStringLiteral("СП101-Ф")},
        {3, QStringLiteral("СП402-Ф")},
        // Code 4 is in the devices' list, but no model carries it: it is meant to read as unknown.
        {4, unknown},
        {5, QStringLiteral("СП802-Ф")},
        {801, QStringLiteral("СП801-Ф")},
    };
    return names.value(code, unknown);
}

} // namespace spf::utils

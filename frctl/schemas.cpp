#include "schemas.h"

#include <QDir>
#include <QFile>

namespace frctl {

namespace {

const QString& schemaFolder()
{
    static const QString name = QStringLiteral(":/schemas");
    return name;
}

const QString& schemaSuffix()
{
    static const QString name = QStringLiteral(".schema.json");
    return name;
}

} // namespace

QStringList schemaNames()
{
    return QDir(schemaFolder())
        .entryList(QDir::Files, QDir::Name)
        .replaceInStrings(schemaSuffix(), QString());
}

QByteArray schemaText(const QString& name)
{
    QFile file(QStringLiteral("%1/%2%3").arg(schemaFolder(), name, schemaSuffix()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace frctl

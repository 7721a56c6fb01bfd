#include "schemas.h"

#include <QDir>
#include <QFile>

namespace frctl {

namespace {

const QString& folder()
{
    static const QString name = QStringLiteral(":/schemas");
    return name;
}

const QString& suffix()
{
    static const QString name = QStringLiteral(".schema.json");
    return name;
}

} // namespace

QStringList schemaNames()
{
    return QDir(folder()).entryList(QDir::Files, QDir::Name).replaceInStrings(suffix(), QString());
}

QByteArray schemaText(const QString& name)
{
    QFile file(QStringLiteral("%1/%2%3").arg(folder(), name, suffix()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace frctl

#include "machinestore.h"

#include "accessadvice.h"
#include "configurationfile.h"
#include "errors.h"
#include "journalerror.h"

#include <QFile>

namespace frctl {

namespace {

QString urlIn(const QList<devices::IniSection>& sections)
{
    for (const devices::IniSection& section : sections) {
        if (section.name != QStringLiteral("store"))
            continue;
        for (const devices::IniEntry& entry : section.entries) {
            if (entry.key == QStringLiteral("url"))
                return entry.value;
        }
    }
    return {};
}

} // namespace

QString machineStore(const QString& configuration)
{
    if (!QFile::exists(configuration))
        return {};
    try {
        return urlIn(readConfigurationFile(configuration));
    } catch (const UsageError& error) {
        throw sale::JournalError(QString::fromUtf8(error.what()), sale::accessAdvice(configuration));
    }
}

} // namespace frctl

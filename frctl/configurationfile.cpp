#include "configurationfile.h"

#include "errors.h"
#include "inputfile.h"
#include "showntext.h"

namespace frctl {

QList<devices::IniSection> readConfigurationFile(const QString& fileName)
{
    try {
        return devices::readIni(readLines(fileName));
    } catch (const devices::IniError& error) {
        throw UsageError(QStringLiteral("%1:%2: %3")
                             .arg(fileName)
                             .arg(error.line())
                             .arg(receipt::shownText(QString::fromUtf8(error.what()))));
    }
}

} // namespace frctl

#include "outputfile.h"

#include "errors.h"

#include <QFile>
#include <QFileInfo>

namespace frctl {

void writeWholeFile(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
        return;
    const QString reason = file.errorString();
    // What is no file, as a device, stays.
    if (file.isOpen() && QFileInfo(fileName).isFile())
        file.remove();
    throw HostError(QStringLiteral("%1: %2").arg(fileName, reason));
}

} // namespace frctl

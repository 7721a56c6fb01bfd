#include "placeonfile.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <cerrno>

namespace sale {

std::optional<int> lookAt(const QString& name)
{
    struct stat status = {};
    const QByteArray path = QFile::encodeName(name);
    if (::stat(path.constData(), &status) == 0)
        return 0;
    const int error = errno;
    const bool isNothing = error == ENOENT || error == ENOTDIR;
    if (!isNothing || ::lstat(path.constData(), &status) == 0)
        return error;
    const std::optional<int> folder = lookAt(QFileInfo(name).path());
    return folder == 0 ? std::nullopt : folder;
}

} // namespace sale

#include "tape/drawingprogram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tape {

QString drawingProgram(const QString& installedFolder)
{
    const QDir own(QCoreApplication::applicationDirPath());
    const QString folders[] = {QStringLiteral("."), QStringLiteral("../") + installedFolder};
    for (const QString& folder : folders) {
        const QString program = QDir::cleanPath(own.filePath(folder + QStringLiteral("/frspf-draw")));
        if (QFileInfo(program).isExecutable())
            return program;
    }
    return {};
}

} // namespace tape

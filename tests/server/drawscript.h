#pragma once

#include <QByteArray>
#include <QFile>

/// A script in the place of the process that draws.
inline QString drawScript(const QString& fileName, const QByteArray& lines)
{
    QFile file(fileName);
    if (file.open(QIODevice::WriteOnly))
        file.write("#!/bin/sh\n" + lines + "\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return fileName;
}

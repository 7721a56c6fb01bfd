#pragma once

#include <QProcess>

/// What a script of this folder finds when it holds these lines of JSON against schemas of docs/; empty when
/// all is well. One start of the interpreter for all of them.
inline QByteArray schemaFindings(const QString& script, const QStringList& schemas, const QByteArray& lines)
{
    QProcess checker;
    checker.setProcessChannelMode(QProcess::MergedChannels);
    QStringList arguments{FRSPF_SOURCES "/tests/" + script};
    for (const QString& schema : schemas)
        arguments.append(FRSPF_SOURCES "/docs/" + schema);
    checker.start("/usr/bin/python3", arguments);
    checker.write(lines);
    checker.closeWriteChannel();
    if (!checker.waitForFinished())
        return checker.errorString().toUtf8();
    const bool isWell = checker.exitStatus() == QProcess::NormalExit && checker.exitCode() == 0;
    return isWell ? QByteArray() : script.toUtf8() + " refuses:\n" + checker.readAll();
}

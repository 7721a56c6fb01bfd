#pragma once

#include <QProcess>

/// What a script of this folder finds when it holds these lines of JSON against a schema of docs/; empty when
/// all is well. One start of the interpreter for all of them.
inline QByteArray schemaFindings(const QString& script, const QString& schema, const QByteArray& lines)
{
    QProcess checker;
    checker.setProcessChannelMode(QProcess::MergedChannels);
    checker.start("/usr/bin/python3", {FRSPF_SOURCES "/tests/" + script, FRSPF_SOURCES "/docs/" + schema});
    checker.write(lines);
    checker.closeWriteChannel();
    if (!checker.waitForFinished())
        return checker.errorString().toUtf8();
    const bool isWell = checker.exitStatus() == QProcess::NormalExit && checker.exitCode() == 0;
    return isWell ? QByteArray() : script.toUtf8() + " refuses:\n" + checker.readAll();
}

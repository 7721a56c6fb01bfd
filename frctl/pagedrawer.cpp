#include "pagedrawer.h"

#include "errors.h"
#include "frctltr.h"
#include "tape/drawingprogram.h"
#include "tape/pagejson.h"

#include <QJsonDocument>
#include <QProcess>

namespace frctl {

namespace {

QString drawingProgram()
{
    const QString program = tape::drawingProgram(QStringLiteral(FRCTL_LIBEXEC_DIR));
    if (program.isEmpty())
        throw HostError(tr("the program that draws pictures, frspf-draw, is not installed"));
    return program;
}

/// Throws HostError unless all went well.
void requireDrawn(const QProcess& process, const QString& format)
{
    // One that ends before it has read all is the reason of an error in writing.
    const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 0;
    if (status == tape::TooLong)
        throw HostError(tr("the page is too long for a %1; --pdf and --svg take any").arg(format.toUpper()));
    if (status != 0)
        throw HostError(tr("%1: exit status %2").arg(process.program()).arg(status));
    if (process.error() != QProcess::UnknownError)
        throw HostError(QStringLiteral("%1: %2").arg(process.program(), process.errorString()));
}

} // namespace

QByteArray drawnPage(const tape::Page& page, const QString& format)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(drawingProgram(), {format});
    process.write(QJsonDocument(tape::toJson(page)).toJson(QJsonDocument::Compact));
    process.closeWriteChannel();
    // However long the page is.
    process.waitForFinished(-1);
    requireDrawn(process, format);
    return process.readAllStandardOutput();
}

} // namespace frctl

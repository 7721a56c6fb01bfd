#include "pagedrawer.h"

#include "errors.h"
#include "frctltr.h"
#include "tape/pagejson.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>

namespace frctl {

namespace {

/// As the program tells it by its exit status.
constexpr int pageTooLong = 3;

/// A build has it beside this program, an installation where programs are that nobody calls by hand.
QString drawingProgram()
{
    const QDir own(QCoreApplication::applicationDirPath());
    for (const char* const place : {"frspf-draw", "../" FRCTL_LIBEXEC_DIR "/frspf-draw"}) {
        const QString program = QDir::cleanPath(own.filePath(QString::fromLatin1(place)));
        if (QFileInfo(program).isExecutable())
            return program;
    }
    throw HostError(tr("the program that draws pictures, frspf-draw, is not installed"));
}

/// Throws HostError unless all went well.
void requireDrawn(const QProcess& process, const QString& format)
{
    // One that ends before it has read all is the reason of an error in writing.
    const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 0;
    if (status == pageTooLong)
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

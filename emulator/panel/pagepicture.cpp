#include "panel/pagepicture.h"

#include "http/problem.h"
#include "http/processanswer.h"
#include "tape/drawingprogram.h"
#include "tape/pagejson.h"
#include "tape/pagepicture.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QProcess>

namespace emulator::panel::pagepicture {

namespace {

constexpr http::Pending::Time patience{30'000};
/// Each takes a processor and tens of megabytes.
constexpr qsizetype mostAtOnce = 8;
const QString processName = QStringLiteral("frspf-draw");

QByteArray contentTypeOf(const QString& format)
{
    return format == QStringLiteral("png") ? "image/png" : "application/pdf";
}

http::Response failure(int status, const QString& detail)
{
    return http::Problem(status, detail).response();
}

http::Response drawn(QProcess& process, const QString& format)
{
    const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    if (process.error() == QProcess::FailedToStart)
        return failure(503, QStringLiteral("frspf-draw does not start: %1.").arg(process.errorString()));
    if (status == tape::TooLong)
        return failure(422, QStringLiteral("The page is too long for this; svg takes any."));
    if (status != 0)
        return failure(503, QStringLiteral("frspf-draw failed with status %1.").arg(status));
    return http::Response::bytes(process.readAllStandardOutput(), contentTypeOf(format));
}

bool isBusy()
{
    const QObject* const parent = QCoreApplication::instance();
    return parent->findChildren<QProcess*>(processName, Qt::FindDirectChildrenOnly).size() >= mostAtOnce;
}

std::shared_ptr<http::Pending> draw(const QString& program, const tape::Page& page, const QString& format)
{
    auto* const process = new QProcess(QCoreApplication::instance());
    process->setObjectName(processName);
    const auto pending
        = http::processAnswer(*process, patience, failure(503, QStringLiteral("frspf-draw took too long.")),
            [format](QProcess& ended) { return drawn(ended, format); });
    process->start(program, {format});
    process->write(QJsonDocument(tape::toJson(page)).toJson(QJsonDocument::Compact));
    process->closeWriteChannel();
    return pending;
}

} // namespace

http::Answer answer(const tape::Page& page, const QString& format)
{
    if (format == QStringLiteral("svg"))
        return http::Response::bytes(tape::toSvg(page), "image/svg+xml");
    const QString program = tape::drawingProgram(QStringLiteral(EMULATOR_LIBEXEC_DIR));
    if (program.isEmpty())
        return failure(503, QStringLiteral("The program that draws, frspf-draw, is not installed."));
    if (isBusy())
        return http::Problem(503, QStringLiteral("Too many pictures are being drawn."))
            .withHeader("Retry-After", "1")
            .response();
    return draw(program, page, format);
}

} // namespace emulator::panel::pagepicture

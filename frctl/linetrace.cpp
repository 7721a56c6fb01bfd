#include "linetrace.h"

#include "errors.h"
#include "frctltr.h"
#include "options.h"
#include "progress.h"

#include <QCoreApplication>

namespace frctl {

namespace {

/// What the trace begins with: values that tell of people stay out of it.
QString workOf(const Options& options)
{
    QStringList words{QStringLiteral("frctl"), QCoreApplication::applicationVersion(),
        QStringLiteral("--protocol"), options.protocol, options.command};
    // Settings are written with their values, the password of the line among them.
    const bool isWriting = options.arguments.value(0) == QStringLiteral("set");
    words += isWriting ? options.arguments.mid(0, 1) : options.arguments;
    return words.join(QLatin1Char(' '));
}

} // namespace

LineTrace::LineTrace(const Options& options)
    : m_recorder([this](const QByteArray& line) { write(line); }, !options.isTraceFull)
    , m_isStandardError(options.traceFile == QStringLiteral("-"))
{
    if (const QString reason = m_file.open(options.traceFile); !reason.isEmpty())
        throw UsageError(QStringLiteral("--trace: %1: %2").arg(options.traceFile, reason));
    m_file.setLossListener([name = options.traceFile, warnings = options.warnings](const QString& reason) {
        warnings->add(
            {{receipt::Finding::Warning, {}, {}, tr("the trace %1 ends here: %2").arg(name, reason)}});
    });
    m_recorder.begin(workOf(options));
}

LineTrace::~LineTrace()
{
    m_recorder.flush();
}

void LineTrace::write(const QByteArray& line)
{
    if (m_isStandardError)
        hideProgress();
    m_file.append(line);
}

void LineTrace::opened()
{
    m_recorder.connected();
}

void LineTrace::sent(const QByteArray& bytes)
{
    m_recorder.passed(trace::Direction::ToRegister, bytes);
}

void LineTrace::received(const QByteArray& bytes)
{
    m_recorder.passed(trace::Direction::ToHost, bytes);
}

void LineTrace::failed(const QString& reason)
{
    m_recorder.note(reason);
}

} // namespace frctl

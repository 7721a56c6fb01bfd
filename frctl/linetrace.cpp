#include "linetrace.h"

#include "command.h"
#include "errors.h"
#include "frctltr.h"
#include "options.h"
#include "progress.h"

#include <QCoreApplication>

namespace frctl {

namespace {

/// What the trace begins with. Of the arguments it has only the words of the command itself: files are named
/// for customers, and settings are written with their values.
QString workOf(const Options& options)
{
    const Command* const command = findCommand(options.command);
    QStringList words{QStringLiteral("frctl"), QCoreApplication::applicationVersion()};
    // Who asks ports may do it over both.
    if (command == nullptr || !command->asksPorts)
        words += {QStringLiteral("--protocol"), options.protocol};
    words.append(options.command);
    const QString action = options.arguments.value(0);
    if (command != nullptr && command->actions().contains(action))
        words.append(action);
    return words.join(QLatin1Char(' '));
}

} // namespace

LineTrace::LineTrace(const Options& options)
    : m_recorder([this](const QByteArray& line) { write(line); }, !options.isTraceFull)
    , m_isStandardError(options.traceFile == QStringLiteral("-"))
{
    if (const QString reason = m_file.open(options.traceFile, !options.isTraceFull); !reason.isEmpty())
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

std::unique_ptr<LineTrace> lineTraceOf(const Options& options)
{
    return options.traceFile.isEmpty() ? nullptr : std::make_unique<LineTrace>(options);
}

} // namespace frctl

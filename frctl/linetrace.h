#pragma once

#include "lineobserver.h"
#include "trace/recorder.h"
#include "trace/tracefile.h"

#include <memory>

namespace frctl {

struct Options;

/// Writes what goes over the register's line into a file. A file that takes no more is a warning and ends the
/// trace, never the work.
class LineTrace : public devices::LineObserver
{
public:
    /// Begins the trace that the options name, before anything is sent. Throws UsageError for a file that
    /// cannot be written.
    explicit LineTrace(const Options& options);
    ~LineTrace() override;
    LineTrace(const LineTrace&) = delete;
    LineTrace& operator=(const LineTrace&) = delete;

    void note(const QString& text) { m_recorder.note(text); }
    void opened() override;
    void sent(const QByteArray& bytes) override;
    void received(const QByteArray& bytes) override;
    void failed(const QString& reason) override;

private:
    void write(const QByteArray& line);

    trace::TraceFile m_file;
    trace::Recorder m_recorder;
    const bool m_isStandardError;
};

/// Null without one.
std::unique_ptr<LineTrace> lineTraceOf(const Options& options);

} // namespace frctl

#pragma once

#include <QFile>

#include <functional>

namespace trace {

/// The file that lines of a trace are added to. "-" is standard error.
class TraceFile
{
public:
    /// Is told once, when no more can be written: the trace ends there, and all else goes on.
    using LossListener = std::function<void(const QString& reason)>;

    /// Empty when the file is open, otherwise the reason. A file that is there already must be a trace of the
    /// same kind: what says that it is masked must be so to its end.
    QString open(const QString& name, bool isMasked);
    void setLossListener(LossListener listener) { m_lossListener = std::move(listener); }
    void append(const QByteArray& line);

private:
    /// What is there already; the reason when nothing may be added to it.
    QString judge(const QString& name, bool isMasked);

    QFile m_file;
    LossListener m_lossListener;
    /// What is there broke off in the middle of a line.
    bool m_hasOpenLine = false;
};

} // namespace trace

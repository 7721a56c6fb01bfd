#pragma once

#include "hostanswer.h"
#include "outputpipe.h"

#include <QProcess>

/// A frctl at work.
class HostProcess
{
public:
    /// Starts it.
    HostProcess(const QString& program, const QStringList& arguments);
    ~HostProcess();

    bool hasEnded();
    /// False when it has ended before.
    bool signal(int number);
    /// Whoever reads what it says goes away. False when it has ended before.
    bool closeOutput();
    /// Waits for its end; throws Violation when there is none.
    HostAnswer end();

private:
    QProcess m_process;
    OutputPipe m_output;
    OutputPipe m_messages;
};

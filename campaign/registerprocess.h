#pragma once

#include "wiretrace.h"

#include <QFile>
#include <QProcess>

/// A spf-emulator that runs on a state and is killed without mercy.
class RegisterProcess
{
public:
    enum class Line { Network, Terminal };

    /// Keeps state, messages and its journal in the folder.
    RegisterProcess(const QString& program, const QString& folder, Line line);
    ~RegisterProcess();

    /// Starts it and waits until a host may open the line; throws Violation when it does not come up.
    void start();
    void kill();
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Where hosts find it, the same after each start.
    QString address() const { return m_address; }
    /// The file that has a line of JSON for each document.
    QString journal() const { return m_journal; }
    /// Reads what it has said up to now.
    void listen();
    /// The trace begins anew; for a register that nobody works.
    void beginTrace();
    const WireTrace& trace() const { return m_trace; }

private:
    QString m_program;
    QString m_journal;
    QString m_address;
    QStringList m_arguments;
    QProcess m_process;
    /// No pipe: that would be full one day, and the register wait for a reader.
    QFile m_messages;
    WireTrace m_trace;
};

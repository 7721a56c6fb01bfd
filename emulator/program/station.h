#pragma once

#include "conformance/hostwatch.h"
#include "program/line.h"
#include "program/power.h"
#include "register/systemclock.h"

#include <QFile>
#include <QTimer>

#include <memory>

/// Puts register, protocol and line together and keeps the tape and the journal on disk.
class Station : public QObject
{
    Q_OBJECT

public:
    /// Without a memory the register forgets all at the end.
    Station(const Options& options, std::unique_ptr<emulator::Memory> memory, QObject* parent = nullptr);

    /// Opens line and files; empty when all went well.
    QString open();
    QString address() const { return m_line->address(); }
    void togglePaper();
    /// Tells what there is to tell of the host; the program's exit status.
    int finish();

private:
    QString openLine();
    void connectPaper();
    bool isWatching() const { return !m_options.conformanceFile.isEmpty(); }
    /// A file that takes no more is closed; the register goes on.
    void append(QFile& file, const QByteArray& text);
    void showOutput();
    void receive(const QByteArray& bytes);
    /// Keeps what has changed, and only then lets tape and journal have it. What cannot be kept ends the
    /// program before anybody is told of it, as a loss of power would; false then.
    bool keep();
    void pump();
    void trace(const char* direction, const QByteArray& bytes) const;

    /// What goes out once it is kept.
    struct Output
    {
        QFile* file;
        QByteArray text;
    };

    Options m_options;
    std::unique_ptr<emulator::Memory> m_memory;
    emulator::SystemClock m_clock;
    emulator::Register m_register;
    emulator::Outbox m_outbox;
    emulator::ProtocolSwitch m_protocol;
    emulator::HostWatch m_watch;
    Line* m_line = nullptr;
    QTimer m_timer;
    QFile m_tape;
    QFile m_journal;
    QFile m_terminal;
    QFile m_report;
    QList<Output> m_output;
    bool m_hasLostOutput = false;
    bool m_hasLostPower = false;
};

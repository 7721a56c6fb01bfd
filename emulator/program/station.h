#pragma once

#include "conformance/hostwatch.h"
#include "panel/panel.h"
#include "program/line.h"
#include "program/power.h"
#include "register/systemclock.h"
#include "trace/recorder.h"
#include "trace/tracefile.h"

#include <QFile>
#include <QTimer>

#include <memory>
#include <optional>

/// Puts register, protocol and line together and keeps the tape and the journal on disk.
class Station : public QObject
{
    Q_OBJECT

public:
    /// Without a memory the register forgets all at the end; without a panel nobody sees it.
    Station(const Options& options, std::unique_ptr<emulator::Memory> memory, emulator::panel::Panel* panel,
        QObject* parent = nullptr);

    /// Opens line and files; empty when all went well.
    QString open();
    QString address() const { return m_line->address(); }
    void togglePaper();
    /// What it does cannot be kept any more.
    bool hasLostPower() const { return m_hasLostPower; }
    /// Tells what there is to tell of the host; the program's exit status.
    int finish();

Q_SIGNALS:
    void lostPower();

private:
    QString openLine();
    void connectPaper();
    void connectProtocol();
    /// Has a place on the panel.
    void sitDown(emulator::panel::Panel& panel);
    bool isWatching() const { return !m_options.conformanceFile.isEmpty(); }
    /// A file that takes no more is closed; the register goes on.
    void append(QFile& file, const QByteArray& text);
    void showOutput();
    void receive(const QByteArray& bytes);
    void work(const QByteArray& bytes);
    /// Keeps what has changed, and only then lets tape and journal have it. What cannot be kept ends the
    /// register before anybody is told of it, as a loss of power would; false then.
    bool keep();
    void losePower(const QString& why);
    emulator::panel::Hands hands();
    void pump();
    /// Opens the file of the trace, where one is wanted; empty when all went well.
    QString openTrace();
    void trace(trace::Direction direction, const QByteArray& bytes);

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
    emulator::panel::FaultDesk m_faults;
    /// Null without a panel.
    emulator::panel::Desk* m_desk = nullptr;
    Line* m_line = nullptr;
    QTimer m_timer;
    QFile m_tape;
    QFile m_journal;
    QFile m_terminal;
    QFile m_report;
    trace::TraceFile m_traceFile;
    std::optional<trace::Recorder> m_trace;
    QList<Output> m_output;
    bool m_hasLostOutput = false;
    bool m_hasLostPower = false;
    /// Fiscal drives that resets have put in.
    int m_drives = 0;
};

#pragma once

#include "conformance/hostwatch.h"
#include "program/line.h"
#include "program/options.h"
#include "register/systemclock.h"

#include <QFile>
#include <QTimer>

/// Puts register, protocol and line together and keeps the tape and the journal on disk.
class Station : public QObject
{
    Q_OBJECT

public:
    explicit Station(const Options& options, QObject* parent = nullptr);

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
    void receive(const QByteArray& bytes);
    void pump();
    void trace(const char* direction, const QByteArray& bytes) const;

    Options m_options;
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
    bool m_hasLostOutput = false;
};

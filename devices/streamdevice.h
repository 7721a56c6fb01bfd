#pragma once

#include "abstractserialdevice.h"
#include "lineerrors.h"
#include "lineobserver.h"
#include "silencewatch.h"

#include <QDeadlineTimer>
#include <QObject>

#include <array>
#include <functional>
#include <optional>

namespace devices {

/// What the devices of this folder have in common: blocking reads and writes without an event loop, and the
/// one buffer that received bytes wait in. A QCoreApplication must exist, since Qt's ports and sockets want a
/// thread that it knows.
///
/// A line that vanishes (unplugged, closed by the other end) is closed here as well, so that the driver's
/// next call fails at once with a message about the port, and so that a reconnection opens it anew.
class StreamDevice : public QObject, public hw::AbstractSerialDevice
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractSerialDevice)

public:
    ~StreamDevice() override;

    /// A HEX driver asks a register that is silent for two seconds whether it is at work, and one that prints
    /// says so.
    static constexpr int firstAnswerMs = 2500;
    /// One that prints over XML says nothing meanwhile.
    static constexpr int laterAnswerMs = 5000;

    /// The callback runs at least every tenth of a second while a wait for input or for a connection lasts.
    /// An exception that it throws ends the wait and passes through the driver to the host: a way out of a
    /// long exchange.
    void setWaitCallback(const std::function<void()>& callback) { m_waitCallback = callback; }

    /// The callback runs once at most for each: when the other end has not answered the first that was
    /// written, so long after it, and, with true, when it has answered before and is silent for so long. It
    /// runs in the wait for input.
    void setSilenceCallback(const std::function<void(bool hasAnswered)>& callback,
        int firstMs = firstAnswerMs, int laterMs = laterAnswerMs)
    {
        m_silence.start(callback, firstMs, laterMs);
    }

    /// So long from now the line may be used. Then it is closed, and does not open again: whatever the driver
    /// would repeat fails at once as on a closed port.
    void setBudget(int milliseconds) { m_deadline = QDeadlineTimer(milliseconds); }
    bool isBudgetSpent() const { return m_deadline.hasExpired(); }

    /// The observer outlives the device; null for none.
    void setObserver(LineObserver* observer) { m_observer = observer; }

    /// Why open() or the last write failed, in the system's words.
    virtual QString errorString() const = 0;

    /// A number for the open connection, another one for each that is opened, while no other program of this
    /// machine can open the line; 0 when one can, or when the line is closed.
    virtual quint64 soleConnection() const { return 0; }

    /// How often the same was written twice in a row: a driver that got no answer asks again.
    quint64 repeats() const { return m_repeats; }

    /// Counted since the line was opened last; nothing where the system does not count.
    virtual std::optional<LineErrors> lineErrors() const { return std::nullopt; }

    /// Bytes that came before the other end hung up can still be read, so it counts as open until then.
    bool isOpen() const override { return hasInput() || isLineOpen(); }
    void close() override;
    bool clear() override;
    bool setOpened(bool opened) override;
    qint64 write(const QByteArray& data) override;
    QByteArray read(qint64 maxSize) override;
    /// Waits for nothing: what write has given to the system goes out by itself, however long that takes.
    bool flush() override { return isOpen(); }
    bool waitForReadyRead(int milliseconds) override;

protected:
    /// What send and receive answer when there is no line any more.
    static constexpr qint64 lineIsGone = -1;
    /// A register that holds the line for longer than this has given up.
    static constexpr int writeTimeoutMs = 5000;

    StreamDevice() = default;

    virtual bool isLineOpen() const = 0;
    virtual void closeLine() = 0;
    /// Discards what the system and Qt hold, in both directions.
    virtual bool clearLine() = 0;
    /// Hands the bytes to the system, and waits up to that many milliseconds while it takes no more: the
    /// number of bytes taken, or lineIsGone.
    virtual qint64 send(const QByteArray& data, int milliseconds) = 0;
    /// Waits up to that many milliseconds for bytes and receives them: their number, 0 when none came, or
    /// lineIsGone.
    virtual qint64 receive(char* data, qint64 maxSize, int milliseconds) = 0;
    /// To be called before open() opens the line; may throw.
    void tellOpening() const;
    /// To be called when open() has opened the line.
    void tellOpened() const;
    /// The time that the budget leaves of it.
    int withinBudget(int milliseconds) const;
    /// To be called in a wait at least every tenth of a second; may throw.
    void callWhileWaiting() const;
    /// Closes a line that is gone, but not before what came from it was read.
    void dropLine();

private:
    bool hasInput() const { return m_taken < m_received; }
    bool receiveInput(int milliseconds);
    /// False, and the line is closed, when the budget is spent.
    bool keepBudget();
    void tellFailure(const QString& reason) const;

    QDeadlineTimer m_deadline = QDeadlineTimer::Forever;
    std::function<void()> m_waitCallback;
    SilenceWatch m_silence;
    LineObserver* m_observer = nullptr;
    QByteArray m_lastWritten;
    quint64 m_repeats = 0;
    std::array<char, 4096> m_input;
    qint64 m_received = 0;
    qint64 m_taken = 0;
};

} // namespace devices

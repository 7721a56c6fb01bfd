#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace frserver {

/// The worker's end of its standard streams: one JSON object a line.
class WorkerChannel
{
public:
    /// Takes them for itself: what others print goes to the standard error.
    WorkerChannel();
    ~WorkerChannel();
    WorkerChannel(const WorkerChannel&) = delete;
    WorkerChannel& operator=(const WorkerChannel&) = delete;

    /// Waits for the next one; nothing when there will be none.
    std::optional<QJsonObject> next();
    /// One that has come already.
    std::optional<QJsonObject> nextNow();
    void send(const QJsonObject& message) const;
    /// Drops it rather than wait: no document is held up by a service that is slow to read.
    void sendIfRoom(const QJsonObject& message) const;
    /// There will be no next one. To be called in waits.
    bool isEnding() const;

private:
    /// False at the end.
    bool receive();
    bool read();
    std::optional<QJsonObject> takeLine();

    const int m_input;
    const int m_output;
    QByteArray m_received;
};

} // namespace frserver

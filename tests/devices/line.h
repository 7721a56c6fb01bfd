#pragma once

#include "streamdevice.h"

#include <QByteArray>

#include <memory>
#include <string>

/// A device under test and, as a bare descriptor, the far end of its line.
class Line
{
public:
    /// "pty" or "tcp". The device is open.
    explicit Line(const std::string& kind);
    ~Line();

    const devices::StreamDevice& device() const { return *m_device; }
    devices::StreamDevice& device() { return *m_device; }
    void send(const QByteArray& data) const;
    /// What has arrived at the far end, without waiting for more than the first byte.
    QByteArray received(int milliseconds = 1000) const;
    void hangUp();

private:
    void makePty();
    void makeTcp();

    int m_peer = -1;
    std::unique_ptr<devices::StreamDevice> m_device;
};

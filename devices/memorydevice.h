#pragma once

#include "abstractserialdevice.h"

namespace devices {

/// A line in this program's memory: its settings mean nothing, and are taken while it is open.
class MemoryDevice : public hw::AbstractSerialDevice
{
public:
    bool setBaudRate(QSerialPort::BaudRate) override { return isOpen(); }
    QSerialPort::BaudRate getBaudRate() const override { return QSerialPort::Baud115200; }
    bool setDataBits(QSerialPort::DataBits) override { return isOpen(); }
    bool setParity(QSerialPort::Parity) override { return isOpen(); }
    bool setStopBits(QSerialPort::StopBits) override { return isOpen(); }
    bool setFlowControl(QSerialPort::FlowControl) override { return isOpen(); }
    QSerialPort::FlowControl getFlowControl() const override { return QSerialPort::NoFlowControl; }
    bool setDataTerminalReady(bool) override { return isOpen(); }
    bool isDataTerminalReady() const override { return false; }
    bool setOpened(bool) override { return true; }
    bool flush() override { return isOpen(); }
    bool isAvailable() const override { return true; }
    int getType() const override { return Virtual; }
};

} // namespace devices

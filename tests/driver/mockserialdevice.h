#pragma once

#include "abstractserialdevice.h"

#include <gmock/gmock.h>

class MockSerialDevice : public hw::AbstractSerialDevice
{
public:
    MOCK_METHOD(QString, getDeviceName, (), (const, override));
    MOCK_METHOD(bool, setBaudRate, (QSerialPort::BaudRate), (override));
    MOCK_METHOD(QSerialPort::BaudRate, getBaudRate, (), (const, override));
    MOCK_METHOD(bool, setDataBits, (QSerialPort::DataBits), (override));
    MOCK_METHOD(bool, setParity, (QSerialPort::Parity), (override));
    MOCK_METHOD(bool, setStopBits, (QSerialPort::StopBits), (override));
    MOCK_METHOD(bool, setFlowControl, (QSerialPort::FlowControl), (override));
    MOCK_METHOD(QSerialPort::FlowControl, getFlowControl, (), (const, override));
    MOCK_METHOD(bool, setDataTerminalReady, (bool), (override));
    MOCK_METHOD(bool, isDataTerminalReady, (), (const, override));
    MOCK_METHOD(bool, isOpen, (), (const, override));
    MOCK_METHOD(bool, setOpened, (bool), (override));
    MOCK_METHOD(bool, open, (), (override));
    MOCK_METHOD(void, close, (), (override));
    MOCK_METHOD(qint64, write, (const QByteArray&), (override));
    MOCK_METHOD(QByteArray, read, (qint64), (override));
    MOCK_METHOD(bool, flush, (), (override));
    MOCK_METHOD(bool, clear, (), (override));
    MOCK_METHOD(bool, waitForReadyRead, (int), (override));
    MOCK_METHOD(bool, isAvailable, (), (const, override));
    MOCK_METHOD(int, getType, (), (const, override));
};

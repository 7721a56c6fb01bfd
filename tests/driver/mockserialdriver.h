#pragma once

#include "abstractserialdriver.h"

#include <gmock/gmock.h>

class MockSerialDriver : public AbstractSerialDriver
{
public:
    MOCK_METHOD(bool, portOpen,
        (QSerialPort::BaudRate, QSerialPort::Parity, QSerialPort::DataBits, QSerialPort::StopBits),
        (override));
    MOCK_METHOD(bool, portOpen, (), (override));
    MOCK_METHOD(void, portClose, (), (override));
    MOCK_METHOD(bool, setBaudRate, (QSerialPort::BaudRate), (override));
    MOCK_METHOD(QSerialPort::BaudRate, getBaudRate, (), (const, override));
    MOCK_METHOD(bool, portClear, (), (override));
    MOCK_METHOD(void, sendByte, (unsigned char), (override));
    MOCK_METHOD(void, sendByteWithTimeout, (unsigned char, unsigned long), (override));
    MOCK_METHOD(void, sendData, (const std::vector<unsigned char>&), (override));
    MOCK_METHOD(void, sendData, (const QByteArray&), (override));
    MOCK_METHOD(unsigned char, receiveByte, (unsigned long), (override));
    MOCK_METHOD(std::vector<unsigned char>, receiveData, (unsigned long, unsigned long), (override));
    MOCK_METHOD(QByteArray, receiveDataAsByteArray, (unsigned long, unsigned long), (override));
    MOCK_METHOD(void, flush, (), (override));
    MOCK_METHOD(int, getType, (), (const, override));
    MOCK_METHOD(hw::AbstractSerialDevice*, getDevice, (), (override));
    MOCK_METHOD(QString, getDeviceName, (), (const, override));
    MOCK_METHOD(bool, isAvailable, (), (const, override));
    MOCK_METHOD(bool, setFlowControl, (QSerialPort::FlowControl), (override));
    MOCK_METHOD(QSerialPort::FlowControl, getFlowControl, (), (const, override));
    MOCK_METHOD(bool, setDataTerminalReady, (bool), (override));
    MOCK_METHOD(bool, isDataTerminalReady, (), (const, override));
};

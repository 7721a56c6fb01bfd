#pragma once

#include "serialdriverwrapper.h"

#include <gmock/gmock.h>

/// What an exchange of texts needs; anything else is refused, for there is no device.
class MockSerialDriver : public SerialDriverWrapper
{
public:
    MockSerialDriver()
        : SerialDriverWrapper(nullptr)
    {
    }
    using SerialDriverWrapper::portOpen;
    using SerialDriverWrapper::sendData;
    MOCK_METHOD(bool, portOpen,
        (QSerialPort::BaudRate, QSerialPort::Parity, QSerialPort::DataBits, QSerialPort::StopBits),
        (override));
    MOCK_METHOD(void, sendData, (const QByteArray&), (override));
    MOCK_METHOD(QByteArray, receiveDataAsByteArray, (unsigned long, unsigned long), (override));
};

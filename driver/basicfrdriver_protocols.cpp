// What the drivers of both protocols do alike.

#include "basicfrdriver.h"
#include "driverlogger.h"
#include "drivertexts.h"
#include "exceptions.h"

#include <exception>
#include <limits>

void BasicFrDriver::openPort(const std::function<void()>& prepareLine)
{
    logger->info(QStringLiteral("Открытие порта"));
    if (serial == nullptr)
        throw FrNoConnectionException(drivertexts::noTransport());
    try {
        if (prepareLine)
            prepareLine();
        serial->portOpen(static_cast<QSerialPort::BaudRate>(defaultSpeed), QSerialPort::NoParity,
            QSerialPort::Data8, QSerialPort::OneStop);
    } catch (const BasicException& exception) {
        logger->error(exception.tr().ru());
        throw FrNoConnectionException(drivertexts::cannotOpenPort());
    }
    portState = PortIsOpen;
    logger->info(QStringLiteral("Порт открыт"));
}

void BasicFrDriver::closePort()
{
    logger->info(QStringLiteral("Закрытие порта"));
    portState = PortIsClosed;
    if (serial == nullptr)
        return;
    serial->portClose();
    logger->info(QStringLiteral("Порт закрыт"));
}

bool BasicFrDriver::programParameters(const std::function<void()>& write)
{
    try {
        write();
    } catch (const std::exception& exception) {
        logger->error(QString::fromUtf8(exception.what()));
        return false;
    }
    logger->info(QStringLiteral("Программирование параметров выполнено"));
    return true;
}

int BasicFrDriver::nextShift(int shiftNumber)
{
    return shiftNumber == std::numeric_limits<int>::max() ? shiftNumber : shiftNumber + 1;
}

KkmRegisterBeg BasicFrDriver::registersWithIdentity() const
{
    KkmRegisterBeg registers;
    registers.producerCode = deviceInfo.getProducerCode().toInt();
    registers.producerName = deviceInfo.getProducerName(false);
    registers.modelCode = deviceInfo.getModelCode().toInt();
    registers.modelName = deviceInfo.getModelName();
    registers.serialNumber = deviceInfo.getNumber();
    return registers;
}

void BasicFrDriver::logDone() const
{
    logger->info(QStringLiteral("Команда выполнена"));
}

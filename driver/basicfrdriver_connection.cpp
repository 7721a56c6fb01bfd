#include "abstractserialdevice.h"
#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "driverlogger.h"
#include "drivertexts.h"
#include "exceptions.h"

namespace {

const int triesWithoutBaudRate = 3;

QString noLink()
{
    return QStringLiteral("Нет связи");
}

bool hasBaudRate(int deviceType)
{
    return deviceType != hw::AbstractSerialDevice::Tcp && deviceType != hw::AbstractSerialDevice::Virtual;
}

QSerialPort::BaudRate baudRate(int speed)
{
    return static_cast<QSerialPort::BaudRate>(speed);
}

} // namespace

// Only trouble with the port and a missing connection are handled here. A command that failed for any other
// reason shows that the device is there, so its exception goes to the host and no further speed is tried.
void BasicFrDriver::connect()
{
    logger->info(QStringLiteral("Установка связи с устройством"));
    if (serial == nullptr)
        throw FrNoConnectionException(drivertexts::noTransport());
    if (!hasBaudRate(serial->getType())) {
        connectWithoutBaudRate();
        return;
    }
    logger->info("Скорость по умолчанию: %1", defaultSpeed);
    try {
        serial->setBaudRate(baudRate(defaultSpeed));
        setConnection();
        currentSpeed = defaultSpeed;
        connectedOnce = true;
        return;
    } catch (const ComDriverException& e) {
        logger->error(e.tr().ru());
        throw FrNoConnectionException(noLink());
    } catch (const FrNoConnectionException&) {
        // The register may stand at another speed.
    }
    connectAtSomeSpeed();
}

// The first connection tries all speeds whatever the setting says: it concerns repeated ones only.
void BasicFrDriver::connectAtSomeSpeed()
{
    bool connected = false;
    if (!settings->isSpeedEnumerate() && connectedOnce) {
        logger->debug(QStringLiteral("Перебор скорости отключен настройками"));
        connected = connectAtCurrentSpeed();
    } else {
        connected = enumerateSpeed();
    }
    if (connected) {
        connectedOnce = true;
        return;
    }
    try {
        serial->setBaudRate(baudRate(defaultSpeed));
    } catch (const ComDriverException&) {
        // The connection is lost as it is; the next connect sets the speed again.
    }
    throw FrNoConnectionException(drivertexts::noConnection());
}

void BasicFrDriver::connectWithoutBaudRate()
{
    for (int i = 0; i < triesWithoutBaudRate; ++i) {
        try {
            setConnection();
            return;
        } catch (const ComDriverException& e) {
            logger->error("Не удалось установить соединение: %1", e.tr().ru());
            throw FrNoConnectionException(drivertexts::noConnection());
        } catch (const FrNoConnectionException&) {
            // The next try follows at once.
        }
    }
    throw FrNoConnectionException(drivertexts::noConnection());
}

bool BasicFrDriver::enumerateSpeed()
{
    logger->debug(QStringLiteral("Перебор скорости подключения к ФР"));
    for (const int speed : speeds) {
        if (speed == defaultSpeed)
            continue;
        try {
            serial->setBaudRate(baudRate(speed));
            logger->info(" скорость: %1", speed);
            setConnection();
            currentSpeed = speed;
            return true;
        } catch (const ComDriverException&) {
            // Not this speed.
        } catch (const FrNoConnectionException&) {
            // Not this speed.
        }
    }
    return false;
}

bool BasicFrDriver::connectAtCurrentSpeed()
{
    logger->info(" установка соединения на скорости: %1", currentSpeed);
    try {
        serial->setBaudRate(baudRate(currentSpeed));
        setConnection();
        return true;
    } catch (const FrNoConnectionException&) {
        return false;
    } catch (const ComDriverException& e) {
        logger->error(e.tr().ru());
        throw FrNoConnectionException(noLink());
    }
}

void BasicFrDriver::setConnection() { }

void BasicFrDriver::isPortReady() const
{
    if (serial == nullptr)
        throw FrNoConnectionException(drivertexts::noTransport());
    if (portState == PortIsClosed)
        throw FrNoConnectionException(QStringLiteral("Необходимо открыть порт"));
}

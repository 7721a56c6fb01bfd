#include "basicfrdriver.h"
#include "driverlogger.h"

// The device itself, its paper and its programming as a driver answers that has none of its own for them.

void BasicFrDriver::portOpen() { }

void BasicFrDriver::portClose() { }

void BasicFrDriver::init() { }

void BasicFrDriver::reinitialize()
{
    logger->warn(QStringLiteral("Реинициализация(технологическое обнуление) не поддерживается устройством"));
}

void BasicFrDriver::reboot(EFrDriver::RebootMode)
{
    logger->warn(QStringLiteral("Перезагрузка не поддерживается устройством"));
}

bool BasicFrDriver::setDefaults()
{
    return false;
}

QStringList BasicFrDriver::getDeviceStateDescription()
{
    return {};
}

QStringList BasicFrDriver::getFnStateDescription()
{
    return {};
}

QStringList BasicFrDriver::getCountersDescription()
{
    return {};
}

QStringList BasicFrDriver::getParametersDescription()
{
    return {};
}

std::ostream& BasicFrDriver::getDump(int, int, std::ostream& stream)
{
    return stream;
}

void BasicFrDriver::setFont(const QList<EFrDriver::FontTypes>&)
{
    logger->debug(QStringLiteral("Установка шрифта не поддерживается устройством"));
}

void BasicFrDriver::setLineSpacing(int spacing)
{
    if (spacing != -1)
        logger->debug(QStringLiteral("Установка межстрочного интервала не поддерживается устройством"));
}

void BasicFrDriver::resetFont() { }

bool BasicFrDriver::loadFont(const Font&)
{
    return false;
}

void BasicFrDriver::beep()
{
    logger->info(QStringLiteral("Подача звукового сигнала не поддерживается устройством"));
}

void BasicFrDriver::drawerOpen() { }

void BasicFrDriver::cutPaper() { }

QString BasicFrDriver::getSendLinesTemplate() const
{
    return {};
}

bool BasicFrDriver::setDateTime(const QDateTime&)
{
    return false;
}

QDateTime BasicFrDriver::getDateTime()
{
    return QDateTime::currentDateTime();
}

int BasicFrDriver::getHoursDifferenceLimit() const
{
    return -1;
}

bool BasicFrDriver::setCliche(const QList<QString>&)
{
    logger->info(QStringLiteral("Программирование клише не поддерживается устройством"));
    return false;
}

bool BasicFrDriver::setTail(const QList<QString>&)
{
    logger->info(QStringLiteral("Программирование рекламного текста не поддерживается устройством"));
    return false;
}

void BasicFrDriver::setDefaultBaudrate() { }

QString BasicFrDriver::getFrModeString() const
{
    return {};
}

void BasicFrDriver::printLogo(const Logo&) { }

void BasicFrDriver::ping() { }

QMap<EFrDriver::FontTypes, unsigned> BasicFrDriver::getBandWidthFonts()
{
    return {};
}

QString BasicFrDriver::getInn()
{
    return {};
}

bool BasicFrDriver::setGraphicCliche(const QString&)
{
    logger->info(QStringLiteral("Установка графического клише не поддерживается устройством"));
    return false;
}

void BasicFrDriver::clearGraphicCliche() { }

bool BasicFrDriver::useSKNO()
{
    return false;
}

bool BasicFrDriver::isSKNOConnectedToServer()
{
    return false;
}

void BasicFrDriver::maintenance() { }

QJsonObject BasicFrDriver::loadImage(int, const QString&)
{
    return {};
}

void BasicFrDriver::checkPaper() const { }

void BasicFrDriver::setSymbolsMapping(const QMap<QChar, QChar>&) { }

void BasicFrDriver::setProgramCliche(const QList<QString>&) { }

bool BasicFrDriver::isCashDrawerOpened() const
{
    return false;
}

void BasicFrDriver::printCodePageSymbols(int) { }

QString BasicFrDriver::queryData(const QString&) const
{
    return {};
}

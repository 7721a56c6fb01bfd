// Life cycle, clock, drawer, shift.

#include "frspf.h"

#include "command.h"
#include "driverlogger.h"
#include "drivertexts.h"
#include "exceptions.h"
#include "frspfsettings.h"
#include "frutils.h"
#include "modelnames.h"

namespace spfhex {

namespace {

constexpr int firstSpeed = 115200;
constexpr int maxCashierName = 48;
constexpr auto producerCode = "2";

// What the paper holds: characters on a line, header lines, advertising lines, margin.
constexpr unsigned bandWidth = 48;
constexpr unsigned clicheLineCount = 4;
constexpr unsigned tailLineCount = 2;
constexpr unsigned bandMargin = 0;

QString loggerName(const FrSpfSettings* settings)
{
    return QStringLiteral("spf_%1").arg(settings->getDeviceId());
}

} // namespace

FrSpf::FrSpf(AbstractSerialDriver* serialDriver, FrSpfSettings* driverSettings)
    : BasicFrDriver(serialDriver, loggerName(driverSettings), driverSettings)
    , command(new Command(serialDriver, logger))
{
    defaultSpeed = firstSpeed;
    currentSpeed = firstSpeed;
    for (const auto option : {hw::fr::OptionBit1, hw::fr::OptionBit19, hw::fr::OptionUseFn,
             hw::fr::OptionBit10, hw::fr::OptionBit11, hw::fr::OptionBit9, hw::fr::OptionBit36})
        setOption(option, true);
}

FrSpf::~FrSpf() = default;

void FrSpf::portOpen()
{
    // Meant to stand before the opening: a closed port refuses both, so a host opens its device beforehand.
    openPort([this] {
        serial->setFlowControl(QSerialPort::SoftwareControl);
        serial->setDataTerminalReady(false);
    });
}

void FrSpf::portClose()
{
    closePort();
}

void FrSpf::setConnection()
{
    logger->info(QStringLiteral("Соединение с устройством"));
    isPortReady();
    fillDeviceInfo();
    logger->info(QStringLiteral("Соединение установлено"));
}

void FrSpf::init()
{
    logger->info(QStringLiteral("Инициализация ККМ"));
    isPortReady();
    const StateStatus status = command->requestStateStatus();
    if (status.isNotInitialized())
        command->initialize();
    fillDeviceInfo();
    // A document left open by a crash: a complete one is finished, one under way is cancelled.
    if (!status.isDocumentClosed()) {
        if (status.isCloseDocumentRequired())
            command->finishDocument();
        else
            command->cancelDocument();
    }
    logger->info(QStringLiteral("Инициализация выполнена"));
}

void FrSpf::fillDeviceInfo()
{
    const int code = command->getModelVersionNumber();
    const QString name = spf::utils::modelNameByModelCode(code);
    deviceInfo.setProducerCode(QString::fromLatin1(producerCode));
    deviceInfo.setModel(QString::number(code), name);
    deviceInfo.setNumber(command->getSerialNumber());
    deviceInfo.setFirmwareVersion(QString::number(command->getReleaseVersionNumber()));
    deviceInfo.setBandInfo(bandWidth, clicheLineCount, tailLineCount, bandMargin);
    logger->info(deviceInfo.toString());
}

void FrSpf::cashierLogin(const FrUser& user)
{
    cashierName = user.name.left(maxCashierName);
    cashierInn = user.inn;
}

bool FrSpf::setDateTime(const QDateTime& dateTime)
{
    logger->info("Установка даты/времени в ККМ: %1", FrUtils::getTimeAsString(dateTime));
    isPortReady();
    command->setDateTime(dateTime);
    return true;
}

QDateTime FrSpf::getDateTime()
{
    logger->info(QStringLiteral("Получение даты/времени из ККМ"));
    isPortReady();
    QDateTime dateTime = command->getDateTime();
    logger->info("Дата/время ККМ: %1", FrUtils::getTimeAsString(dateTime));
    return dateTime;
}

void FrSpf::drawerOpen()
{
    logger->info(QStringLiteral("Открытие денежного ящика"));
    isPortReady();
    command->openDrawer();
    logDone();
}

bool FrSpf::isCashDrawerOpened() const
{
    logger->info(QStringLiteral("Проверка статуса денежного ящика"));
    isPortReady();
    const bool isOpened = command->isDrawerOpened();
    logDone();
    return isOpened;
}

void FrSpf::openShift()
{
    isPortReady();
    if (command->requestStateStatus().isShiftOpened())
        return;
    logger->info(QStringLiteral("Открытие смены"));
    command->openShift(cashierName, cashierInn);
    logDone();
}

bool FrSpf::isShiftOpen()
{
    logger->info(QStringLiteral("Проверка открытости смены"));
    isPortReady();
    return command->requestStateStatus().isShiftOpened();
}

int FrSpf::getLastShiftNumber()
{
    logger->info(QStringLiteral("Получение номера последней смены"));
    isPortReady();
    const int shift = command->getCurrentShiftNumber();
    logger->info("Команда выполнена, номер последней смены: %1", shift);
    return shift;
}

QString FrSpf::getFrDocNum()
{
    logger->info(QStringLiteral("Получение номера документа"));
    isPortReady();
    return command->getNextFdNumber();
}

int FrSpf::getDefaultPaymentType()
{
    return 0;
}

QMap<EFrDriver::FontTypes, unsigned> FrSpf::getBandWidthFonts()
{
    return {
        {EFrDriver::UndefinedFont, 44},
        {EFrDriver::NormalFont, 44},
        {EFrDriver::DoubleSizeFont, 24},
        {EFrDriver::CondensedFont, 64},
        {EFrDriver::DoubleWidthFont, 24},
        {EFrDriver::SmallFont, 64},
        {EFrDriver::DoubleHeightFont, 44},
        {EFrDriver::InvertedFont, 44},
    };
}

} // namespace spfhex

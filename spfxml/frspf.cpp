#include "frspf.h"

#include <abstractserialdriver.h>
#include <drivertexts.h>
#include <frspfsettings.h>
#include <fruser.h>
#include <mockfactory.h>
#include <modelnames.h>

namespace spfxml {

namespace {

QString loggerName(const FrSpfSettings& settings)
{
    return QStringLiteral("spf_%1").arg(settings.getDeviceId());
}

bool isBlank(const QString& line)
{
    return line.simplified().isEmpty();
}

// A width that no paper has is none, as lines are filled up to it.
unsigned bandWidth(int paperWidth)
{
    constexpr int widestPaper = 1000;
    return paperWidth > 0 && paperWidth <= widestPaper ? static_cast<unsigned>(paperWidth) : 0;
}

} // namespace

FrSpf::FrSpf(AbstractSerialDriver* serialDriver, FrSpfSettings* driverSettings)
    : BasicFrDriver(serialDriver, loggerName(*driverSettings), driverSettings)
    , command(QSharedPointer<SpfFrCommand>::create(serialDriver, logger, driverSettings->getProtocolVer()))
{
    defaultSpeed = QSerialPort::Baud115200;
    currentSpeed = QSerialPort::Baud115200;
    for (const hw::fr::Option option : {hw::fr::OptionBit1, hw::fr::OptionUseFn, hw::fr::OptionBit9,
             hw::fr::OptionBit11, hw::fr::OptionBit10, hw::fr::OptionBit31, hw::fr::OptionBit36})
        BasicFrDriver::setOption(option, true);
}

FrSpf::~FrSpf() = default;

void FrSpf::portOpen()
{
    openPort();
}

void FrSpf::portClose()
{
    closePort();
}

void FrSpf::setConnection()
{
    logger->info(QStringLiteral("Соединение с устройством"));
    isPortReady();
    setDeviceInfo();
    deviceInfoLoaded = true;
    logger->info(QStringLiteral("Соединение установлено"));
}

void FrSpf::init()
{
    logger->info(QStringLiteral("Инициализация ККМ"));
    isPortReady();
    if (!deviceInfoLoaded) {
        setDeviceInfo();
        deviceInfoLoaded = true;
    }
    loadTail();
    logger->info(QStringLiteral("Инициализация выполнена"));
}

void FrSpf::setDeviceInfo()
{
    const SpfStatus status = command->getStatus();
    // The factory number carries the model in its fourth and fifth characters.
    const int modelCode = status.kktNumber.mid(3, 2).toInt();
    deviceInfo.setProducerCode(QStringLiteral("2"));
    deviceInfo.setModel(QString::number(modelCode), spf::utils::modelNameByModelCode(modelCode));
    deviceInfo.setNumber(status.kktNumber);
    deviceInfo.setFirmwareVersion(status.kktFwVersion);
    deviceInfo.setBandInfo(bandWidth(status.paperWidth), 4, 30, 0);
    deviceInfo.setBandWidthInfo(getBandWidthFonts());
    logger->info(QStringLiteral("Текущий статус:\n%1").arg(status.toString()));
    logger->info(deviceInfo.toString());
}

void FrSpf::loadTail()
{
    logger->debug(QStringLiteral("Чтение рекламного текста из настроек"));
    QList<QString> lines
        = MockFactory<hw::ParamManager>::create()->getTailLines(deviceInfo, settings->getDeviceId());
    while (!lines.isEmpty() && isBlank(lines.last()))
        lines.removeLast();
    command->setTail(lines);
}

void FrSpf::cashierLogin(const FrUser& user)
{
    cashierDisplayName
        = user.position.isEmpty() ? user.name : QStringLiteral("%1 %2").arg(user.position, user.name);
    command->setCashierInfo(cashierDisplayName, user.inn);
}

QMap<EFrDriver::FontTypes, unsigned> FrSpf::getBandWidthFonts()
{
    const unsigned width = deviceInfo.getBandWidth();
    // The СП101-Ф prints its double width font in 22 columns whatever its paper is.
    const bool isSp101 = deviceInfo.getModelCode() == QLatin1String("2");
    const double smallFontFactor = width < 48 ? 1.4 : 1.3333333333333333;
    return {
        {EFrDriver::UndefinedFont, width},
        {EFrDriver::NormalFont, width},
        {EFrDriver::DoubleSizeFont, width},
        {EFrDriver::CondensedFont, width},
        {EFrDriver::DoubleWidthFont, isSp101 ? 22 : width / 2},
        {EFrDriver::SmallFont, static_cast<unsigned>(width * smallFontFactor)},
        {EFrDriver::DoubleHeightFont, width},
        {EFrDriver::InvertedFont, width},
    };
}

} // namespace spfxml

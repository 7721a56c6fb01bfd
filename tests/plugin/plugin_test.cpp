#include "abstractfiscalregister.h"
#include "abstractfrdriver.h"
#include "abstractregisterparameters.h"
#include "basicfrsettings.h"
#include "driver/thrown.h"
#include "fakeport.h"

#include <QCborMap>
#include <QCborValue>
#include <QFile>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QRegularExpression>

#include <memory>

using hw::fr::DriverOptions;
using hw::fr::Option;

/// Works the plugin as a host does: through QPluginLoader, properties and the host's interfaces alone.
class PluginTest : public testing::Test
{
protected:
    std::unique_ptr<QObject> makeObject()
    {
        QVariant object;
        EXPECT_TRUE(
            QMetaObject::invokeMethod(loader.instance(), "getObject", Q_RETURN_ARG(QVariant, object)));
        EXPECT_STREQ(object.typeName(), "hw::SpfFiscalRegister*");
        return std::unique_ptr<QObject>(object.value<QObject*>());
    }

    void TearDown() override
    {
        device.reset();
        EXPECT_TRUE(loader.unload());
    }

    AbstractFrDriver* init()
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(device.get(), "init"));
        return qobject_cast<hw::AbstractFiscalRegister*>(device.get())->getLegacyDriver();
    }

    FakePort port;
    QPluginLoader loader{QStringLiteral(SPF_PLUGIN)};
    std::unique_ptr<QObject> device = makeObject();
};

TEST(Metadata, noteOfTheBuiltFile)
{
    QFile file(QStringLiteral(SPF_PLUGIN));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    EXPECT_TRUE(content.contains(".note.qt.metadata"));
    // The note: sizes of its name and of its block, its type, its name, its block.
    const QByteArray name("\x01\0Qtqt-project!", 16);
    const qsizetype start = content.indexOf(name);
    ASSERT_GT(start, 8);
    const QByteArray block = content.mid(start + name.size(), static_cast<unsigned char>(content[start - 4]));

    // The last byte is the one of a plain x86-64 build, without the mark of a debug build.
    const char header[] = {1, QT_VERSION_MAJOR, QT_VERSION_MINOR, 1};
    EXPECT_EQ(block.left(4), QByteArray(header, 4));
    const QString factory = QStringLiteral("SpfFiscalRegisterFactory");
    const QCborMap data{{"name", "spf"}, {"type", "fr"}};
    EXPECT_EQ(QCborValue::fromCbor(block.mid(4)).toMap(), QCborMap({{2, factory}, {3, factory}, {4, data}}));
}

TEST_F(PluginTest, classInfoMakesTheForm)
{
    const QMetaObject* meta = device->metaObject();
    QStringList info;
    for (int i = 0; i < meta->classInfoCount(); ++i)
        info << QStringLiteral("%1=%2").arg(meta->classInfo(i).name(), meta->classInfo(i).value());
    const QRegularExpression hints(QStringLiteral(":info=.*"));
    EXPECT_EQ(info.replaceInStrings(hints, ":info").join('|').toStdString(),
        "deviceId:name=Номер ФР|deviceId:type=num|deviceId:max=19|deviceId:info|speedEnumerate:name=Перебор скорости|"
        "speedEnumerate:type=strEnum|speedEnumerate:strEnum=выкл;вкл|speedEnumerate:info|name=Spf|type=Fr|"
        "displayName=Сервис Плюс Ф|devices=СП402-Ф, СП802-Ф|info=Драйвер фискального регистратора Сервис Плюс|"
        "serialObj:name=Порт|serialObj:type=port|serialObj:info|protocol:name=Протокол|protocol:type=strEnum|"
        "protocol:strEnum=XML;HEX|protocol:info|protocolVer:name=Версия протокола|protocolVer:info");
    EXPECT_EQ(meta->classInfoOffset(), 8);
}

TEST_F(PluginTest, propertiesInOrder)
{
    const QMetaObject* meta = device->metaObject();
    QStringList properties;
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        properties << QStringLiteral("%1 %2%3%4 %5")
                          .arg(property.name(), property.isReadable() ? "r" : "",
                              property.isWritable() ? "w" : "", property.isConstant() ? "c" : "",
                              property.read(device.get()).toString());
    }
    EXPECT_EQ(properties.join('|').toStdString(),
        "hardwareClass rc 64|deviceId rw 0|speedEnumerate rw true|driverOptions w |serialObj rw |"
        "protocol rw XML|protocolVer rw 13.0");
}

TEST_F(PluginTest, answersToItsInterfaceByIdAndByName)
{
    void* const byId = device->qt_metacast("net.velmora.AbstractFiscalRegister/4.5");
    ASSERT_NE(byId, nullptr);
    EXPECT_NE(byId, static_cast<void*>(device.get()));
    EXPECT_EQ(device->qt_metacast("AbstractFiscalRegister"), byId);
    for (const char* name : {"hw::SpfFiscalRegister", "hw::BasicFiscalRegister", "QObject"})
        EXPECT_EQ(device->qt_metacast(name), device.get()) << name;
    EXPECT_EQ(device->qt_metacast("net.velmora.AbstractSerialDevice/4.4.5"), nullptr);
    auto* const fiscalRegister = static_cast<hw::AbstractFiscalRegister*>(byId);
    EXPECT_EQ(fiscalRegister->getPrinter(), nullptr);
    EXPECT_TRUE(fiscalRegister->getUpgradeManager().isNull());
}

TEST_F(PluginTest, tellsTheParametersOfTheProtocol)
{
    auto* const parameters = qobject_cast<hw::AbstractRegisterParameters*>(device.get());
    ASSERT_NE(parameters, nullptr);
    EXPECT_TRUE(parameters->knownParameters().isEmpty());
    EXPECT_FALSE(parameters->assignment(QStringLiteral("6.0"), QString()).has_value());
    device->setProperty("serialObj", QVariant::fromValue<QObject*>(&port));
    device->setProperty("protocol", "HEX");
    init();
    EXPECT_EQ(parameters->knownParameters().size(), 76);
    EXPECT_TRUE(parameters->assignment(QStringLiteral("6.0"), QString()).has_value());
}

TEST_F(PluginTest, protocolDecides)
{
    const std::pair<const char*, const char*> table[]
        = {{"HEX", "spfhex"}, {"XML", "spfxml"}, {"hex", "spfxml"}, {"HEX ", "spfxml"}, {"", "spfxml"}};
    for (const auto& [protocol, family] : table) {
        device.reset();
        EXPECT_TRUE(loader.unload() && !loader.isLoaded()) << "it can be loaded again";
        device = makeObject();
        device->setProperty("serialObj", QVariant::fromValue<QObject*>(&port));
        device->setProperty("protocol", protocol);
        AbstractFrDriver* const driver = init();
        ASSERT_NE(driver, nullptr);
        EXPECT_NE(std::string(typeid(*driver).name()).find(family), std::string::npos) << protocol;
        // An exception of the driver is the host's own class on this side of the boundary.
        EXPECT_EQ(thrown([&] { driver->connect(); }), "FrNoConnectionException: Нет связи");
    }
}

TEST_F(PluginTest, noDriverWithoutASerialDevice)
{
    QObject stranger;
    const QVariant useless[] = {QVariant(), QVariant::fromValue(&stranger), QStringLiteral("/dev/ttyS0")};
    for (const QVariant& serial : useless) {
        device->setProperty("serialObj", QVariant::fromValue<QObject*>(&port));
        device->setProperty("serialObj", serial);
        EXPECT_EQ(init(), nullptr);
    }
    // A pointer of the device's own class is as good as one to QObject.
    device->setProperty("serialObj", QVariant::fromValue(&port));
    EXPECT_EQ(device->property("serialObj").value<QObject*>(), &port);
    EXPECT_NE(init(), nullptr);
}

TEST_F(PluginTest, settingsReachTheDriver)
{
    device->setProperty("serialObj", QVariant::fromValue<QObject*>(&port));
    device->setProperty("deviceId", 25);
    const Option useFn = Option(16);
    const auto setOptions = [&](const DriverOptions& options) {
        EXPECT_TRUE(device->setProperty("driverOptions", QVariant::fromValue(options)));
    };
    setOptions({{useFn, true}, {Option(0x40), true}});
    setOptions({{useFn, false}});
    setOptions({});
    EXPECT_TRUE(device->property("driverOptions").value<DriverOptions>().isEmpty());

    AbstractFrDriver* const driver = init();
    EXPECT_FALSE(driver->useFN());
    EXPECT_EQ(driver->getDeviceInfo().getLoggerName(), "spf_25");
    BasicFrSettings* const settings = driver->getDeviceSettings();
    EXPECT_EQ(settings->getOptions(), DriverOptions({{useFn, false}, {Option(0x40), true}}));
    device->setProperty("deviceId", 3);
    device->setProperty("speedEnumerate", false);
    EXPECT_EQ(settings->property("deviceid"), 3U);
    EXPECT_FALSE(settings->isSpeedEnumerate());
    device->setProperty("protocolVer", "14.0");
    EXPECT_EQ(device->property("protocolVer"), "14.0");
    EXPECT_EQ(makeObject()->property("protocolVer"), "13.0");
}

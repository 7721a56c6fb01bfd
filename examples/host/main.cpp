// A minimal host program: loads the driver plugin, connects to a register and sells one receipt.
//
//   minimalhost PORT [HEX|XML]      PORT is a serial line, a pseudo terminal or tcp:host:port

#include <abstractfiscalregister.h>
#include <abstractfrdriver.h>
#include <exceptions.h>
#include <serialdevicefactory.h>
#include <streamdevice.h>

#include <QCoreApplication>
#include <QPluginLoader>
#include <QTextStream>
#include <QVariant>

#include <memory>

namespace {

QTextStream& err()
{
    static QTextStream stream(stderr);
    return stream;
}

std::unique_ptr<QObject> createDevice(QObject& port, const QString& protocol)
{
    QPluginLoader loader(QStringLiteral(PLUGIN_DIR "/libspf.so"));
    QVariant holder;
    QObject* const factory = loader.instance();
    if (factory == nullptr
        || !QMetaObject::invokeMethod(factory, "getObject", Q_RETURN_ARG(QVariant, holder)))
        throw DriverException(loader.errorString());
    std::unique_ptr<QObject> device(holder.value<QObject*>());
    device->setProperty("serialObj", QVariant::fromValue(&port));
    device->setProperty("protocol", protocol);
    QMetaObject::invokeMethod(device.get(), "init");
    return device;
}

// Whether a close that failed has issued its document: the number of the fiscal drive's last document tells.
// A sale is never repeated while this is not known.
QString verdict(AbstractFrDriver& driver, quint32 numberBefore)
{
    try {
        driver.connect();
        quint32 number = driver.getFnInfo().fnStatus.lastFdNumber;
        if (number == numberBefore) {
            // Nothing of the document may stay behind; what can only be finished is finished here.
            driver.init();
            number = driver.getFnInfo().fnStatus.lastFdNumber;
        }
        if (number == numberBefore)
            return QStringLiteral("the receipt was not issued");
        if (number == numberBefore + 1)
            return QStringLiteral("the receipt was issued, document %1").arg(number);
    } catch (const DriverException&) {
        // It cannot be asked.
    }
    return QStringLiteral("whether the receipt was issued is unknown");
}

void sell(AbstractFrDriver& driver)
{
    const FiscalDocument receipt(hw::fr::CheckSale);
    driver.openShift();
    const quint32 numberBefore = driver.getFnInfo().fnStatus.lastFdNumber;
    try {
        driver.checkOpen(receipt);
        driver.checkAddPosition(FrPosition(QStringLiteral("Хлеб"), 45.50, 2));
        driver.checkTotal();
        driver.checkPay(FrPayment(0, 100.00));
    } catch (const DriverException&) {
        driver.checkCancel();
        throw;
    }
    try {
        driver.checkClose(receipt);
        driver.checkWaitForPrint();
    } catch (const DriverException&) {
        err() << verdict(driver, numberBefore) << Qt::endl;
        throw;
    }
}

void work(AbstractFrDriver& driver)
{
    driver.portOpen();
    driver.connect();
    driver.init();
    driver.cashierLogin({QStringLiteral("Иванова А. П."), QString(), QStringLiteral("772100000008")});
    sell(driver);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto port = devices::createSerialDevice(arguments.value(1));
    if (!port) {
        err() << "usage: minimalhost PORT [HEX|XML]" << Qt::endl;
        return 2;
    }
    try {
        // The line is opened before the driver's portOpen, which sets it up first.
        port->open();
        const std::unique_ptr<QObject> device
            = createDevice(*port, arguments.value(2, QStringLiteral("XML")));
        AbstractFrDriver* const driver
            = qobject_cast<hw::AbstractFiscalRegister*>(device.get())->getLegacyDriver();
        try {
            work(*driver);
        } catch (const DriverException&) {
            driver->portClose();
            throw;
        }
        driver->portClose();
    } catch (const DriverException& failure) {
        err() << failure.tr().ru() << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << "sold" << Qt::endl;
    return 0;
}

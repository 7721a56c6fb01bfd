// A minimal host program: loads the driver plugin, connects to a register, sells one receipt and tells what
// has become of it.
//
//   minimalhost PORT [HEX|XML]      PORT is a serial line, a pseudo terminal or tcp:host:port

#include <abstractfiscalregister.h>
#include <abstractfrdriver.h>
#include <exceptions.h>
#include <receiptcheck.h>
#include <receipterror.h>
#include <receiptissuer.h>
#include <serialdevicefactory.h>
#include <streamdevice.h>

#include <QCoreApplication>
#include <QPluginLoader>
#include <QScopeGuard>
#include <QTextStream>
#include <QVariant>

#include <memory>
#include <optional>

namespace {

constexpr const char* saleText = R"({
    "type": "sell",
    "taxationType": "osn",
    "operator": {"name": "Иванова А. П.", "vatin": "772100000040"},
    "items": [{"name": "Хлеб", "price": 45.50, "quantity": 2, "amount": 91.00, "tax": {"type": "vat10"}}],
    "payments": [{"type": "cash", "sum": 100.00}]
})";

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

// What is wrong with the receipt, and what will be printed otherwise, is known before the register is
// touched.
std::optional<receipt::Receipt> lawfulReceipt(const QString& protocol)
{
    const bool isHex = protocol == QStringLiteral("HEX");
    try {
        const receipt::CheckedReceipt checked = receipt::checkedReceipt(
            saleText, {isHex ? receipt::Protocol::Hex : receipt::Protocol::Xml, QDate::currentDate()});
        for (const receipt::Finding& finding : checked.findings)
            err() << finding.text() << Qt::endl;
        if (!checked.hasErrors())
            return checked.receipt;
    } catch (const receipt::ReceiptError& error) {
        err() << error.what() << Qt::endl;
    }
    return std::nullopt;
}

// What a verdict on a disturbed sale has to know of the line. A host whose register no other program can work
// declares it exclusive as well.
sale::RegisterLine lineOf(const devices::StreamDevice& port, const QString& protocol)
{
    const bool isHex = protocol == QStringLiteral("HEX");
    return {isHex ? receipt::Protocol::Hex : receipt::Protocol::Xml, false,
        [&port] { return port.soleConnection(); }};
}

// A sale is repeated only when the verdict says that it was not issued. A host that goes on after a verdict
// that is not final keeps result.before and
// result.ours and calls sale::settle after its next connect.
bool sell(AbstractFrDriver& driver, const sale::RegisterLine& line, const receipt::Receipt& receipt)
{
    const sale::IssueResult result = sale::issueReceipt(driver, receipt, {line});
    if (result.failure)
        err() << result.failure->text << Qt::endl;
    if (result.verdict != sale::Outcome::None)
        QTextStream(stdout) << sale::verdictText(result.verdict) << Qt::endl;
    return result.isIssued();
}

bool work(AbstractFrDriver& driver, const sale::RegisterLine& line, const receipt::Receipt& receipt)
{
    driver.portOpen();
    driver.connect();
    driver.init();
    return sell(driver, line, receipt);
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
    const QString protocol = arguments.value(2, QStringLiteral("XML"));
    const std::optional<receipt::Receipt> receipt = lawfulReceipt(protocol);
    if (!receipt)
        return 2;
    try {
        // The line is opened before the driver's portOpen, which sets it up first.
        port->open();
        const std::unique_ptr<QObject> device = createDevice(*port, protocol);
        AbstractFrDriver* const driver
            = qobject_cast<hw::AbstractFiscalRegister*>(device.get())->getLegacyDriver();
        const auto closePort = qScopeGuard([driver] { driver->portClose(); });
        return work(*driver, lineOf(*port, protocol), *receipt) ? 0 : 1;
    } catch (const DriverException& failure) {
        err() << failure.tr().ru() << Qt::endl;
        return 1;
    }
}

#include "programs.h"

#include "abstractfiscalregister.h"
#include "abstractfrdriver.h"
#include "serialportdevice.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QPluginLoader>

#include <gtest/gtest.h>

#include <csignal>

namespace {

QString example(const char* name)
{
    return QStringLiteral(FRSPF_EXAMPLES "/") + QLatin1String(name);
}

QStringList words(const QString& line)
{
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

Result onHex(const Emulator& emulator, const QStringList& command, const QString& options = {})
{
    return runFrctl(
        words(QStringLiteral("--protocol HEX --port ") + emulator.port()) + words(options) + command);
}

QStringList typesOf(const QList<QJsonObject>& journal)
{
    QStringList types;
    for (const QJsonObject& document : journal)
        types.append(document.value(QStringLiteral("type")).toString());
    return types;
}

/// A receipt as a host program of its own makes it, operation by operation.
void issue(AbstractFrDriver& driver, hw::fr::CheckType type)
{
    FiscalDocument document(type);
    document.setCashierName(QStringLiteral("Иванова"));
    FrPosition position(QStringLiteral("Чай чёрный"), 50.0, 2.0);
    position.setTaxCode(1);
    position.setPaymentObject(1);
    driver.checkOpen(document);
    driver.checkAddPosition(position);
    driver.checkTotal();
    driver.checkPay(FrPayment(0, 150.0));
    driver.checkClose(document);
    driver.checkWaitForPrint();
}

TEST(Plugin, SellsAndReturnsOverHex)
{
    const Emulator emulator;
    devices::SerialPortDevice line(emulator.port());
    ASSERT_TRUE(line.open());
    QVariant object;
    QObject* const factory = QPluginLoader(QStringLiteral(SPF_PLUGIN)).instance();
    ASSERT_TRUE(factory != nullptr
        && QMetaObject::invokeMethod(factory, "getObject", Q_RETURN_ARG(QVariant, object)));
    const std::unique_ptr<QObject> device(object.value<QObject*>());
    device->setProperty("serialObj", QVariant::fromValue<QObject*>(&line));
    device->setProperty("protocol", QStringLiteral("HEX"));
    ASSERT_TRUE(QMetaObject::invokeMethod(device.get(), "init"));
    AbstractFrDriver& driver = *qobject_cast<hw::AbstractFiscalRegister*>(device.get())->getLegacyDriver();
    driver.portOpen();
    driver.connect();
    driver.init();
    driver.cashierLogin({QStringLiteral("Иванова"), QString(), QStringLiteral("772100000008")});
    driver.openShift();
    issue(driver, hw::fr::CheckSale);
    issue(driver, hw::fr::CheckSaleReturn);
    driver.portClose();
    EXPECT_FALSE(line.isOpen());

    QList<QJsonObject> receipts;
    for (const QJsonObject& document : emulator.journal()) {
        if (document.contains(QStringLiteral("items")))
            receipts.append(document);
    }
    EXPECT_EQ(typesOf(receipts), (QStringList{QStringLiteral("sell"), QStringLiteral("sellReturn")}));
    for (const QJsonObject& receipt : receipts) {
        EXPECT_EQ(receipt.value(QStringLiteral("total")), QStringLiteral("100.00"));
        EXPECT_EQ(receipt.value(QStringLiteral("change")), QStringLiteral("50.00"));
    }
    EXPECT_EQ(emulator.tape().count(QStringLiteral("Чай чёрный")), 2);
}

TEST(Frctl, WorksARegisterThroughADay)
{
    const Emulator emulator;
    struct Row
    {
        QStringList command;
        QByteArray output;
    };
    for (const Row& row :
        {Row{{QStringLiteral("status")}, "shift: closed"}, {{QStringLiteral("open-shift")}, "shift opened"},
            {{QStringLiteral("cash-in"), QStringLiteral("1000")}, "cash in: 1000.00"},
            {{QStringLiteral("sell"), example("sale.json")}, "total 305.23, paid 500.00, change 194.77"},
            {{QStringLiteral("sell"), example("marked-sale.json")}, "marking code 0104600000000015"},
            {{QStringLiteral("refund"), example("return.json")}, "total 64.90"},
            {{QStringLiteral("print"), example("text.txt")}, "4 lines printed"},
            {{QStringLiteral("cash-out"), QStringLiteral("200.50")}, "cash out: 200.50"},
            {words(QStringLiteral("drawer open")), "drawer opened"},
            {words(QStringLiteral("drawer state")), "open"}, {words(QStringLiteral("time get")), "20"},
            {words(QStringLiteral("mark 0104600000000015215!Ab1cD93dGVz")), "result of the check"}}) {
        const Result result = onHex(emulator, row.command);
        EXPECT_EQ(result.status, 0) << row.command.constFirst().toStdString() << ": "
                                    << result.errors.constData();
        EXPECT_TRUE(result.output.contains(row.output)) << result.output.constData();
    }
    const QList<QJsonObject> journal = emulator.journal();
    ASSERT_EQ(typesOf(journal).filter(QStringLiteral("sell")),
        (QStringList{QStringLiteral("sell"), QStringLiteral("sell"), QStringLiteral("sellReturn")}));
    const QJsonObject marked = journal.at(typesOf(journal).indexOf(QStringLiteral("sellReturn")) - 1);
    const QJsonArray items = marked.value(QStringLiteral("items")).toArray();
    EXPECT_EQ(items.at(0).toObject().value(QStringLiteral("markingCode")),
        QStringLiteral("0104600000000015215!Ab1cD\u001d93dGVz"));
    EXPECT_EQ(items.at(1).toObject().value(QStringLiteral("agent")).toObject().value(QStringLiteral("1226")),
        QStringLiteral("7721000016"));
    EXPECT_EQ(marked.value(QStringLiteral("payments")),
        (QJsonObject{{QStringLiteral("cash"), QStringLiteral("85.00")},
            {QStringLiteral("electronically"), QStringLiteral("300.00")}}));
    const QString tape = emulator.tape();
    for (const char* text : {"Хлеб Бородинский", "Спасибо за покупку!", "Молоко 3,2 %", "магазин закрыт"})
        EXPECT_TRUE(tape.contains(QString::fromUtf8(text))) << text;
    const Result refusal = onHex(emulator, {QStringLiteral("cash-out"), QStringLiteral("5000")});
    EXPECT_EQ(refusal.status, 1);
    EXPECT_TRUE(refusal.errors.contains("Отрицательный результат\nfrctl: the document was cancelled"))
        << refusal.errors.constData();
    const Result json = onHex(emulator, {QStringLiteral("status")}, QStringLiteral("--json"));
    EXPECT_TRUE(QJsonDocument::fromJson(json.output).object().value(QStringLiteral("shiftOpen")).toBool())
        << json.output.constData();
}

struct Failure
{
    const char* name;
    const char* emulator;
    QStringList command;
    int status;
    const char* errors;
};

void PrintTo(const Failure& failure, std::ostream* stream)
{
    *stream << failure.name;
}

class FrctlFailure : public testing::TestWithParam<Failure>
{
};

TEST_P(FrctlFailure, IsToldAndLeavesThePortClosed)
{
    const Failure& failure = GetParam();
    const Emulator emulator(words(QString::fromUtf8(failure.emulator)));
    const Result result = onHex(emulator, failure.command, QStringLiteral("--log-level info --json"));
    EXPECT_EQ(result.status, failure.status);
    EXPECT_TRUE(result.errors.contains(failure.errors)) << result.errors.constData();
    const bool wasOpened = result.errors.contains("Порт открыт");
    EXPECT_EQ(wasOpened, failure.status == 1);
    EXPECT_EQ(result.errors.contains("Порт закрыт"), wasOpened);
    const QJsonObject json = QJsonDocument::fromJson(result.output).object();
    EXPECT_FALSE(json.value(QStringLiteral("error")).toString().isEmpty()) << result.output.constData();
    EXPECT_TRUE(emulator.journal().isEmpty() || failure.status == 1);
    EXPECT_TRUE(devices::SerialPortDevice(emulator.port()).open());
}

INSTANTIATE_TEST_SUITE_P(Cases, FrctlFailure,
    testing::Values(
        Failure{"SilentLine", "--faults silence@1+", {QStringLiteral("status")}, 1, "Нет связи с ФР"},
        Failure{"NotJson", "", {QStringLiteral("sell"), example("text.txt")}, 2, "line 1: "},
        Failure{"NoFile", "", {QStringLiteral("sell"), QStringLiteral("none.json")}, 2, "none.json: "},
        Failure{"WrongKind", "", {QStringLiteral("refund"), example("sale.json")}, 2, "type: is no return"},
        Failure{"Refusal", "", {QStringLiteral("cash-out"), QStringLiteral("5000")}, 1,
            "frctl: Функция невыполнима при данном статусе ККТ\n"},
        Failure{"NoPaper", "--paper-out", {QStringLiteral("print"), example("text.txt")}, 1, "умаг"}),
    [](const auto& test) { return test.param.name; });

TEST(Frctl, PortThatIsNotThere)
{
    const Result result = runFrctl(words(QStringLiteral("--protocol HEX --port /dev/frspf-none status")));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.startsWith("frctl: port /dev/frspf-none cannot be opened"))
        << result.errors.constData();
}

TEST(Frctl, InterruptionClosesThePort)
{
    const Emulator emulator(words(QStringLiteral("--faults silence@1+")));
    for (const int signal : {SIGINT, SIGTERM}) {
        const Result result = interruptFrctl(words(QStringLiteral("--protocol HEX --log-level info --port ")
                                                 + emulator.port() + QStringLiteral(" status")),
            "Соединение с устройством", signal);
        EXPECT_EQ(result.status, 130);
        EXPECT_TRUE(result.errors.contains("Порт закрыт")) << result.errors.constData();
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("frdriver.*=false"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

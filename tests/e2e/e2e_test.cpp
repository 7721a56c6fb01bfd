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

Result run(const Emulator& emulator, const QString& protocol, const QStringList& command,
    const QString& options = {})
{
    return runFrctl(
        words(QStringLiteral("--protocol %1 --port %2 %3").arg(protocol, emulator.port(), options))
        + command);
}

Result onHex(const Emulator& emulator, const QStringList& command, const QString& options = {})
{
    return run(emulator, QStringLiteral("HEX"), command, options);
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

/// A register and the protocol over which it is worked.
class Day : public testing::TestWithParam<const char*>
{
protected:
    /// Runs the command, which must end well and say the text.
    void expect(const QStringList& command, const QByteArray& text)
    {
        const Result result = run(emulator, protocol, command);
        EXPECT_EQ(result.status, 0) << command.join(QLatin1Char(' ')).toStdString() << ": "
                                    << result.errors.constData();
        EXPECT_TRUE(result.output.contains(text)) << result.output.constData();
    }

    QJsonObject json(const QString& command)
    {
        const Result result = run(emulator, protocol, words(command), QStringLiteral("--json"));
        EXPECT_EQ(result.status, 0) << result.errors.constData();
        return QJsonDocument::fromJson(result.output).object();
    }

    const Emulator emulator;
    const QString protocol = QString::fromUtf8(GetParam());
};

double sumOf(const QJsonObject& counters, const char* type)
{
    double sum = 0;
    for (const QJsonValue& value : counters.value(QLatin1String(type)).toObject())
        sum += value.toDouble();
    return sum;
}

TEST_P(Day, CountersAddUpWithWhatWasSold)
{
    expect({QStringLiteral("status")}, "shift: closed");
    expect({QStringLiteral("open-shift")}, "shift opened");
    expect({QStringLiteral("open-shift")}, "open already");
    expect(words(QStringLiteral("cash-in 1000")), "cash in: 1000.00");
    expect({QStringLiteral("sell"), example("sale.json")}, "total 305.23, paid 500.00, change 194.77");
    expect({QStringLiteral("sell"), example("marked-sale.json")}, "marking code 0104600000000015");
    expect({QStringLiteral("refund"), example("return.json")}, "total 64.90");
    expect({QStringLiteral("x-report")}, "X report printed");
    const QJsonObject counters = json(QStringLiteral("counters"));
    const QJsonObject sales = counters.value(QStringLiteral("sell")).toObject();
    EXPECT_DOUBLE_EQ(sales.value(QStringLiteral("cash")).toDouble(), 305.23 + 85.0);
    EXPECT_DOUBLE_EQ(sales.value(QStringLiteral("electronically")).toDouble(), 300.0);
    EXPECT_DOUBLE_EQ(sumOf(counters, "sell"), 690.23);
    EXPECT_DOUBLE_EQ(sumOf(counters, "sellReturn"), 64.9);
    EXPECT_EQ(counters.value(QStringLiteral("cashIn")).toObject(),
        (QJsonObject{{QStringLiteral("count"), 1}, {QStringLiteral("sum"), 1000.0}}));

    expect(words(QStringLiteral("cash-out 200.50")), "cash out: 200.50");
    const QJsonArray registers
        = json(QStringLiteral("registers end")).value(QStringLiteral("registers")).toArray();
    const auto value = [&](int position) {
        return registers.at(position).toObject().value(QStringLiteral("value")).toDouble();
    };
    EXPECT_DOUBLE_EQ(value(1), 1000.0 + 390.23 - 64.9 - 200.5);
    EXPECT_EQ(value(3), 2);
    EXPECT_EQ(value(11), 1);
    EXPECT_DOUBLE_EQ(value(27), 200.5);
    expect({QStringLiteral("z-report")}, "shift closed");
    expect({QStringLiteral("z-report")}, "closed already");
    const QJsonObject after = json(QStringLiteral("counters"));
    EXPECT_EQ(sumOf(after, "sell") + sumOf(after, "sellReturn"), 0);
    EXPECT_EQ(after.value(QStringLiteral("cashOut")).toObject().value(QStringLiteral("sum")).toDouble(), 0);
    EXPECT_FALSE(json(QStringLiteral("status")).value(QStringLiteral("shiftOpen")).toBool());
    EXPECT_EQ(typesOf(emulator.journal()).filter(QStringLiteral("sell")),
        (QStringList{QStringLiteral("sell"), QStringLiteral("sell"), QStringLiteral("sellReturn")}));
}

TEST_P(Day, SettingsAndTextsReachTheRegister)
{
    expect({QStringLiteral("registration"), QStringLiteral("--tax-systems"), QStringLiteral("osn,usnIncome")},
        "registered: ОСН, УСН доход");
    const qint64 last = json(QStringLiteral("fn")).value(QStringLiteral("lastDocument")).toInteger();
    expect({QStringLiteral("print-document"), QString::number(last)}, "printed");
    expect({QStringLiteral("print-last-document")}, "printed");
    expect({QStringLiteral("header"), example("header.txt")}, "lines programmed");
    expect({QStringLiteral("print"), example("text.txt")}, "4 lines printed");
    expect(words(QStringLiteral("drawer open")), "drawer opened");
    expect(words(QStringLiteral("drawer state")), "open");
    expect(words(QStringLiteral("time get")), "20");
    expect(words(QStringLiteral("mark 0104600000000015215!Ab1cD93dGVz")), "result of the check");
    const QString tape = emulator.tape();
    for (const char* text : {"Продукты на Примерной", "магазин закрыт"})
        EXPECT_TRUE(tape.contains(QString::fromUtf8(text))) << text;
    EXPECT_EQ(tape.count(QStringLiteral("ОТЧЕТ ОБ ИЗМЕНЕНИИ РЕГИСТРАЦИИ")), 3);
}

TEST_P(Day, ReceiptsArriveAsWritten)
{
    expect({QStringLiteral("sell"), example("marked-sale.json")}, "receipt issued");
    const QJsonObject marked = emulator.journal().constLast();
    EXPECT_EQ(marked.value(QStringLiteral("customer")), QStringLiteral("+79990001122"));
    EXPECT_EQ(marked.value(QStringLiteral("cashierInn")), QStringLiteral("772100000008"));
    // The HEX driver has no such requisites.
    if (protocol == QStringLiteral("XML")) {
        const QJsonObject buyer{{QStringLiteral("1227"), QStringLiteral("ООО Покупатель")},
            {QStringLiteral("1228"), QStringLiteral("7721000023")}};
        EXPECT_EQ(marked.value(QStringLiteral("requisites")),
            (QJsonObject{
                {QStringLiteral("1192"), QStringLiteral("ЗАКАЗ-17")}, {QStringLiteral("1256"), buyer}}));
    }
    const QJsonArray items = marked.value(QStringLiteral("items")).toArray();
    EXPECT_EQ(items.at(0).toObject().value(QStringLiteral("markingCode")),
        QStringLiteral("0104600000000015215!Ab1cD\u001d93dGVz"));
    EXPECT_EQ(items.at(1).toObject().value(QStringLiteral("agent")).toObject().value(QStringLiteral("1226")),
        QStringLiteral("7721000016"));
    EXPECT_EQ(marked.value(QStringLiteral("payments")),
        (QJsonObject{{QStringLiteral("cash"), QStringLiteral("85.00")},
            {QStringLiteral("electronically"), QStringLiteral("300.00")}}));
    EXPECT_TRUE(emulator.tape().contains(QStringLiteral("Молоко 3,2 %")));
    const Result refusal = run(emulator, protocol, words(QStringLiteral("cash-out 5000")));
    EXPECT_EQ(refusal.status, 1);
    // Over XML there is nothing to cancel after the one request that a document is.
    const char* const outcome = protocol == QStringLiteral("HEX")
        ? "Отрицательный результат\nfrctl: the document was cancelled"
        : "it may have been issued";
    EXPECT_TRUE(refusal.errors.contains(outcome)) << refusal.errors.constData();
}

INSTANTIATE_TEST_SUITE_P(
    Protocols, Day, testing::Values("HEX", "XML"), [](const auto& test) { return std::string(test.param); });

TEST(Frctl, HexParametersAreListedAndWritten)
{
    const Emulator emulator;
    const Result list = onHex(emulator, words(QStringLiteral("params list")), QStringLiteral("--json"));
    const QJsonArray entries
        = QJsonDocument::fromJson(list.output).object().value(QStringLiteral("parameters")).toArray();
    ASSERT_EQ(entries.size(), 76);
    for (const QJsonValue& entry : entries)
        EXPECT_FALSE(entry.toObject().value(QStringLiteral("caption")).toString().isEmpty());
    EXPECT_EQ(onHex(emulator, words(QStringLiteral("params set 6.0=1 5=0"))).status, 0);
    EXPECT_EQ(onHex(emulator, words(QStringLiteral("params get наличных логотип"))).output,
        "6.0 Контроль наличных: 1\n5.0 Логотип компании: 0\n");
    const Result refusal = onHex(emulator, words(QStringLiteral("params set 50=1")));
    EXPECT_EQ(refusal.status, 1);
    EXPECT_TRUE(refusal.errors.contains("frctl: a parameter was refused")) << refusal.errors.constData();
}

TEST(Frctl, XmlParametersAreListedAndWritten)
{
    const Emulator emulator;
    const auto frctl = [&emulator](const char* command, const char* options = "") {
        return run(
            emulator, QStringLiteral("XML"), words(QString::fromUtf8(command)), QLatin1String(options));
    };
    const QJsonArray entries = QJsonDocument::fromJson(frctl("params list", "--json").output)
                                   .object()
                                   .value(QStringLiteral("parameters"))
                                   .toArray();
    ASSERT_EQ(entries.size(), 51);
    for (const QJsonValue& entry : entries)
        EXPECT_FALSE(entry.toObject().value(QStringLiteral("id")).toString().isEmpty());
    EXPECT_EQ(frctl("params defaults").status, 0);
    EXPECT_EQ(frctl("params set OFD.OFD.OFD_Host=ofd.a.example OFD.OFD.OFD_Port=7").status, 0);
    EXPECT_EQ(frctl("params get OFD.OFD.OFD_Host").output, "OFD.OFD.OFD_Host Хост ОФД: ofd.a.example\n");
    const Result refusal = frctl("params set OFD.OFD.OFD_Port=8 OFD.OFD.None=1");
    EXPECT_EQ(refusal.status, 1);
    EXPECT_TRUE(refusal.errors.contains("nothing is written")) << refusal.errors.constData();
    EXPECT_TRUE(frctl("params get OFD.OFD.OFD_Port").output.endsWith(": 7\n"));
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

// Answers of a register on the XML protocol, through the exchange and every parser behind it.
//
// Input: four operations, mode, then the answers with zero bytes between them, one a request. An answer that
// is not raw is put into the envelope of an answer to that request, as its data or as the fields of its head.

#include "harness.h"

#include "driverlogger.h"
#include "exceptions.h"
#include "frspfsettings.h"
#include "mockfactory.h"
#include "serialdriverwrapper.h"
#include "spfxml/frspf.h"

#include <iterator>

namespace {

using spfxml::SpfFrCommand;

enum Mode {
    Wrapped = 1,
    Head = 2,
    Pieces = 4,
    Late = 8,
    Noisy = 16,
    Broken = 32,
    Escaped = 64,
    Merged = 128
};

/// The ids of requests are known beforehand, so that a raw answer can hold them.
class FixedIds : public SpfFrCommand
{
public:
    using SpfFrCommand::SpfFrCommand;
    QByteArray getUuid() const override { return QByteArrayLiteral("{1}"); }
};

class FixedTime : public CurrentTime
{
public:
    QDateTime getCurrentDateTime() const override { return QDate(2024, 3, 1).startOfDay(); }
};

class Driver : public spfxml::FrSpf
{
public:
    Driver(AbstractSerialDriver* transport, FrSpfSettings* driverSettings)
        : FrSpf(transport, driverSettings)
    {
        command.reset(new FixedIds(transport, logger, QStringLiteral("13.0")));
    }
    SpfFrCommand& commands() { return *command; }
};

class Device
{
public:
    Device(unsigned mode, const QByteArray& answers)
        : m_mode(mode)
        , m_answers(answers.split('\0'))
    {
    }

    QByteArray answer()
    {
        if (m_answers.isEmpty())
            return {};
        // The last answer is given to all requests that follow.
        const QByteArray text
            = (m_mode & Merged) != 0 && m_answers.size() == 1 ? m_answers.first() : m_answers.takeFirst();
        QByteArray before;
        if ((m_mode & Late) != 0)
            before += wrapped("{0}", text) + QByteArray(200, ' ');
        if ((m_mode & Noisy) != 0)
            before += QByteArrayLiteral("\xFF\x7F U\xAA");
        return before + ((m_mode & Wrapped) != 0 ? wrapped("{1}", text) : text);
    }

private:
    QByteArray wrapped(const QByteArray& id, const QByteArray& text) const
    {
        const bool isHead = (m_mode & Head) != 0;
        const QByteArray head = isHead ? text : QByteArrayLiteral("<Result>0</Result>");
        QByteArray data = isHead ? QByteArray() : text;
        data = (m_mode & Escaped) != 0 ? QString::fromUtf8(data).toHtmlEscaped().toUtf8()
                                       : "<![CDATA[" + data + "]]>";
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><ArmResponse><ResponseBody><RequestId>" + id
            + "</RequestId>" + head + "</ResponseBody><ResponseData>" + data
            + "</ResponseData></ArmResponse>";
    }

    const unsigned m_mode;
    QList<QByteArray> m_answers;
};

template <auto Operation>
void ask(Driver& driver)
{
    (driver.commands().*Operation)();
}

template <auto Operation>
void call(Driver& driver)
{
    (driver.*Operation)();
}

void sell(Driver& driver)
{
    driver.checkOpen(FiscalDocument());
    FrPosition position(QStringLiteral("Молоко"), 10.0, 2.0);
    position.setMarkingCode(QStringLiteral("0104600000000015215"), MarkCommon);
    driver.checkMarkingCode({1, position.getMarkingCode(), 2.0, 0}, false);
    driver.checkAddPosition(position);
    driver.checkPay({0, 20.0});
    driver.checkClose(FiscalDocument());
}

constexpr void (*operations[])(Driver& driver) = {[](Driver&) {}, ask<&SpfFrCommand::getStatus>,
    ask<&SpfFrCommand::getShiftStatus>, ask<&SpfFrCommand::getDateTime>,
    ask<&SpfFrCommand::getCashDrawerStatus>, ask<&SpfFrCommand::getParameters>,
    ask<&SpfFrCommand::getCashInDrawer>, ask<&SpfFrCommand::getAllTaxSystems>, ask<&SpfFrCommand::openDrawer>,
    [](Driver& driver) { driver.commands().getCheckCounters(EFrDriver::SaleCounters); },
    [](Driver& driver) { driver.commands().getMoneyCounters(hw::fr::CheckCashIn); },
    [](Driver& driver) { driver.commands().getMoneyCounters(hw::fr::CheckCashOut); },
    [](Driver& driver) {
        driver.checkMarkingCode({1, QStringLiteral("0104600000000015215"), 1.0, 0}, true);
    },
    [](Driver& driver) { driver.getMoneyCounters(hw::fr::CheckCashOut); },
    [](Driver& driver) { driver.getCheckCounters(hw::fr::CheckSaleReturn); },
    [](Driver& driver) { driver.setCliche({QStringLiteral("Магазин")}); },
    [](Driver& driver) { driver.setDateTime(QDate(2024, 3, 1).startOfDay()); },
    [](Driver& driver) { driver.registration({hw::fr::common::TaxSystemType(1)}, {}, {}, {}, {}); }, sell,
    call<&Driver::connect>, call<&Driver::init>, call<&Driver::setDefaults>, call<&Driver::zReport>,
    call<&Driver::xReport>, call<&Driver::getDeviceStateDescription>, call<&Driver::getFnStateDescription>,
    call<&Driver::getCountersDescription>, call<&Driver::getParametersDescription>,
    call<&Driver::getKkmRegisterBeg>, call<&Driver::getKkmRegisterEnd>, call<&Driver::openShift>,
    call<&Driver::accountingReport>, call<&Driver::getFnInfo>, call<&Driver::getDefaultTaxSystem>,
    call<&Driver::isCashDrawerOpened>, call<&Driver::printLastFnDocument>, call<&Driver::clearMarkingCodes>};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    fuzz::prepare();
    FixedTime time;
    MockFactory<CurrentTime>::mocked = &time;
    fuzz::Input input(data, size);
    const unsigned calls[] = {input.take(), input.take(), input.take(), input.take()};
    const unsigned mode = input.take();
    Device device(mode, input.rest());
    fuzz::Line line([&device](const QByteArray&) { return device.answer(); });
    line.isBroken = (mode & Broken) != 0;
    if ((mode & Pieces) != 0)
        line.portion = 7;
    SerialDriverWrapper transport(&line);
    FrSpfSettings settings;
    Driver driver(&transport, &settings);
    driver.portOpen();
    for (const unsigned number : calls) {
        try {
            operations[number % std::size(operations)](driver);
        } catch (const DriverException&) {
            // The host is told, as the contract says; any other exception ends the program.
        }
    }
    MockFactory<CurrentTime>::mocked = nullptr;
    return 0;
}

// Answers of a register on the HEX protocol, through the exchange and every parser behind it.
//
// Input: four operations, mode, then the answers. Framed answers stand on lines, one a request; otherwise the
// bytes are what comes in after the first request.

#include "harness.h"

#include "exceptions.h"
#include "frspfsettings.h"
#include "numeric.h"
#include "serialdriverwrapper.h"
#include "spfhex/command.h"
#include "spfhex/frame.h"
#include "spfhex/frspf.h"

#include <iterator>

namespace {

using spfhex::Command;

enum Mode { Framed = 1, Good = 2, Echoed = 4, Busy = 8, Noisy = 16, Broken = 32, OnEnquiry = 64, Late = 128 };

/// Every input begins with the same packet id.
class FirstId : public Command
{
public:
    static void reset() { commandId = 0x1F; }
};

class Driver : public spfhex::FrSpf
{
public:
    using FrSpf::FrSpf;
    Command& commands() { return *command; }
};

class Device
{
public:
    Device(unsigned mode, const QByteArray& answers)
        : m_mode(mode)
        , m_answers((mode & Framed) != 0 ? answers.split('\n') : QList<QByteArray>{answers})
    {
    }

    QByteArray answer(const QByteArray& request)
    {
        if (request.startsWith(static_cast<char>(spfhex::frame::Enq)))
            return std::exchange(m_waiting, {});
        if (m_answers.isEmpty())
            return {};
        const QByteArray text = m_answers.takeFirst();
        if ((m_mode & Framed) == 0 || !request.startsWith(static_cast<char>(spfhex::frame::Stx)))
            return text;
        const QByteArray bytes = surrounded(request, framed(request, text, 0));
        return (m_mode & OnEnquiry) == 0 ? bytes : (m_waiting = bytes, QByteArray());
    }

private:
    QByteArray framed(const QByteArray& request, const QByteArray& text, int age) const
    {
        QByteArray body(1, static_cast<char>(request.at(5) - age));
        body += request.mid(6, 2) + ((m_mode & Good) != 0 ? "00" : "") + text + '\x03';
        const QByteArray check(1, static_cast<char>(numeric::calcLRC(body)));
        return '\x02' + body + check.toHex().toUpper();
    }

    QByteArray surrounded(const QByteArray& request, const QByteArray& frame) const
    {
        QByteArray before;
        if ((m_mode & Echoed) != 0)
            before += request;
        if ((m_mode & Late) != 0)
            before += framed(request, "00", 1);
        if ((m_mode & Busy) != 0)
            before += QByteArray(3, static_cast<char>(spfhex::frame::Ack));
        if ((m_mode & Noisy) != 0)
            before += QByteArrayLiteral("\xFF\x00\x55");
        return before + frame;
    }

    const unsigned m_mode;
    QList<QByteArray> m_answers;
    QByteArray m_waiting;
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

constexpr void (*operations[])(Driver& driver)
    = {[](Driver&) {}, [](Driver& driver) { driver.commands().receiveAnswer(QByteArrayLiteral("\x1B\x42")); },
        ask<&Command::requestStateStatus>, ask<&Command::initialize>, ask<&Command::getDateTime>,
        ask<&Command::isDrawerOpened>, ask<&Command::getTaxSystems>, ask<&Command::getFnState>,
        ask<&Command::getLastFdNumber>, ask<&Command::getLastFdDateTime>, ask<&Command::getFnNumber>,
        ask<&Command::getFnExpirationDate>, ask<&Command::getAvailableRegistrationsCount>,
        ask<&Command::getRegistrationsCount>, ask<&Command::getOfdConnectionStatus>,
        ask<&Command::getFirstUnsendFdNumber>, ask<&Command::getFirstUnsendFdDateTime>,
        ask<&Command::getFfdVersion>, ask<&Command::getIsmNotSentCount>, ask<&Command::getFnVersion>,
        ask<&Command::getModelVersionNumber>, ask<&Command::getReleaseVersionNumber>,
        ask<&Command::getCurrentShiftNumber>, ask<&Command::getSaleCounters>, ask<&Command::getBackCounters>,
        ask<&Command::getDrawerSum>, ask<&Command::getNextFdNumber>, ask<&Command::getInn>,
        ask<&Command::getRegistrationNumber>, ask<&Command::getDocumentCounters>,
        ask<&Command::getDocumentSums>, ask<&Command::getSerialNumber>, ask<&Command::getRegistrationData>,
        [](Driver& driver) { driver.commands().getParameter(20, 1); },
        [](Driver& driver) { driver.commands().setLogo(QByteArrayLiteral("BM")); },
        [](Driver& driver) { driver.registration({hw::fr::common::TaxSystemType(1)}, {}, {}, {}, {}); },
        [](Driver& driver) {
            driver.checkMarkingCode({1, QStringLiteral("0104600000000015215"), 1.0, 0}, true);
        },
        [](Driver& driver) { driver.checkOpen(FiscalDocument()); },
        [](Driver& driver) { driver.getMoneyCounters(hw::fr::CheckCashIn); },
        [](Driver& driver) { driver.getMoneyCounters(hw::fr::CheckSale); },
        [](Driver& driver) { driver.getCheckCounters(hw::fr::CheckSaleReturn); }, call<&Driver::connect>,
        call<&Driver::init>, call<&Driver::setDefaults>, call<&Driver::getDeviceStateDescription>,
        call<&Driver::getFnStateDescription>, call<&Driver::getCountersDescription>,
        call<&Driver::getParametersDescription>, call<&Driver::checkWaitForPrint>, call<&Driver::zReport>,
        call<&Driver::xReport>, call<&Driver::getLastShiftNumber>, call<&Driver::getKkmRegisterBeg>,
        call<&Driver::getKkmRegisterEnd>, call<&Driver::openShift>, call<&Driver::isShiftOpen>,
        call<&Driver::accountingReport>, call<&Driver::getOfdStatusInfo>, call<&Driver::getFnInfo>,
        call<&Driver::getDefaultTaxSystem>, call<&Driver::clearMarkingCodes>, call<&Driver::getFrDocNum>};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    fuzz::prepare();
    FirstId::reset();
    fuzz::Input input(data, size);
    const unsigned calls[] = {input.take(), input.take(), input.take(), input.take()};
    const unsigned mode = input.take();
    Device device(mode, input.rest());
    fuzz::Line line([&device](const QByteArray& request) { return device.answer(request); });
    line.isBroken = (mode & Broken) != 0;
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
    return 0;
}

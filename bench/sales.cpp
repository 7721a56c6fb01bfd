// The driver's processor time for a whole sale, over a line at the pace of 115200 baud.

#include "bareline.h"
#include "bodies.h"
#include "peer.h"
#include "samples.h"

#include "fiscaldocument.h"
#include "frpayment.h"
#include "frposition.h"
#include "frspfsettings.h"
#include "fruser.h"
#include "serialdevicefactory.h"
#include "serialdriverwrapper.h"
#include "spfhex/frspf.h"
#include "spfxml/frspf.h"
#include "streamdevice.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

constexpr int positionsOfSale = 3;

/// The bytes of one sale, as a register that has seen one before gets and gives them.
QList<MemoryLine::Exchange> recordSale(Language language)
{
    MemoryLine line(liveRegister(language));
    FrSpfSettings settings;
    const auto driver = makeDriver(language, line, settings);
    driver->portOpen();
    sell(*driver, positionsOfSale);
    line.setRecording(true);
    sell(*driver, positionsOfSale);
    return line.exchanges();
}

double salesByDriver(benchmark::State& state, Language language)
{
    Peer peer(liveRegister(language), Peer::AtLineSpeed);
    const auto device = devices::createSerialDevice(peer.name());
    device->open();
    SerialDriverWrapper transport(device.get());
    FrSpfSettings settings;
    const auto driver = makeDriver(language, transport, settings);
    driver->portOpen();
    sell(*driver, positionsOfSale);
    double spent = 0;
    for (auto _ : state) {
        const double start = threadSeconds();
        sell(*driver, positionsOfSale);
        spent += threadSeconds() - start;
    }
    return spent / static_cast<double>(state.iterations());
}

// What the machine takes for the same bytes alone: mostly for waking up at each piece.
double saleByBareLoop(const QList<MemoryLine::Exchange>& exchanges)
{
    QList<std::pair<qsizetype, QByteArray>> answers;
    for (const MemoryLine::Exchange& exchange : exchanges)
        answers.append({exchange.request.size(), exchange.answer});
    Peer peer(playback(answers), Peer::AtLineSpeed);
    BareLine line(peer.name());
    const double start = threadSeconds();
    for (const MemoryLine::Exchange& exchange : exchanges) {
        if (!line.exchange(exchange))
            throw std::runtime_error("wrong answer");
    }
    return threadSeconds() - start;
}

void wholeSale(benchmark::State& state, Language language)
{
    try {
        const QList<MemoryLine::Exchange> exchanges = recordSale(language);
        qsizetype bytes = 0;
        for (const MemoryLine::Exchange& exchange : exchanges)
            bytes += exchange.request.size() + exchange.answer.size();
        state.counters["driver"] = salesByDriver(state, language);
        state.counters["bare"] = saleByBareLoop(exchanges);
        state.counters["line"] = static_cast<double>(bytes) * Peer::secondsPerByte;
    } catch (const std::exception& failure) {
        state.SkipWithError(failure.what());
    }
}

} // namespace

QString languageName(Language language)
{
    return language == Language::Hex ? QStringLiteral("HEX") : QStringLiteral("XML");
}

std::unique_ptr<AbstractFrDriver> makeDriver(
    Language language, AbstractSerialDriver& transport, FrSpfSettings& settings)
{
    if (language == Language::Xml)
        return std::make_unique<spfxml::FrSpf>(&transport, &settings);
    return std::make_unique<spfhex::FrSpf>(&transport, &settings);
}

void sell(AbstractFrDriver& driver, int positions)
{
    FiscalDocument document(hw::fr::CheckSale);
    document.setCashierName(QStringLiteral("Иванова"));
    document.setTaxSystem(hw::fr::common::TaxSystemType(1));
    driver.openShift();
    driver.checkOpen(document);
    for (int i = 0; i < positions; ++i) {
        FrPosition position(QStringLiteral("Хлеб бородинский 400 г"), 45.50, 2);
        position.setTaxCode(1);
        position.setPaymentMethod(4);
        position.setPaymentObject(1);
        driver.checkAddPosition(position);
    }
    driver.checkTotal();
    driver.checkPay(FrPayment(0, 91.0 * positions));
    driver.checkClose(document);
    driver.checkWaitForPrint();
}

void registerSales()
{
    for (const Language language : {Language::Hex, Language::Xml}) {
        const std::string name = "sale/" + languageName(language).toStdString();
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
            wholeSale(state, language);
        })->Iterations(1);
    }
}

// One short request and its answer over a pseudo terminal: through the driver's layers, in a bare loop with
// the same bytes, and by another protocol's library.

#include "bareline.h"
#include "bodies.h"
#include "memoryline.h"
#include "peer.h"
#include "samples.h"

#include "serialdevicefactory.h"
#include "serialdriverwrapper.h"
#include "spfhex/command.h"
#include "spfxml/spffrcommand.h"
#include "streamdevice.h"

#include <benchmark/benchmark.h>
#include <driverlogger.h>
#include <modbus.h>

#include <chrono>
#include <map>
#include <stdexcept>

namespace {

// So many that each packet id of HEX occurs.
constexpr int recordedQuestions = 222;
constexpr int batch = 5;
constexpr double roundTripSeconds = 0.3;

/// Asks for the register's state; true when the answer tells what the register is known to be.
class Question
{
public:
    Question(Language language, AbstractSerialDriver& transport)
        : m_language(language)
        , m_hex(&transport, driverLogger(QStringLiteral("spf_0")))
        , m_xml(&transport, driverLogger(QStringLiteral("spf_0")), QStringLiteral("13.0"))
    {
    }

    bool ask() const
    {
        if (m_language == Language::Hex)
            return m_hex.requestStateStatus().isShiftOpened();
        return !m_xml.getStatus().kktNumber.isEmpty();
    }

private:
    const Language m_language;
    const spfhex::Command m_hex;
    const spfxml::SpfFrCommand m_xml;
};

QList<MemoryLine::Exchange> recordExchanges(Language language)
{
    MemoryLine line(rememberedRegister(language));
    line.setRecording(true);
    const Question question(language, line);
    for (int i = 0; i < recordedQuestions; ++i)
        question.ask();
    return line.exchanges();
}

/// One of those that are compared.
class Side
{
public:
    virtual ~Side() = default;
    /// One question and its answer; false when the answer is wrong.
    virtual bool exchange() = 0;
};

class DriverSide : public Side
{
public:
    explicit DriverSide(Language language)
        : m_peer(rememberedRegister(language))
        , m_device(devices::createSerialDevice(m_peer.name()))
        , m_transport(m_device.get())
        , m_question(language, m_transport)
    {
        m_device->open();
    }
    bool exchange() override { return m_question.ask(); }

private:
    Peer m_peer;
    const std::unique_ptr<devices::StreamDevice> m_device;
    SerialDriverWrapper m_transport;
    const Question m_question;
};

class BareSide : public Side
{
public:
    explicit BareSide(Language language)
        : m_exchanges(recordExchanges(language))
        , m_perTurn(m_exchanges.size() / recordedQuestions)
        , m_peer(rememberedRegister(language))
        , m_line(m_peer.name())
    {
        // The far end remembers what it has answered once, so that it says what was recorded.
        exchange();
        m_next = 0;
    }

    bool exchange() override
    {
        bool good = true;
        for (qsizetype i = 0; i < m_perTurn; ++i) {
            good = m_line.exchange(m_exchanges.at(m_next)) && good;
            m_next = (m_next + 1) % m_exchanges.size();
        }
        return good;
    }

private:
    const QList<MemoryLine::Exchange> m_exchanges;
    const qsizetype m_perTurn;
    Peer m_peer;
    BareLine m_line;
    qsizetype m_next = 0;
};

class ModbusSide : public Side
{
public:
    explicit ModbusSide(int registers)
        : m_registers(registers)
        , m_peer(modbusDevice(registers))
        , m_context(modbus_new_rtu(m_peer.name().toLatin1().constData(), 115200, 'N', 8, 1))
    {
        modbus_set_slave(m_context, 1);
        modbus_connect(m_context);
    }
    ~ModbusSide() override
    {
        modbus_close(m_context);
        modbus_free(m_context);
    }

    bool exchange() override
    {
        return modbus_read_registers(m_context, 0, m_registers, m_values) == m_registers
            && m_values[m_registers - 1] == modbusValue;
    }

private:
    const int m_registers;
    Peer m_peer;
    modbus_t* const m_context;
    uint16_t m_values[MODBUS_MAX_READ_REGISTERS] = {};
};

/// As many registers as make an exchange of Modbus (8 bytes and 5, two for each register) as long as one of
/// HEX.
std::unique_ptr<Side> modbusLikeHex()
{
    const MemoryLine::Exchange hex = recordExchanges(Language::Hex).first();
    return std::make_unique<ModbusSide>(static_cast<int>(hex.request.size() + hex.answer.size() - 12) / 2);
}

double secondsPerExchange(Side& side)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < batch; ++i) {
        if (!side.exchange())
            throw std::runtime_error("wrong answer");
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / batch;
}

// The sides take turns every few exchanges, so that a busy moment of the machine hits all of them.
void compare(benchmark::State& state, Language language)
{
    std::map<std::string, std::unique_ptr<Side>> sides;
    sides["driver"] = std::make_unique<DriverSide>(language);
    sides["bare"] = std::make_unique<BareSide>(language);
    if (language == Language::Hex)
        sides["modbus"] = modbusLikeHex();
    Samples samples;
    try {
        for (auto _ : state) {
            for (const auto& [name, side] : sides)
                samples.add(name, secondsPerExchange(*side));
        }
    } catch (const std::exception& failure) {
        return state.SkipWithError(failure.what());
    }
    samples.publish(state);
}

} // namespace

void registerRoundTrips()
{
    for (const Language language : {Language::Hex, Language::Xml}) {
        const std::string name = "roundtrip/" + languageName(language).toStdString();
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
            compare(state, language);
        })->MinTime(roundTripSeconds);
    }
}

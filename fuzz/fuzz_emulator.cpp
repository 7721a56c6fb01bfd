// Bytes of a host into the software register.
//
// Input: protocol and whether the register is lenient, three faults, then the writes, with record separators
// (RS, 0x1E) between them. A write that begins with GS (0x1D) is put into a right frame or envelope, one with
// US (0x1F) is no write but something that happens to the register.

#include "harness.h"

#include "program/protocolswitch.h"
#include "register/parametertable.h"
#include "register/virtualclock.h"

#include <numeric>

namespace {

using emulator::FaultPlan;
using emulator::ProtocolChoice;

constexpr qint64 longPause = 3'600'000;
const QByteArray requestId = QByteArrayLiteral("{10000000-0000-4000-8000-000000000001}");
const QByteArray stateId = QByteArrayLiteral("{20000000-0000-4000-8000-000000000002}");

QByteArray frame(char id, const QByteArray& text)
{
    const QByteArray body = "QZXW" + QByteArray(1, id) + text + '\x03';
    const char check = std::accumulate(
        body.cbegin(), body.cend(), '\0', [](char sum, char byte) { return static_cast<char>(sum ^ byte); });
    return '\x02' + body + QByteArray(1, check).toHex().toUpper();
}

/// The number of the command stands before the first blank, its parameters behind it.
QByteArray envelope(const QByteArray& id, const QByteArray& text)
{
    const qsizetype blank = text.indexOf(' ');
    const QByteArray command = blank < 0 ? text : text.left(blank);
    const QByteArray parameters = blank < 0 ? QByteArray() : text.mid(blank + 1);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><ArmRequest><RequestBody><ProtocolLabel>OFDFNARMUKM"
           "</ProtocolLabel><ProtocolVersion>13.0</ProtocolVersion><RequestId>"
        + id
        + "</RequestId><msgFFDVer>4</msgFFDVer><msgContVer>1</msgContVer><DateTime>2024-03-01 "
          "09:00:00</DateTime><Command>"
        + command + "</Command></RequestBody><RequestData><![CDATA[" + parameters
        + "]]></RequestData></ArmRequest>";
}

class Bench
{
public:
    explicit Bench(fuzz::Input& input)
        : m_begin(static_cast<int>(input.take()))
        , m_choice(static_cast<ProtocolChoice>(m_begin % 3))
        , m_line(m_device, m_outbox, m_clock, m_choice)
    {
        m_line.setLenient(m_begin / 3 % 2 != 0);
        m_device.tape().setListener([](const tape::Page&, quint32) {});
        FaultPlan plan;
        for (int i = 0; i < 3; ++i) {
            const auto exchange = static_cast<int>(input.take());
            const auto& modes = FaultPlan::allModes();
            const auto mode = modes.at(static_cast<qsizetype>(input.take()) % modes.size());
            plan.add(exchange, {mode, static_cast<int>(input.take())});
        }
        m_line.setFaults(plan);
    }

    void run(const QByteArray& record)
    {
        if (record.startsWith('\x1F'))
            happen(record.mid(1));
        else if (record.startsWith('\x1D'))
            m_line.receive(m_choice == ProtocolChoice::Xml ? envelope(requestId, record.mid(1))
                                                           : frame('\x20', record.mid(1)));
        else
            m_line.receive(record);
        m_outbox.take();
        checkJournal();
    }

    /// Whatever came before, a register that is left alone for a while answers the next host.
    void checkAlive()
    {
        m_line.setFaults(FaultPlan());
        m_device.parameters().reset(emulator::parameter::password);
        m_clock.advance(longPause);
        m_outbox.clear();
        if (m_choice != ProtocolChoice::Xml)
            fuzz::require(answerTo(frame('\x7A', "A0")).contains("zA000"), "no state over HEX");
        if (m_choice != ProtocolChoice::Hex) {
            const QByteArray answer = answerTo(envelope(stateId, "2"));
            fuzz::require(answer.contains(stateId) && answer.contains("<Result>0<"), "no state over XML");
        }
    }

private:
    QByteArray answerTo(const QByteArray& request)
    {
        m_line.receive(request);
        // A late answer to an earlier request goes first.
        m_clock.advance(1000);
        return m_outbox.take();
    }

    void happen(const QByteArray& event)
    {
        const auto argument = static_cast<unsigned char>(event.isEmpty() ? '\0' : event.back());
        if (event.startsWith('r'))
            m_device.powerCycle();
        else if (event.startsWith('p'))
            m_device.setPaper(argument % 2 != 0);
        else if (event.startsWith('o'))
            m_device.setOperatorReachable(argument % 2 != 0);
        else if (event.startsWith('h'))
            m_clock.advance(longPause * argument);
        else
            m_clock.advance(argument * 10);
    }

    void checkJournal()
    {
        const QList<QJsonObject> entries = m_device.journal().entries();
        fuzz::require(entries.mid(0, m_entries.size()) == m_entries, "the journal has changed");
        m_entries = entries;
    }

    const int m_begin;
    const ProtocolChoice m_choice;
    emulator::VirtualClock m_clock;
    emulator::Register m_device{m_clock};
    emulator::Outbox m_outbox{m_clock};
    emulator::ProtocolSwitch m_line;
    QList<QJsonObject> m_entries;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    fuzz::prepare();
    fuzz::Input input(data, size);
    Bench bench(input);
    for (const QByteArray& record : input.rest().split('\x1E'))
        bench.run(record);
    bench.checkAlive();
    return 0;
}

// A register that loses its power behind each request goes on as one that never does.

#include "memory/memory.h"
#include "memory/statestore.h"
#include "rig.h"
#include "xmlrig.h"

#include <gtest/gtest.h>
#include <QTemporaryDir>

#include <functional>

namespace {

/// A register with both protocols, and whoever composes requests for it.
struct Device
{
    QByteArray exchange(const QByteArray& bytes)
    {
        line.receive(bytes);
        return outbox.take();
    }

    emulator::VirtualClock clock;
    emulator::Register device{clock};
    emulator::Outbox outbox{clock};
    emulator::ProtocolSwitch line{device, outbox, clock};
};

/// What hosts can ask about the register.
QList<QByteArray> questions()
{
    Rig hex;
    XmlRig xml;
    QList<QByteArray> all{hex.frame({0xA0, {}}), hex.frame({0xA6, {}}), hex.frame({0xA7, {}}),
        hex.frame({0xA8, {}}), hex.frame({0xC0, {}}), hex.frame({0xA4, {}})};
    for (int number = 0; number < 16; ++number) {
        all.append(hex.frame({0xA4, {QByteArray::number(number)}}));
        all.append(hex.frame({0xA5, {QByteArray::number(number)}}));
    }
    for (const char* const parameter : {"20", "31", "60000"})
        all.append(hex.frame({0xA1, {parameter, "0"}}));
    const QString settings
        = pa("MACRO", 7,
              pa("Logging", 7, pa("LogLevel", 1)) + pa("KKTCounters", 7, pa("PrintZeroCounters", 1)))
        + pa("PRN", 7, pa("LogoImage", 7, pa("Image", 1)));
    all.append(xml.request(54, pa("200004", 7, settings)));
    for (const int command : {2, 22, 40, 44, 50, 52, 58})
        all.append(xml.request(command));
    return all;
}

class PowerCuts : public testing::Test
{
protected:
    using Work = std::function<QByteArray(Device&)>;

    PowerCuts()
        : cut(std::make_unique<Device>())
    {
    }

    void step(const char* what, const Work& work)
    {
        SCOPED_TRACE(what);
        whole.device.refusals().clear();
        EXPECT_EQ(work(*cut).toStdString(), work(whole).toStdString());
        for (const emulator::RefusedRequest& request : whole.device.refusals().all())
            refused.append(request.command);
        cutPower();
        wholeMemory.save(whole.device);
        EXPECT_EQ(partsIn(wholeDirectory), partsIn(directory));
        for (const QByteArray& question : questions())
            EXPECT_EQ(cut->exchange(question).toStdString(), whole.exchange(question).toStdString())
                << question.toStdString();
    }
    void send(const char* what, const QByteArray& bytes)
    {
        step(what, [&bytes](Device& device) { return device.exchange(bytes); });
    }
    void send(const QList<Step>& steps)
    {
        for (const Step& one : steps)
            send(hex.hex(one.code).constData(), hex.frame(one));
    }
    void sendXml(int command, const QString& data)
    {
        send(std::to_string(command).c_str(), xml.request(command, data));
    }

    void cutPower()
    {
        emulator::Memory(folder()).save(cut->device);
        tape += cut->device.tape().lines();
        auto next = std::make_unique<Device>();
        next->clock.advance(cut->clock.milliseconds() - next->clock.milliseconds());
        emulator::Memory(folder()).load(next->device);
        cut = std::move(next);
        EXPECT_FALSE(cut->device.state().isStarted);
        start(*cut);
        start(whole);
    }
    void start(Device& device)
    {
        const Reply time = hex.parse(device.exchange(hex.frame({0xA7, {}})));
        device.exchange(hex.frame({0x00, time.fields}));
    }
    std::unique_ptr<emulator::StateFolder> folder() const
    {
        return std::make_unique<emulator::StateFolder>(directory.path());
    }

    static QMap<QString, QByteArray> partsIn(const QTemporaryDir& directory)
    {
        const QString file = emulator::StateFolder::stateFileOf(directory.path());
        return emulator::StateStore(file, emulator::Database::Access::ReadOnly).parts();
    }

    QTemporaryDir directory;
    QTemporaryDir wholeDirectory;
    Rig hex;
    XmlRig xml;
    Device whole;
    /// Of the register that keeps its power: it writes only what has changed since.
    emulator::Memory wholeMemory{std::make_unique<emulator::StateFolder>(wholeDirectory.path())};
    std::unique_ptr<Device> cut;
    QStringList tape;
    /// Commands of refused requests.
    QStringList refused;
};

TEST_F(PowerCuts, BehindEachRequestChangeNothing)
{
    const Step agent{
        0x3C, {"64", "", "+79990000000", "", "", "", "", "", "+70000000000", "Ферма", "7701234567"}};
    QByteArray logo("BM" + QByteArray(16, 0) + QByteArray::fromHex("20010000 64000000 0100 0100"));
    logo += QByteArray(54 - logo.size(), '\x07');

    send({{0x00, {"010324", "090000"}}, {0xA2, {"20", "0", "Магазин"}}, {0xA2, {"60000", "0", "x"}}});
    send("logo", hex.frame({0xE2, {QByteArray::number(logo.size())}}) + '\x1B' + logo);
    const QString settings = pa("MACRO", 7, pa("Logging", 7, pa("LogLevel", 1, "1")))
        + pa("PRN", 7, pa("Printer", 7, pa("PrintWidthChars", 1, "32")));
    sendXml(56, pa("200005", 7, settings));
    send({{0x6B, {"Иванова", "771234567890"}}, open(4), text("Размен"), money("500.00"), finish(),
        {0x80, {}}});
    send({check(), open(2), text("Здравствуйте", 16), agent, bind(), item("1.000", "100.00", "2", "33"),
        item("2.500", "10.01"), text("до"), {0x24, {"2", "3", "100", "2", "460123456789"}}, subtotal(),
        {0x29, {"4", "1", "qr"}}, text("после"), pay(1, "20.00"), pay(0, "200.00")});
    step("paper ends", [](Device& device) {
        device.device.setPaperLeft(3, false);
        return QByteArray();
    });
    send({finish(), cancel(), finish()});
    step("new paper", [](Device& device) {
        device.device.setPaper(true);
        return QByteArray();
    });
    send({finish(), check(), open(3), item("1.000", "5.00"), cancel(), open(1), text("x"), finish()});
    send({open(2)});
    for (int number = 0; number < 17; ++number)
        send({item("1.000", "1.00")});
    send({cancel()});
    sendXml(8, receipt(position("70.00", "2.000", "70.00"), "40.00", "100.00"));
    send({{0x61, {"", ""}}, {0xA3, {"020324", "120000"}}, {0x6B, {"", ""}}, {0x65, {"3"}}});
    send({{0x61, {"", ""}}});
    sendXml(18, pa("11", 7, pa("1021", 1, "И") + pa("1205", 4, "8") + pa("1062", 4, "1")));

    // The first close is stored, and its paper ends while it prints.
    EXPECT_EQ(refused, QStringList({"23", "22"})) << "without paper";
    EXPECT_EQ(tape.join('\n').toStdString(), whole.device.tape().text().toStdString());
    const auto kept = emulator::Memory::documentsOf(directory.path());
    const auto wanted = whole.device.drive().documentsFrom(1);
    ASSERT_EQ(kept.size(), wanted.size());
    EXPECT_EQ(kept.size(), 8);
    for (qsizetype index = 0; index < kept.size(); ++index) {
        EXPECT_EQ(kept[index].record.sign, wanted[index].record.sign);
        EXPECT_EQ(kept[index].record.dateTime, wanted[index].record.dateTime);
        EXPECT_EQ(kept[index].record.tags, wanted[index].record.tags);
        EXPECT_EQ(kept[index].entry, wanted[index].entry);
        EXPECT_EQ(kept[index].page, wanted[index].page);
    }
}

TEST_F(PowerCuts, LongLifeKeepsAllDocumentsAndTheYoungestPages)
{
    whole.exchange(hex.frame({0x00, {"010324", "090000"}}));
    whole.exchange(hex.frame({0x6B, {"", ""}}));
    emulator::Memory memory(folder());
    for (int number = 0; number < 300; ++number) {
        for (const Step& one : sale())
            whole.exchange(hex.frame(one));
        memory.save(whole.device);
    }
    const auto kept = emulator::Memory::documentsOf(directory.path());
    ASSERT_EQ(kept.size(), 302);
    EXPECT_FALSE(kept[2].page.lines.isEmpty());
    emulator::Register next(whole.clock);
    memory.load(next);
    EXPECT_EQ(next.drive().print(302), kept.constLast().page);
    EXPECT_TRUE(next.drive().print(46).lines.isEmpty());
    EXPECT_EQ(next.drive().print(47), kept[46].page);
}

} // namespace

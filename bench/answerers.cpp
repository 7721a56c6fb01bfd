#include "answerers.h"

#include "hex/protocol.h"
#include "numeric.h"
#include "register/systemclock.h"
#include "xml/protocol.h"

#include <QMap>

#include <memory>

namespace {

constexpr qsizetype modbusRequestSize = 8;

struct Emulator
{
    Emulator(Language language, const emulator::Identity& identity)
        : device(clock, identity)
    {
        device.tape().setListener([](const tape::Page&, quint32) {});
        device.start(QDateTime::currentDateTime());
        device.openShift({});
        if (language == Language::Xml)
            protocol = std::make_unique<emulator::XmlProtocol>(device, outbox, clock);
        else
            protocol = std::make_unique<emulator::HexProtocol>(device, outbox, clock);
    }

    QByteArray answer(const QByteArray& request)
    {
        protocol->receive(request);
        return outbox.take();
    }

    emulator::SystemClock clock;
    emulator::Register device;
    emulator::Outbox outbox{clock};
    std::unique_ptr<emulator::Protocol> protocol;
};

bool isWhole(Language language, const QByteArray& received)
{
    if (language == Language::Xml)
        return received.endsWith("</ArmRequest>\n");
    return received.size() > 10 && received.at(received.size() - 3) == 0x03;
}

QByteArray between(const QByteArray& text, const QByteArray& from, const QByteArray& to)
{
    const qsizetype begin = text.indexOf(from) + from.size();
    return text.mid(begin, text.indexOf(to, begin) - begin);
}

QByteArray commandOf(Language language, const QByteArray& request)
{
    // Commands that ask for one of many values have its number as their first field.
    return language == Language::Xml ? between(request, "<Command>", "</Command>")
                                     : request.mid(6, request.mid(6, 2) == "A5" ? 4 : 2);
}

QByteArray idOf(Language language, const QByteArray& request)
{
    return language == Language::Xml ? between(request, "<RequestId>", "</RequestId>") : request.mid(5, 1);
}

struct Remembered
{
    QByteArray id;
    QByteArray answer;
};

QByteArray readdressed(Language language, const Remembered& known, const QByteArray& id)
{
    QByteArray answer = known.answer;
    if (language == Language::Xml)
        return answer.replace(known.id, id);
    answer[1] = id.at(0);
    const int check = numeric::calcLRC(answer.mid(1, answer.size() - 3)) & 0xFF;
    return answer.chopped(2) + QByteArray::number(check, 16).toUpper().rightJustified(2, '0');
}

void appendCrc(QByteArray& frame)
{
    unsigned crc = 0xFFFF;
    for (const char byte : frame) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xA001 : crc >> 1;
    }
    frame.append(static_cast<char>(crc & 0xFF)).append(static_cast<char>(crc >> 8));
}

} // namespace

Answerer liveRegister(Language language, const emulator::Identity& identity)
{
    const auto emulator = std::make_shared<Emulator>(language, identity);
    return [=](const QByteArray& received) {
        return isWhole(language, received) ? emulator->answer(received) : QByteArray();
    };
}

Answerer rememberedRegister(Language language)
{
    const auto emulator = std::make_shared<Emulator>(language, emulator::Identity());
    const auto known = std::make_shared<QMap<QByteArray, Remembered>>();
    return [=](const QByteArray& received) {
        if (!isWhole(language, received))
            return QByteArray();
        const QByteArray id = idOf(language, received);
        auto found = known->constFind(commandOf(language, received));
        if (found == known->cend())
            found = known->insert(commandOf(language, received), {id, emulator->answer(received)});
        return readdressed(language, *found, id);
    };
}

Answerer playback(const QList<std::pair<qsizetype, QByteArray>>& answers)
{
    const auto next = std::make_shared<qsizetype>(0);
    return [=](const QByteArray& received) {
        const auto& [size, answer] = answers.at(*next % answers.size());
        if (received.size() < size)
            return QByteArray();
        ++*next;
        return answer;
    };
}

Answerer modbusDevice(int registers)
{
    QByteArray answer("\x01\x03");
    answer.append(static_cast<char>(2 * registers));
    for (int i = 0; i < registers; ++i)
        answer.append(static_cast<char>(modbusValue >> 8)).append(static_cast<char>(modbusValue & 0xFF));
    appendCrc(answer);
    return [=](const QByteArray& received) {
        return received.size() == modbusRequestSize ? answer : QByteArray();
    };
}

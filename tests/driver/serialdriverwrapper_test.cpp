#include "mockserialdevice.h"
#include "serialdriverwrapper.h"
#include "thrown.h"

#include <QElapsedTimer>

#include <functional>

using testing::_;
using testing::InSequence;
using testing::NiceMock;
using testing::Return;
using testing::StrictMock;

namespace {

/// Everything that needs an open port, with what a device raises that answers false to all it is asked.
// clang-format off
const std::vector<std::pair<std::function<void(SerialDriverWrapper&)>, std::string>> guardedCalls{
    {[](auto& w) { w.configure(QSerialPort::Baud9600, QSerialPort::NoParity, QSerialPort::Data8, QSerialPort::OneStop); },
        "ComDriverException: Ошибка конфигурирования порта"},
    {[](auto& w) { w.setBaudRate(QSerialPort::Baud9600); }, "ComDriverException: Ошибка установки скорости порта"},
    {[](auto& w) { w.setFlowControl(QSerialPort::SoftwareControl); }, "ComDriverException: Ошибка установки управления потоком"},
    {[](auto& w) { w.setDataTerminalReady(false); }, "ComDriverException: Ошибка установки готовности к приему данных"},
    {[](auto& w) { w.receiveByte(1); }, "ComDriverTimeoutException: Нет данных"},
    {[](auto& w) { w.receiveData(1, 1); }, "ComDriverTimeoutException: Нет данных"},
    {[](auto& w) { w.receiveDataAsByteArray(1, 1); }, "ComDriverTimeoutException: Нет данных"},
    {[](auto& w) { w.portClear(); }, ""},
    {[](auto& w) { w.sendByte(0); }, ""},
    {[](auto& w) { w.sendByteWithTimeout(0, 0); }, ""},
    {[](auto& w) { w.sendData(std::vector<unsigned char>{0}); }, ""},
    {[](auto& w) { w.sendData(QByteArray("\0", 1)); }, ""},
};
// clang-format on

} // namespace

TEST(SerialDriverWrapper, closedPortAndMissingDeviceAreNotTouched)
{
    StrictMock<MockSerialDevice> closed;
    EXPECT_CALL(closed, isOpen).WillRepeatedly(Return(false));
    for (hw::AbstractSerialDevice* device : {static_cast<hw::AbstractSerialDevice*>(&closed), {}}) {
        SerialDriverWrapper wrapper(device);
        for (const auto& guarded : guardedCalls)
            EXPECT_EQ(thrown([&] { guarded.first(wrapper); }), "ComDriverException: Порт не открыт");
        wrapper.portClose();
        wrapper.flush();
    }
    SerialDriverWrapper wrapper(nullptr);
    EXPECT_EQ(wrapper.getType(), 0);
    EXPECT_EQ(thrown([&] { wrapper.portOpen(); }), "ComDriverException: Ошибка доступа к порту");
}

TEST(SerialDriverWrapper, refusalsOfAnOpenDevice)
{
    NiceMock<MockSerialDevice> device;
    ON_CALL(device, isOpen).WillByDefault(Return(true));
    SerialDriverWrapper wrapper(&device);
    for (const auto& guarded : guardedCalls)
        EXPECT_EQ(thrown([&] { guarded.first(wrapper); }), guarded.second);

    ON_CALL(device, waitForReadyRead).WillByDefault(Return(true));
    for (const std::size_t i : {4U, 5U, 6U})
        EXPECT_EQ(thrown([&] { guardedCalls[i].first(wrapper); }),
            "ComDriverException: Невозможно получить данные");
}

TEST(SerialDriverWrapper, opensConfiguresAndCloses)
{
    StrictMock<MockSerialDevice> device;
    EXPECT_CALL(device, isOpen).WillRepeatedly(Return(true));
    SerialDriverWrapper wrapper(&device);
    const auto open = [&] {
        return wrapper.portOpen(
            QSerialPort::Baud115200, QSerialPort::EvenParity, QSerialPort::Data7, QSerialPort::TwoStop);
    };
    // No setting, then one of the four refused in turn: all four are made all the same.
    for (int refused = -1; refused < 4; ++refused) {
        const InSequence order;
        EXPECT_CALL(device, open).WillOnce(Return(true));
        EXPECT_CALL(device, setOpened(true)).WillOnce(Return(false));
        EXPECT_CALL(device, setBaudRate(QSerialPort::Baud115200)).WillOnce(Return(refused != 0));
        EXPECT_CALL(device, setParity(QSerialPort::EvenParity)).WillOnce(Return(refused != 1));
        EXPECT_CALL(device, setDataBits(QSerialPort::Data7)).WillOnce(Return(refused != 2));
        EXPECT_CALL(device, setStopBits(QSerialPort::TwoStop)).WillOnce(Return(refused != 3));
        if (refused < 0)
            EXPECT_TRUE(open());
        else
            EXPECT_EQ(thrown(open), "ComDriverException: Ошибка конфигурирования порта");
    }
    const InSequence order;
    EXPECT_CALL(device, close);
    EXPECT_CALL(device, setOpened(false));
    wrapper.portClose();
    EXPECT_CALL(device, open).WillOnce(Return(true));
    EXPECT_CALL(device, setOpened(true)).WillOnce(Return(false));
    EXPECT_FALSE(wrapper.portOpen());
    EXPECT_CALL(device, open).WillOnce(Return(false));
    EXPECT_EQ(thrown([&] { wrapper.portOpen(); }), "ComDriverException: Невозможно открыть порт");
}

TEST(SerialDriverWrapper, writesInOneGo)
{
    StrictMock<MockSerialDevice> device;
    EXPECT_CALL(device, isOpen).WillRepeatedly(Return(true));
    SerialDriverWrapper wrapper(&device);
    // A failed count is nothing to the drivers.
    EXPECT_CALL(device, write(QByteArray("\xFF\0\x01", 3))).Times(2).WillRepeatedly(Return(-1));
    EXPECT_CALL(device, write(QByteArray("\x05"))).WillOnce(Return(1));
    wrapper.sendData(std::vector<unsigned char>{0xFF, 0, 1});
    wrapper.sendData(QByteArray("\xFF\0\x01", 3));
    QElapsedTimer pause;
    pause.start();
    wrapper.sendByteWithTimeout(5, 5000);
    EXPECT_GE(pause.nsecsElapsed(), 5'000'000);
}

TEST(SerialDriverWrapper, readsTheFirstPortionOnly)
{
    StrictMock<MockSerialDevice> device;
    EXPECT_CALL(device, isOpen).WillRepeatedly(Return(true));
    SerialDriverWrapper wrapper(&device);
    const InSequence order;
    const auto expectRead = [&](int size, const QByteArray& portion) {
        EXPECT_CALL(device, waitForReadyRead(70)).WillOnce(Return(true));
        EXPECT_CALL(device, read(size)).WillOnce(Return(portion));
    };
    expectRead(100, "abc");
    EXPECT_EQ(wrapper.receiveDataAsByteArray(100, 70), QByteArray("abc"));
    expectRead(100, "\x80z");
    EXPECT_EQ(wrapper.receiveData(100, 70), (std::vector<unsigned char>{0x80, 'z'}));
    expectRead(1, "\xFE");
    EXPECT_EQ(wrapper.receiveByte(70), 0xFE);
}

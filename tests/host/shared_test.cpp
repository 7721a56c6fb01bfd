#include "qtprinters.h"

#include <basicfrsettings.h>
#include <bytestohexutils.h>
#include <deviceinfo.h>
#include <mockfactory.h>
#include <numeric.h>
#include <tr.h>

#include <gtest/gtest.h>

namespace {

class FixedTime : public CurrentTime
{
public:
    QDateTime getCurrentDateTime() const override { return QDateTime(QDate(2024, 2, 1), QTime(3, 4)); }
};

TEST(MockFactory, GivesTheObjectInPlaceWithoutOwningIt)
{
    const QDateTime before = QDateTime::currentDateTime();
    EXPECT_GE(MockFactory<CurrentTime>::create()->getCurrentDateTime(), before);
    FixedTime fixed;
    MockFactory<CurrentTime>::mocked = &fixed;
    for (int use = 0; use < 2; ++use)
        EXPECT_EQ(MockFactory<CurrentTime>::create()->getCurrentDateTime(), fixed.getCurrentDateTime());
    MockFactory<CurrentTime>::mocked = nullptr;
    EXPECT_GE(MockFactory<CurrentTime>::create()->getCurrentDateTime(), before);
    EXPECT_TRUE(MockFactory<hw::ParamManager>::create()->getTailLines(DeviceInfo({}, {}), 1).isEmpty());
}

TEST(Settings, MergedOptionsKeepTheOthers)
{
    using namespace hw::fr;
    BasicFrSettings settings;
    settings.mergeOptions({{OptionUseFn, true}, {OptionBit9, true}});
    settings.mergeOptions({{OptionUseFn, false}});
    EXPECT_EQ(settings.getOptions(), (DriverOptions{{OptionUseFn, false}, {OptionBit9, true}}));
    settings.setDeviceId(7);
    EXPECT_EQ(settings.property("deviceid").toUInt(), 7U);
    EXPECT_FALSE(settings.setProperty("deviceid", 8));
}

TEST(Numeric, CheckValueIsTheExclusiveOrOfAllBytes)
{
    EXPECT_EQ(numeric::calcLRC({}), 0);
    EXPECT_EQ(numeric::calcLRC(QByteArray::fromHex("ff")), 0xFF);
    EXPECT_EQ(numeric::calcLRC(QByteArray::fromHex("5049520030418003")), 0xB9);
}

TEST(BytesToHex, PrefixBeforeEachByteAndSeparatorBetween)
{
    using namespace bytestohexutils;
    const QByteArray bytes = QByteArray::fromHex("00a7ff");
    EXPECT_EQ(byteToHexStr(0x0A, QStringLiteral("0x")), QStringLiteral("0x0a"));
    EXPECT_EQ(bytesToHexStr(bytes, {}, {}), QStringLiteral("00a7ff"));
    EXPECT_EQ(
        bytesToHexStr(bytes, QStringLiteral("0x"), QStringLiteral(", ")), QStringLiteral("0x00, 0xa7, 0xff"));
    EXPECT_EQ(bytesToHexWithSpacesStr(bytes), QStringLiteral("00 a7 ff"));
}

TEST(Tr, MembersWithoutTextAreLeftOut)
{
    const tr::Tr keyOnly(QStringLiteral("key"), {});
    const tr::Tr first({}, QStringLiteral("Раз"));
    const tr::Tr second(tr::undefined, QStringLiteral("Два"));
    const tr::TrList list{keyOnly, first, tr::Tr(), second};
    EXPECT_TRUE(keyOnly.isEmpty());
    EXPECT_FALSE(first.isEmpty());
    EXPECT_EQ(list.joinRu(QStringLiteral(". ")), QStringLiteral("Раз. Два"));
    EXPECT_EQ(list.toUiList(true), (QStringList{QStringLiteral("Раз"), QStringLiteral("Два")}));
    EXPECT_EQ(list.toUiList(false).size(), 4);
    EXPECT_TRUE(tr::TrList({keyOnly}).toUiList(true).isEmpty());
}

} // namespace

#include "qtprinters.h"

#include <bytestohexutils.h>
#include <tr.h>

#include <gtest/gtest.h>

namespace {

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
}

} // namespace

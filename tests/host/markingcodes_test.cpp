#include "qtprinters.h"

#include <frutils.h>

#include <gtest/gtest.h>

namespace {

const QString Gs = QString(QChar(0x1D));
const QString Head = "010460043993125621";
// Serial numbers and signatures hold what looks like the start of a field.
const QString Serial13 = "91EE0692abc93";
const QString Serial20 = "5R6&93abcd91wxyz92!?";
const QString Key = "91EE06";
const QString Signature = QStringLiteral("92") + QString(36, QLatin1Char('k')) + "91ab93cd";
const QString LongSignature = QStringLiteral("92") + QString(82, QLatin1Char('=')) + "93abcd";

QString withoutSeparators(QString code)
{
    return code.remove(Gs);
}

TEST(MarkingCodes, SeparatorsAreRestoredByTheLayoutOfTheCode)
{
    const QString codes[] = {
        Head + Serial13 + Gs + Key + Gs + Signature,
        Head + Serial13 + Gs + Key + Gs + LongSignature,
        Head + Serial20 + Gs + Key + Gs + LongSignature,
        Head + QStringLiteral("5!f)Qz") + Gs + "93dGVz",
        Head + QStringLiteral("593f)z") + Gs + QStringLiteral("933103") + Gs + "3103000123",
        Head + QStringLiteral("593dGVz1") + Gs + "9393ab",
        Head + Serial13 + Gs + "93dGVz",
        Head + QStringLiteral("JgX8005") + Gs + QStringLiteral("8005112000") + Gs + "930001",
    };
    for (const QString& code : codes) {
        EXPECT_EQ(FrUtils::getMarkingCodeWithSeparators(withoutSeparators(code)), code);
        EXPECT_EQ(FrUtils::getMarkingCodeWithSeparators(code), code);
    }
}

TEST(MarkingCodes, OtherCodesComeBackAsTheyAre)
{
    const QString codes[] = {
        QString(),
        Head,
        Gs + Head + "5!f)Qz93dGVz",
        Head + Serial13 + Gs + Key + Signature,
        Head + "5!f)Qz94dGVz",
        Head + "123456789093dGVz",
        Head + Serial13 + "91EE06920123",
        "0104600439931X56215!f)Qz93dGVz",
        "02046004399312565!f)Qz93dGVzab",
        "00000046198488X?io+qCABm8wAYa",
    };
    for (const QString& code : codes)
        EXPECT_EQ(FrUtils::getMarkingCodeWithSeparators(code), code);
}

TEST(MarkingCodes, ProductCodeFollowsTheFormOfTheCode)
{
    const QString stamp20 = "22N00002NU5DBKYDOT17ID980726019019608CW1A4XR5EJ7JKFX50FHHGV92ZR2GZRZ";
    const QString stamp30 = QStringLiteral("13622200005881") + QString(136, QLatin1Char('W'));
    const QString pack = "00000046198488X?io+qCABm8wAYa";
    const QString gs1LikePack = QStringLiteral("01046004399312") + QStringLiteral("5621") + QString(11, u'x');
    const QString fur = "RU-401301-AAA0277031";
    const QString longText = QString(40, QLatin1Char('q'));
    const std::tuple<QString, ExciseMarkType, int, QString> products[] = {
        {"46198488", MarkNone, 1301, "46198488"},
        {"4606203090785", MarkCommon, 1302, "4606203090785"},
        {"14601234567890", MarkCommon, 1303, "14601234567890"},
        {Head + QStringLiteral("ABC") + Gs + "10LOT", MarkCommon, 1304, Head + "ABC"},
        {Head + Serial13 + Key + Signature, MarkShoes, 1305, Head + Serial13},
        {Head + Serial13 + Gs + Key + Gs + LongSignature, MarkMedicine, 1305, Head + Serial13},
        {Gs + Head + Serial13 + Gs + "93dGVz", MarkCommon, 1305, Head + Serial13},
        {Head + "5!f)Qz93dGVz", MarkCommon, 1305, Head + "5!f)Qz"},
        {Head + "JgX8005800511200093abcd", MarkTobacco, 1305, Head + "JgX8005"},
        {pack, MarkCommon, 1306, pack.left(21)},
        {gs1LikePack, MarkTobacco, 1306, gs1LikePack.left(21)},
        {gs1LikePack, MarkCommon, 1304, gs1LikePack},
        {fur.toLower(), MarkFur, 1307, fur.toLower()},
        {stamp20, MarkCommon, 1308, "2NU5DBKYDOT17ID98072601"},
        {stamp30.toLower(), MarkAlcohol, 1309, "13622200005881"},
        {stamp30.toLower(), MarkCommon, 1300, stamp30.toLower().left(32)},
        {longText, MarkCommon, 1300, longText.left(32)},
        {Head + longText, MarkCommon, 1300, (Head + longText).left(32)},
        {QString(), MarkCommon, 1300, QString()},
    };
    for (const auto& [code, type, tag, bytes] : products) {
        const FdRequisite requisite = FrUtils::createNomenclatureCodeRequisiteFFD12(code, type);
        EXPECT_EQ(static_cast<int>(requisite.getTag()), tag) << code.toStdString();
        EXPECT_EQ(requisite.getSourceData().typeId(), QMetaType::QByteArray);
        EXPECT_EQ(requisite.getSourceData().toByteArray(), bytes.toLatin1()) << code.toStdString();
    }
}

} // namespace

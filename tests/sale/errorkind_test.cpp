// Each row of the error tables of both drivers has a kind, and the two protocols agree.

#include "errorkind.h"
#include "errortable.h"
#include "exceptions.h"
#include "failure.h"

#include <spfhex/answercodes.h>
#include <spfxml/errorcatalogue.h>
#include <spfxml/errortexts.h>

#include <QCoreApplication>
#include <QSet>
#include <QTranslator>

#include <gtest/gtest.h>

using sale::ErrorKind;

namespace {

const QString unknownText = QStringLiteral("Неизвестная ошибка");

QString hexText(int code)
{
    return spfhex::answerCodeInfo(code).text.toString();
}

/// As the driver puts it into the exception.
QString xmlText(int category, int code, const QString& description = {})
{
    return spf::utils::getErrorMessage(category, code, description).toUiList(true).join(". ");
}

ErrorKind kindOf(const QString& text)
{
    return sale::errorKindOf(FrCommandException(text));
}

TEST(ErrorKind, EachRowOfBothTablesHasOne)
{
    for (int code = 1; code < 256; ++code)
        EXPECT_EQ(sale::errorKindOfText(hexText(code)).has_value(), hexText(code) != unknownText) << code;
    for (const int code : spf::utils::errorTexts().keys()) {
        for (int category = 0; category < 7; ++category)
            EXPECT_EQ(sale::errorKindOfText(xmlText(category, code)), kindOf(xmlText(0, code))) << code;
    }
    for (const int code : spf::utils::printerErrorTexts().keys())
        EXPECT_TRUE(sale::errorKindOfText(xmlText(3, code))) << code;
    for (const int category : spf::utils::errorCategoryTexts().keys())
        EXPECT_TRUE(sale::errorKindOfCategory(xmlText(category, 9999))) << category;
}

TEST(ErrorKind, ProtocolsAgree)
{
    const std::tuple<QList<int>, QList<std::pair<int, int>>, ErrorKind> rows[] = {
        {{8}, {{3, 8}}, ErrorKind::Paper},
        {{9}, {{3, 3002}, {3, 3003}, {3, 17}}, ErrorKind::Cover},
        {{10, 102}, {{1, 22}, {4, 4003}}, ErrorKind::ShiftExpired},
        {{86}, {}, ErrorKind::DriveFull},
        {{85, 98}, {}, ErrorKind::DriveExpired},
        {{97, 100, 101}, {{4, 4001}, {4, 4004}, {4, 17}}, ErrorKind::OfdBlocked},
        {{11, 12, 87, 103}, {{1, 1008}, {4, 4002}}, ErrorKind::Clock},
        {{115, 130, 132, 142}, {}, ErrorKind::Mark},
        {{3, 89, 104, 140}, {{1, 1001}, {1, 1003}, {1, 1006}, {2, 2001}}, ErrorKind::Data},
        {{14}, {{1, 1007}}, ErrorKind::Cash},
        {{4, 5, 7}, {}, ErrorKind::Line},
        {{32, 37, 83}, {{2, 2003}, {2, 2004}}, ErrorKind::Fatal},
        {{2, 6, 160}, {{5, 5001}, {5, 5009}}, ErrorKind::Internal},
        {{1, 82, 200}, {{1, 1002}, {2, 2005}, {3, 1}, {1, 17}, {0, 17}}, ErrorKind::Other},
    };
    for (const auto& [hex, xml, kind] : rows) {
        for (const int code : hex)
            EXPECT_EQ(kindOf(hexText(code)), kind) << code;
        for (const auto& [category, code] : xml)
            EXPECT_EQ(kindOf(xmlText(category, code)), kind) << category << '.' << code;
    }
}

TEST(ErrorKind, ClassTellsWhereTheTextDoesNot)
{
    const QString text = QStringLiteral("нечто");
    EXPECT_EQ(sale::errorKindOf(FrNoConnectionException(text)), ErrorKind::Line);
    EXPECT_EQ(sale::errorKindOf(ComDriverTimeoutException(text)), ErrorKind::Line);
    EXPECT_EQ(sale::errorKindOf(FrWaitForPaperException(xmlText(1, 8))), ErrorKind::Paper);
    EXPECT_EQ(sale::errorKindOf(FrShiftTooLongException(text)), ErrorKind::ShiftExpired);
    EXPECT_EQ(sale::errorKindOf(FrFatalException(text)), ErrorKind::Fatal);
    EXPECT_EQ(kindOf(QStringLiteral("Некорректный ответ от ФР")), ErrorKind::Line);
    EXPECT_EQ(kindOf(QStringLiteral("Необходимо закрыть смену в ФР")), ErrorKind::ShiftClosed);
    EXPECT_EQ(kindOf(QStringLiteral("Не указана система налогообложения: в ККТ их 2")), ErrorKind::Data);
}

/// The host's own words for one error.
class Translation : public QTranslator
{
public:
    QString translate(const char*, const char* key, const char*, int) const override
    {
        return QByteArray(key) == "spfErrorMessage1007" ? QStringLiteral("no cash") : QString();
    }
    bool isEmpty() const override { return false; }
};

TEST(ErrorKind, TranslatedTextHasTheSameKind)
{
    Translation translation;
    QCoreApplication::installTranslator(&translation);
    EXPECT_EQ(xmlText(1, 1007), QStringLiteral("Внутренняя ошибка. no cash"));
    EXPECT_EQ(kindOf(xmlText(1, 1007)), ErrorKind::Cash);
    QCoreApplication::removeTranslator(&translation);
}

TEST(ErrorKind, EachHasANameAndAnAction)
{
    QSet<QString> names;
    QSet<QString> actions;
    constexpr int count = static_cast<int>(ErrorKind::Other) + 1;
    for (int kind = 0; kind < count; ++kind) {
        names.insert(sale::errorKindName(static_cast<ErrorKind>(kind)));
        actions.insert(sale::errorAction(static_cast<ErrorKind>(kind)));
        EXPECT_EQ(
            static_cast<int>(sale::errorKindNamed(sale::errorKindName(static_cast<ErrorKind>(kind)))), kind);
    }
    EXPECT_EQ(names.size(), count);
    EXPECT_EQ(actions.size(), count);
    EXPECT_EQ(sale::errorKindName(ErrorKind::WrongRegister), "wrongRegister");
    EXPECT_EQ(sale::errorKindName(ErrorKind::Other), "other");
    EXPECT_EQ(sale::errorKindNamed("of a later release"), ErrorKind::Other);
}

} // namespace

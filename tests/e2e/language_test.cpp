#include "programs.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

const QString markedSale = QStringLiteral(FRSPF_EXAMPLES "/marked-sale.json");

Result runIn(const QString& language, const QStringList& arguments)
{
    return runFrctl(QStringList{"--lang", language} + arguments);
}

bool isRussian(const QString& text)
{
    static const QRegularExpression russian(QStringLiteral("[а-яё]{2}"));
    return russian.match(text).hasMatch();
}

/// What a program reads of an answer: all but whether there is a text for people.
QJsonValue withoutTexts(const QJsonValue& value)
{
    static const QStringList texts{"text", "action"};
    if (value.isArray()) {
        QJsonArray array;
        for (const QJsonValue& element : value.toArray())
            array.append(withoutTexts(element));
        return array;
    }
    if (!value.isObject())
        return value;
    QJsonObject object = value.toObject();
    for (const QString& key : object.keys())
        object[key] = texts.contains(key) ? QJsonValue(object.value(key).isString())
                                          : withoutTexts(object.value(key));
    return object;
}

TEST(Language, OfASectionIsThatOfItsRegister)
{
    const QTemporaryDir folder;
    const QString file = written(folder, "frctl.ini", "[till]\nlang = ru\n");
    const QStringList till{"--config", file, "--register", "till", "status"};
    EXPECT_TRUE(isRussian(runFrctl(till).errors));
    EXPECT_FALSE(isRussian(runIn("en", till).errors));
    EXPECT_TRUE(
        isRussian(runShell(QStringLiteral("LC_ALL= LC_MESSAGES= LANG=ru_RU.UTF-8 " FRCTL " status")).errors));
    // Also of mistakes that are found before anything is read.
    EXPECT_TRUE(isRussian(runIn("ru", {"stauts"}).errors) && !isRussian(runIn("en", {"stauts"}).errors));
}

// Also where a receipt stands in a line of its own, and the line is not told twice.
TEST(Language, ChangesNothingOfAnAnswerButItsTexts)
{
    const QTemporaryDir folder;
    const QString file = written(folder, "wrong.jsonl",
        "{\"type\": \"sell\", \"items\": [{\"type\": \"position\", \"name\": 5}]}\n{\"a\": tru}\n{\"\xff\": 1}\n");
    const std::pair<QStringList, bool> rows[] = {{{"check", file}, true}, {{"sell", file}, true},
        {{"doctor"}, true}, {{"check", markedSale}, false}, {{"names", "fields"}, false}};
    for (const auto& [command, hasTexts] : rows) {
        const QJsonObject english = runIn("en", QStringList{"--json"} + command).json();
        const QJsonObject russian = runIn("ru", QStringList{"--json"} + command).json();
        ASSERT_FALSE(english.isEmpty()) << command.first().toStdString();
        EXPECT_EQ(withoutTexts(russian), withoutTexts(english)) << command.first().toStdString();
        EXPECT_EQ(russian != english, hasTexts) << command.first().toStdString();
    }
    const Result checked = runIn("ru", {"check", file});
    EXPECT_FALSE(checked.output.contains("строка ")) << checked.output.constData();
}

TEST(Language, OfWhatTheJournalKeepsIsEnglish)
{
    Emulator emulator;
    const QTemporaryDir folder;
    const QStringList options{"--journal", folder.filePath("sales"), "--port", emulator.port(), "--json"};
    const Result sold = runIn("ru", options + QStringList{"--id", "till-1:4711", "sell", markedSale});
    ASSERT_EQ(sold.status, 0) << sold.errors.constData();
    const QJsonArray warnings = sold.json().value("warnings").toArray();
    ASSERT_FALSE(warnings.isEmpty());
    EXPECT_TRUE(isRussian(warnings.first()["text"].toString()));
    const QJsonObject kept = runIn("ru", options + QStringList{"journal", "show", "till-1:4711"}).json();
    const QString text = kept.value("attempts")[0]["warnings"][0].toString();
    EXPECT_TRUE(text.contains("not checked on line")) << text.toStdString();
    EXPECT_FALSE(isRussian(text)) << text.toStdString();
}

} // namespace

#include "command.h"
#include "help.h"
#include "language.h"
#include "optiontable.h"
#include "receiptnames.h"
#include "wordlists.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

const char* const variables[] = {"LC_ALL", "LC_MESSAGES", "LANG"};

/// The test's own surroundings are back in the end, and the language.
class Language : public testing::Test
{
protected:
    ~Language() override
    {
        qputenv("LC_ALL", "C.UTF-8");
        useLanguage(QStringLiteral("en"));
    }
};

TEST_F(Language, IsThatOfTheCommandLineOrElseOfTheFirstVariableThatSaysSomething)
{
    const std::tuple<QList<QByteArray>, const char*, const char*> rows[] = {
        {{}, "status", "en"},
        {{"", "", "ru_RU.UTF-8"}, "status", "ru"},
        {{"", "ru"}, "status", "ru"},
        {{"ru_RU"}, "status", "ru"},
        {{"", "", "ru_UA.KOI8-U"}, "status", "ru"},
        {{"C", "ru", "ru"}, "status", "en"},
        {{"POSIX", "", "ru"}, "status", "en"},
        {{"", "en_GB.UTF-8", "ru"}, "status", "en"},
        {{"", "C.UTF-8", "ru"}, "status", "en"},
        {{"de_DE.UTF-8", "", "ru"}, "status", "en"},
        {{"run"}, "status", "en"},
        {{}, "status --lang ru", "ru"},
        {{}, "--lang=ru stauts", "ru"},
        {{"ru"}, "--lang en", "en"},
        {{}, "--lang ru --lang en", "en"},
        // That is an error, told in the language of the surroundings.
        {{"ru"}, "--lang de", "ru"},
        {{}, "status --lang", "en"},
    };
    for (const auto& [environment, arguments, language] : rows) {
        for (qsizetype index = 0; index < 3; ++index)
            qputenv(variables[index], environment.value(index));
        EXPECT_EQ(languageOf(QString::fromLatin1(arguments).split(QLatin1Char(' '))), language)
            << environment.value(0).constData() << ' ' << arguments;
    }
}

// Beyond the proper names of barcodes.
TEST_F(Language, WordsOfReceiptsAreExplainedInIt)
{
    static const QRegularExpression english(QStringLiteral("[a-z]{2,}"));
    static const QRegularExpression names(
        QStringLiteral("Code \\d+|Interleaved 2 of 5|Codabar|prepaid|credit|markingCode"));
    useLanguage(QStringLiteral("ru"));
    for (const WordList& list : wordLists()) {
        for (const receipt::NamedValue& word : list.words()) {
            const QString meaning = meaningOf(list, word);
            EXPECT_FALSE(QString(meaning).remove(names).contains(english)) << meaning.toStdString();
        }
    }
    EXPECT_EQ(meaningOf(wordLists()[2], receipt::names::taxRates()[0]).left(3), QStringLiteral("НДС"));
}

/// Name and explanation of each entry of a help.
QList<QStringList> entriesOf(QString help)
{
    // A receipt is no entry.
    help.remove(QRegularExpression(QStringLiteral("^\\{\n.*^\\}$"),
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption));
    static const QRegularExpression entry(
        QStringLiteral("^  (\\S.*?)(?:\\s*\\n\\s+|\\s{2,})(\\S.*)$"), QRegularExpression::MultilineOption);
    QList<QStringList> entries;
    for (const QRegularExpressionMatch& match : entry.globalMatch(help))
        entries.append({match.captured(1), match.captured(2)});
    return entries;
}

TEST_F(Language, OfAllThatHelpExplainsIsTheOneChosen)
{
    static const QRegularExpression russian(QStringLiteral("[а-яё]{2}"));
    QStringList pages{helpText({})};
    for (const Command& command : commands())
        pages.append(helpText(QLatin1String(command.name)));
    EXPECT_GT(entriesOf(pages.first()).size(), static_cast<qsizetype>(commands().size()) + 20);

    useLanguage(QStringLiteral("ru"));
    QStringList russianPages{helpText({})};
    for (const Command& command : commands())
        russianPages.append(helpText(QLatin1String(command.name)));
    for (qsizetype page = 0; page < pages.size(); ++page) {
        const QList<QStringList> entries = entriesOf(russianPages.at(page));
        ASSERT_EQ(entries.size(), entriesOf(pages.at(page)).size()) << russianPages.at(page).toStdString();
        for (qsizetype index = 0; index < entries.size(); ++index) {
            EXPECT_EQ(entries.at(index).first(), entriesOf(pages.at(page)).at(index).first());
            EXPECT_TRUE(russian.match(entries.at(index).last()).hasMatch())
                << entries.at(index).first().toStdString();
        }
    }
    // An option that no page has would be seen by nobody.
    const QString all = russianPages.join(QLatin1Char('\n'));
    for (const QString& name : optionNames())
        EXPECT_TRUE(all.contains(QStringLiteral("--") + name)) << name.toStdString();

    useLanguage(QStringLiteral("en"));
    EXPECT_EQ(helpText({}), pages.first());
}

} // namespace

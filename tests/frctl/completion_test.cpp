// What a shell offers, asked of the shell itself.

#include "completion.h"
#include "optiontable.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

/// What bash offers for the last word, with blanks around each.
QString offered(const QString& line)
{
    QProcess bash;
    const QString script = bashCompletion() + "\nCOMP_WORDS=(frctl " + line
        + ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_frctl\n"
          "echo \" ${COMPREPLY[*]} \"";
    bash.start("bash", {"-c", script});
    bash.waitForFinished();
    EXPECT_TRUE(bash.readAllStandardError().isEmpty()) << line.toStdString();
    return QString::fromUtf8(bash.readAllStandardOutput());
}

TEST(Completion, OffersWhatTheTableHas)
{
    const std::tuple<const char*, const char*, const char*> rows[]
        = {{"sta", " status ", " sell "}, {"''", " sell ", " --drop "}, {"--pro", " --protocol ", " status "},
            {"--protocol ''", " HEX XML hex xml ", " status "}, {"--protocol h", " hex ", " HEX "},
            {"names tax", " tax-systems taxes ", " units "},
            {"--log-level ''", " trace debug info ", "LEVEL"}, {"preview --png /et", " /etc ", "--"},
            {"--protocol = X", " XML ", " HEX "}, {"--port sell --protocol HEX dra", " drawer ", "state"},
            {"--protocol = HEX dra", " drawer ", " HEX "}, {"drawer ''", " open state ", " get "},
            {"time ''", " get set ", " TIME "}, {"help sel", " sell ", " status "},
            {"sell --dr", " --drop ", " status "}, {"status --dr", " ", "--drop"},
            {"info --p", " --plugin ", "--port"}, {"sell /et", " /etc ", "--"}, {"--option ''", " ", "BIT"},
            {"status /et", " ", "/etc"}, {"detect /de", " /dev ", "--"}, {"trace show /et", " /etc ", "--"}};
    for (const auto& [line, expected, notOffered] : rows) {
        const QString words = offered(line);
        EXPECT_TRUE(words.contains(expected)) << line << ':' << words.toStdString();
        EXPECT_FALSE(words.contains(notOffered)) << line << ':' << words.toStdString();
    }
}

TEST(Completion, OfZshKnowsAllCommandsAndOptions)
{
    const QString script = zshCompletion();
    for (const Command& command : commands())
        EXPECT_TRUE(script.contains("                " + QString(command.name) + ") ")) << command.name;
    for (const OptionRow& row : optionRows())
        EXPECT_TRUE(script.contains("--" + QString(row.name) + (row.isSwitch() ? "[" : "=["))) << row.name;
    // Words as bash reads them have the same quotes.
    QProcess bash;
    bash.start("bash", {"-n", "-c", script});
    bash.waitForFinished();
    EXPECT_EQ(bash.exitCode(), 0) << bash.readAllStandardError().constData();
}

} // namespace

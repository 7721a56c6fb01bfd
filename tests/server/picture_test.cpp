#include "becomes.h"
#include "drawscript.h"
#include "program/pictureprocesses.h"

#include <gtest/gtest.h>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

using frserver::PictureProcesses;

/// What the process that draws may do, as a script that stands in for it.
class PictureTest : public testing::Test
{
protected:
    QString script(const QByteArray& lines)
    {
        return drawScript(m_folder.filePath("draw%1").arg(++m_scripts), lines);
    }

    std::shared_ptr<http::Pending> paint(PictureProcesses& pictures)
    {
        return std::get<std::shared_ptr<http::Pending>>(
            pictures.paint({.receipt = "{}", .time = QDateTime::currentDateTime(), .format = "svg"}));
    }

    QTemporaryDir m_folder;
    int m_scripts = 0;
};

std::string outcomeOf(const http::Response& response)
{
    const QString type
        = QJsonDocument::fromJson(response.body).object().value(QLatin1String("type")).toString();
    const QByteArray retry = response.headers.value("Retry-After");
    return QStringLiteral("%1 %2 %3")
        .arg(QString::number(response.status), type, QString::fromLatin1(retry))
        .trimmed()
        .toStdString();
}

TEST_F(PictureTest, TellsWhateverBecomesOfTheProcess)
{
    constexpr std::chrono::seconds enough(20);
    const std::tuple<QString, std::chrono::milliseconds, const char*> rows[] = {
        {script("cat"), enough, "200"},
        {script("printf 'Не хватает наличных'; exit 4"), enough, "400 document-wrong"},
        {script("exit 3"), enough, "422 picture-too-long"},
        {script("exit 1"), enough, "503 picture-failed 10"},
        {script("kill -SEGV $$"), enough, "503 picture-failed 10"},
        {script("exec sleep 60"), std::chrono::milliseconds(1), "503 picture-given-up 10"},
        {script("exec cat /dev/zero"), enough, "503 picture-given-up 10"},
        {"/nowhere", enough, "503 picture-failed 10"},
    };
    for (const auto& [program, patience, outcome] : rows) {
        PictureProcesses pictures({.program = program, .patience = patience, .mostBytes = 1'000'000});
        const auto pending = paint(pictures);
        ASSERT_TRUE(becomes([&] { return pending->isOver(); })) << program.toStdString();
        EXPECT_EQ(outcomeOf(*pending->response()), outcome) << program.toStdString();
    }
}

TEST_F(PictureTest, TakesAFewAtOnce)
{
    PictureProcesses pictures({.program = script("exec sleep 60"), .mostAtOnce = 2});
    const auto first = paint(pictures);
    const auto second = paint(pictures);
    EXPECT_EQ(outcomeOf(std::get<http::Response>(pictures.paint({.format = "svg"}))), "503 busy 1");
    // A client that leaves makes room.
    first->leave();
    EXPECT_TRUE(becomes([&] {
        return std::holds_alternative<std::shared_ptr<http::Pending>>(pictures.paint({.format = "svg"}));
    }));
    EXPECT_FALSE(second->isOver());
}

} // namespace

#include "becomes.h"
#include "drawscript.h"
#include "program/pictureprocesses.h"

#include <gtest/gtest.h>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

using frserver::PictureProcesses;

constexpr int enough = 20'000;

/// What the process that draws may do, as a script that stands in for it.
class PictureTest : public testing::Test
{
protected:
    QString script(const QByteArray& lines) { return drawScript(m_folder.filePath("draw"), lines); }

    std::shared_ptr<http::Pending> paint(PictureProcesses& pictures)
    {
        return std::get<std::shared_ptr<http::Pending>>(
            pictures.paint({.receipt = "{}", .time = QDateTime::currentDateTime(), .format = "svg"}));
    }

    QTemporaryDir m_folder;
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
    struct Row
    {
        QByteArray lines;
        const char* outcome;
        int patience = enough;
    };
    const Row rows[]{
        {"cat", "200"},
        {"printf 'Не хватает наличных'; exit 4", "400 document-wrong"},
        {"exit 3", "422 picture-too-long"},
        {"exit 1", "503 picture-failed 10"},
        {"kill -SEGV $$", "503 picture-failed 10"},
        {"exec sleep 60", "503 picture-given-up 10", 1},
        {"exec cat /dev/zero", "503 picture-given-up 10"},
    };
    for (const Row& row : rows) {
        PictureProcesses pictures({.program = script(row.lines),
            .patience = std::chrono::milliseconds(row.patience),
            .mostBytes = 1'000'000});
        const auto pending = paint(pictures);
        ASSERT_TRUE(becomes([&] { return pending->isOver(); })) << row.lines.constData();
        EXPECT_EQ(outcomeOf(*pending->response()), row.outcome) << row.lines.constData();
    }
}

TEST_F(PictureTest, NoProgramNoPicture)
{
    PictureProcesses pictures({.program = m_folder.filePath("none")});
    const auto pending = paint(pictures);
    ASSERT_TRUE(becomes([&] { return pending->isOver(); }));
    EXPECT_EQ(outcomeOf(*pending->response()), "503 picture-failed 10");
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

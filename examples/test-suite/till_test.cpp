// A till's tests against the software register, to copy from. CashDesk stands here for the till that is
// tested. The register's program is taken from PATH, or from SPF_EMULATOR.

#include <frdevices/registerconnection.h>
#include <frsale/cashdesk.h>
#include <frsale/sqlitestore.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>

namespace {

/// spf-emulator with its control interface. What the routes are tells docs/emulator.openapi.json.
class Register
{
public:
    Register()
    {
        // A pipe that nobody reads would hold it up once it is full.
        m_process.setStandardErrorFile(m_folder.filePath("log"));
        m_process.start(qEnvironmentVariable("SPF_EMULATOR", "spf-emulator"),
            {"--tcp", "0", "--panel", "0", "--quiet"}, QIODevice::ReadOnly);
        line = readAddress("ready on");
        m_url = readAddress("panel on");
    }
    ~Register()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    QJsonObject ask(const QByteArray& method, const QString& path, const QJsonObject& body = {})
    {
        QNetworkRequest request(QUrl(m_url + "v1" + path));
        request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
        const QByteArray text = body.isEmpty() ? QByteArray() : QJsonDocument(body).toJson();
        const std::unique_ptr<QNetworkReply> reply(m_network.sendCustomRequest(request, method, text));
        QEventLoop loop;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        EXPECT_EQ(QNetworkReply::NoError, reply->error()) << qPrintable(reply->errorString());
        return QJsonDocument::fromJson(reply->readAll()).object();
    }

    QStringList totals()
    {
        QStringList totals;
        for (const QJsonValue document : ask("GET", "/documents")["documents"].toArray()) {
            if (document["word"] == "sell")
                totals.append(document["total"].toString());
        }
        return totals;
    }

    QString line;

private:
    QString readAddress(const QString& words)
    {
        const QRegularExpression form(words + " (\\S+)\\s");
        QFile log(m_folder.filePath("log"));
        QString said;
        // Looks again and again, until the program ends.
        constexpr int pause = 10;
        while (!form.match(said).hasMatch() && m_process.state() != QProcess::NotRunning) {
            m_process.waitForFinished(pause);
            if (log.isOpen() || log.open(QIODevice::ReadOnly))
                said += QString::fromUtf8(log.readAll());
        }
        return form.match(said).captured(1);
    }

    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_url;
    QNetworkAccessManager m_network;
};

class TillTest : public testing::Test
{
protected:
    TillTest()
        : m_journal(m_folder.filePath("journal.sqlite"))
        , m_connection({.port = m_register.line, .protocol = "HEX", .plugins = {PLUGIN_DIR}})
        , m_desk(
              m_connection.driver(), m_journal, {{receipt::Protocol::Hex, true}, "till-1", {"Иванова А. П."}})
    {
        m_desk.open();
    }

    /// Put your till here.
    sale::IssueResult sell(const QString& id)
    {
        QFile file(QStringLiteral(RECEIPT));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return m_desk.issue(id, file.readAll());
    }

    Register m_register;

private:
    QTemporaryDir m_folder;
    sale::SqliteStore m_journal;
    devices::RegisterConnection m_connection;
    sale::CashDesk m_desk;
};

} // namespace

TEST_F(TillTest, sells)
{
    const QString begin = m_register.ask("GET", "/state")["lastEvent"].toString();
    EXPECT_TRUE(sell("till-1:1").isIssued());
    const QJsonObject event
        = m_register.ask("GET", "/wait?event=document&type=sell&timeout=10&after=" + begin);
    EXPECT_EQ("305.23", event["data"]["total"].toString());
}

TEST_F(TillTest, withoutPaperSellsLater)
{
    m_register.ask("PUT", "/paper", {{"state", "out"}});
    const sale::IssueResult refused = sell("till-1:2");
    EXPECT_FALSE(refused.isIssued());
    ASSERT_TRUE(refused.failure);
    EXPECT_TRUE(refused.failure->text.contains("бумаг")) << qPrintable(refused.failure->text);
    m_register.ask("PUT", "/paper", {{"state", "in"}});
    EXPECT_TRUE(sell("till-1:2").isIssued());
    EXPECT_EQ(QStringList{"305.23"}, m_register.totals());
}

TEST_F(TillTest, sellsOnceWhenAnAnswerIsLost)
{
    const QJsonObject rule{{"mode", "lost"}, {"command", "FinishDocument"}, {"nth", 1}};
    m_register.ask("PUT", "/faults", {{"rules", QJsonArray{rule}}});
    EXPECT_TRUE(sell("till-1:3").isIssued());
    EXPECT_EQ(1, m_register.ask("GET", "/faults")["rules"][0]["hits"].toInt());
    EXPECT_TRUE(sell("till-1:3").isIssued());
    EXPECT_EQ(QStringList{"305.23"}, m_register.totals());
}

int main(int argc, char* argv[])
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

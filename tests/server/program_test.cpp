// What the program has beside its interface: addresses, certificates, pictures.

#include "becomes.h"
#include "drawscript.h"
#include "http/tlserror.h"
#include "http/tlsidentity.h"
#include "program/certificatecommand.h"
#include "program/listenaddress.h"
#include "program/pictureprocesses.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

using namespace frserver;

namespace {

TEST(ListenAddress, IsOfThisMachineAloneWithoutTlsAndTokens)
{
    // why: Of what it is refused for; empty for one that is taken.
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
        {"8403", "127.0.0.1", 8403, ""},
        {"127.0.0.1:0", "127.0.0.1", 0, ""},
        {"127.8.0.1:80", "127.8.0.1", 80, ""},
        {"localhost:80", "127.0.0.1", 80, ""},
        {"[::1]:80", "::1", 80, ""},
        {"0.0.0.0:80", "", 0, "TLS"},
        {"192.168.0.7:80", "", 0, "TLS"},
        {"[::]:80", "", 0, "TLS"},
        {"[::ffff:127.0.0.1]:80", "", 0, "TLS"},
        {"127.0.0.1.2:80", "", 0, "ADDRESS:PORT"},
        {"127.0.0.1", "", 0, "ADDRESS:PORT"},
        {"127.0.0.1:65536", "", 0, "ADDRESS:PORT"},
        {"till:80", "", 0, "ADDRESS:PORT"},
        {"", "", 0, "ADDRESS:PORT"},
    };
    for (const auto& [text, address, port, why] : rows) {
        try {
            const ListenAddress listen = ListenAddress::of(text);
            EXPECT_STREQ(why, "") << text;
            EXPECT_EQ(listen.address, address) << text;
            EXPECT_EQ(listen.port, port) << text;
        } catch (const std::invalid_argument& error) {
            EXPECT_TRUE(QByteArray(error.what()).contains(why) && *why != '\0') << error.what();
        }
        if (QByteArray(why) != "TLS")
            continue;
        EXPECT_THROW(ListenAddress::of(text, true, false), std::invalid_argument) << text;
        EXPECT_THROW(ListenAddress::of(text, false, true), std::invalid_argument) << text;
        EXPECT_FALSE(ListenAddress::of(text, true, true).isLoopback()) << text;
    }
    EXPECT_TRUE(ListenAddress::of("127.0.0.1:80", true, false).isLoopback());
}

class Certificate : public testing::Test
{
protected:
    QString file(const char* name) const { return folder.filePath(name); }
    /// As a client that trusts the authority does.
    bool isBelieved(const char* option, const char* host) const
    {
        QProcess process;
        process.start("openssl",
            {"verify", "-CAfile", file("frspf-ca.pem"), "-purpose", "sslserver", option, host,
                file("server.pem")});
        return process.waitForFinished() && process.exitCode() == 0;
    }

    const QTemporaryDir folder;
};

TEST_F(Certificate, IsBelievedForItsHostAloneAndRenewedUnderTheSameAuthority)
{
    for (const char* const host : {"", "a/CN=b", "a,IP:127.0.0.1", "till shop"})
        EXPECT_THROW(makeCertificate(host, folder.path()), std::runtime_error) << host;
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_EQ(0, makeCertificate("till.shop.example", folder.path()));
    const http::TlsIdentity identity(file("server.pem"), file("server.key"));
    EXPECT_EQ(QStringList{"till.shop.example"}, identity.hostNames());
    EXPECT_LT(QDateTime::currentDateTime().addDays(300), identity.validUntil());
    EXPECT_TRUE(isBelieved("-verify_hostname", "till.shop.example"));
    EXPECT_FALSE(isBelieved("-verify_hostname", "shop.example"));
    for (const char* const secret : {"server.key", "frspf-ca.key"})
        EXPECT_EQ(0, QFile::permissions(file(secret)) & (QFile::ReadGroup | QFile::ReadOther)) << secret;
    EXPECT_THROW(makeCertificate("till.shop.example", folder.path()), std::runtime_error)
        << "what is there stays";
    QFile::remove(file("server.pem"));
    QFile::rename(file("server.key"), file("former.key"));
    makeCertificate("192.168.0.7", folder.path());
    EXPECT_TRUE(isBelieved("-verify_ip", "192.168.0.7"));
    EXPECT_THROW(http::TlsIdentity(file("server.pem"), file("former.key")), http::TlsError);
}

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

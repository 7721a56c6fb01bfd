#include "http/tlserror.h"
#include "http/tlsidentity.h"
#include "program/certificatecommand.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

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
        EXPECT_THROW(frserver::makeCertificate(host, folder.path()), std::runtime_error) << host;
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_EQ(0, frserver::makeCertificate("till.shop.example", folder.path()));
    const http::TlsIdentity identity(file("server.pem"), file("server.key"));
    EXPECT_EQ(QStringList{"till.shop.example"}, identity.hostNames());
    EXPECT_LT(QDateTime::currentDateTime().addDays(300), identity.validUntil());
    EXPECT_TRUE(isBelieved("-verify_hostname", "till.shop.example"));
    EXPECT_FALSE(isBelieved("-verify_hostname", "shop.example"));
    for (const char* const secret : {"server.key", "frspf-ca.key"})
        EXPECT_EQ(0, QFile::permissions(file(secret)) & (QFile::ReadGroup | QFile::ReadOther)) << secret;
    EXPECT_THROW(frserver::makeCertificate("till.shop.example", folder.path()), std::runtime_error)
        << "what is there stays";
    QFile::remove(file("server.pem"));
    QFile::rename(file("server.key"), file("former.key"));
    frserver::makeCertificate("192.168.0.7", folder.path());
    EXPECT_TRUE(isBelieved("-verify_ip", "192.168.0.7"));
    EXPECT_THROW(http::TlsIdentity(file("server.pem"), file("former.key")), http::TlsError);
}

} // namespace

#include "program/certificatecommand.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <arpa/inet.h>
#include <cstdio>
#include <stdexcept>
#include <sys/stat.h>

namespace frserver {

namespace {

[[noreturn]] void fail(const QString& text)
{
    throw std::runtime_error(text.toStdString());
}

/// As a certificate names it.
QString nameOf(const QString& host)
{
    static const QRegularExpression dnsName(
        QStringLiteral("\\A(?=.{1,253}\\z)[A-Za-z0-9-]{1,63}(\\.[A-Za-z0-9-]{1,63})*\\z"));
    in6_addr bytes{};
    const QByteArray text = host.toLatin1();
    if (inet_pton(AF_INET, text.constData(), &bytes) == 1
        || inet_pton(AF_INET6, text.constData(), &bytes) == 1)
        return QStringLiteral("IP:") + host;
    if (!dnsName.match(host).hasMatch())
        fail(QStringLiteral("\"%1\" is neither a host's name nor an address").arg(host));
    return QStringLiteral("DNS:") + host;
}

void runOpenssl(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("openssl"), arguments);
    if (!process.waitForStarted())
        fail(QStringLiteral("openssl does not start: %1; it is a package of its own")
                 .arg(process.errorString()));
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        fail(QStringLiteral("openssl: ") + QString::fromLocal8Bit(process.readAllStandardError()).trimmed());
}

QStringList request(
    const QString& subject, const QString& days, const QString& key, const QString& certificate)
{
    return {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"), QStringLiteral("ec"),
        QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:P-256"), QStringLiteral("-nodes"),
        QStringLiteral("-subj"), subject, QStringLiteral("-days"), days, QStringLiteral("-keyout"), key,
        QStringLiteral("-out"), certificate};
}

void requireNone(const QString& file)
{
    if (QFile::exists(file))
        fail(QStringLiteral("%1 is there already; move it away for a new one").arg(file));
}

constexpr const char* advice
    = "frserver: made %1. In frserver.ini, [service]:\n"
      "    tls-certificate = %2\n"
      "    tls-key = %3\n"
      "and let the service read the key: chgrp frspf %3; chmod 640 %3\n"
      "Clients trust it by %4 alone. On a Windows till, as an administrator:\n"
      "    certutil -addstore -f Root frspf-ca.pem\n"
      "On Debian: cp frspf-ca.pem /usr/local/share/ca-certificates/frspf-ca.crt; update-ca-certificates\n"
      "They ask https://%5:PORT. Keep frspf-ca.key from others: who has it is believed to be anybody.\n";

} // namespace

int makeCertificate(const QString& host, const QString& folder)
{
    const QString name = nameOf(host);
    const auto file = [&folder](const char* one) { return QDir(folder).filePath(QLatin1String(one)); };
    const QString caCertificate = file("frspf-ca.pem");
    const QString caKey = file("frspf-ca.key");
    const QString certificate = file("server.pem");
    const QString key = file("server.key");
    requireNone(certificate);
    requireNone(key);
    const mode_t mask = ::umask(077);
    if (!QFile::exists(caCertificate))
        runOpenssl(request(QStringLiteral("/CN=frserver authority of %1").arg(host.left(42)),
                       QStringLiteral("3650"), caKey, caCertificate)
            + QStringList{
                QStringLiteral("-addext"), QStringLiteral("keyUsage=critical,keyCertSign,cRLSign")});
    // No more than clients of today take.
    runOpenssl(request(QStringLiteral("/CN=") + host.left(64), QStringLiteral("397"), key, certificate)
        + QStringList{QStringLiteral("-CA"), caCertificate, QStringLiteral("-CAkey"), caKey,
            QStringLiteral("-addext"), QStringLiteral("subjectAltName=") + name, QStringLiteral("-addext"),
            QStringLiteral("basicConstraints=critical,CA:false"), QStringLiteral("-addext"),
            QStringLiteral("extendedKeyUsage=serverAuth")});
    ::umask(mask);
    for (const QString& open : {caCertificate, certificate})
        ::chmod(QFile::encodeName(open).constData(), 0644);
    std::fputs(
        qPrintable(QString::fromLatin1(advice).arg(certificate, certificate, key, caCertificate, host)),
        stderr);
    return 0;
}

} // namespace frserver

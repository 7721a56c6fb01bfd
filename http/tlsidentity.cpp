#include "http/tlsidentity.h"

#include "http/tlserror.h"
#include "http/tlsmaterial.h"

#include <QFile>

#include <array>

#include <gnutls/x509.h>

namespace http {

namespace {

QByteArray contentOf(const QString& fileName)
{
    // No file of these is larger; what has no end, as a device, is known by it.
    constexpr qint64 largest = 1024LL * 1024;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw TlsError(QStringLiteral("%1: %2").arg(fileName, file.errorString()).toStdString());
    const QByteArray bytes = file.read(largest + 1);
    if (bytes.size() > largest)
        throw TlsError(QStringLiteral("%1: has more than 1 MiB").arg(fileName).toStdString());
    return bytes;
}

/// By the line that any key in PEM begins with.
bool isSecret(const QByteArray& pem)
{
    return pem.contains("PRIVATE KEY-----");
}

std::unique_ptr<TlsMaterial> materialOf(const QString& certificateFile, const QString& keyFile)
{
    const QByteArray certificates = contentOf(certificateFile);
    const QByteArray key = contentOf(keyFile);
    if (!certificates.contains("-----BEGIN CERTIFICATE-----"))
        throw TlsError(QStringLiteral("%1: has no certificate in PEM").arg(certificateFile).toStdString());
    if (!isSecret(key))
        throw TlsError(QStringLiteral("%1: has no key in PEM").arg(keyFile).toStdString());
    try {
        return std::make_unique<TlsMaterial>(certificates, key);
    } catch (const std::runtime_error& error) {
        throw TlsError(QStringLiteral("%1 with %2: %3")
                           .arg(certificateFile, keyFile, QString::fromUtf8(error.what()))
                           .toStdString());
    }
}

} // namespace

TlsIdentity::TlsIdentity(const QString& certificateFile, const QString& keyFile)
    : m_material(materialOf(certificateFile, keyFile))
{
}

TlsIdentity::~TlsIdentity() = default;

QStringList TlsIdentity::hostNames() const
{
    QStringList names;
    std::array<char, 256> name{};
    for (unsigned place = 0;; ++place) {
        size_t size = name.size();
        const int type = gnutls_x509_crt_get_subject_alt_name(
            m_material->certificates[0], place, name.data(), &size, nullptr);
        if (type == GNUTLS_E_REQUESTED_DATA_NOT_AVAILABLE)
            return names;
        if (type == GNUTLS_SAN_DNSNAME)
            names.append(QString::fromLatin1(name.data(), static_cast<qsizetype>(size)));
    }
}

QDateTime TlsIdentity::validUntil() const
{
    return QDateTime::fromSecsSinceEpoch(gnutls_x509_crt_get_expiration_time(m_material->certificates[0]));
}

} // namespace http

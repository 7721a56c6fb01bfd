#pragma once

#include <QDateTime>
#include <QStringList>

#include <memory>

namespace http {

struct TlsMaterial;

/// Whom a server shows itself as: its certificate, with those that vouch for it, and its key.
class TlsIdentity
{
public:
    /// Of PEM files: the server's own certificate stands first, and the key has no password. Throws TlsError,
    /// also when the two do not belong together.
    TlsIdentity(const QString& certificateFile, const QString& keyFile);
    ~TlsIdentity();
    TlsIdentity(const TlsIdentity&) = delete;
    TlsIdentity& operator=(const TlsIdentity&) = delete;

    /// That the certificate is for, as it has them; addresses in digits are not among them.
    QStringList hostNames() const;
    QDateTime validUntil() const;

    /// As the library takes it, for as long as this lives.
    const TlsMaterial& material() const { return *m_material; }

private:
    std::unique_ptr<TlsMaterial> m_material;
};

} // namespace http

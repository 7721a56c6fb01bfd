#include "http/tlsmaterial.h"

#include <stdexcept>

namespace http {

namespace {

void require(int result)
{
    if (result < 0)
        throw std::runtime_error(gnutls_strerror(result));
}

gnutls_datum_t datum(const QByteArray& bytes)
{
    return {reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.constData())),
        static_cast<unsigned>(bytes.size())};
}

} // namespace

TlsMaterial::TlsMaterial(const QByteArray& pem, const QByteArray& keyPem)
{
    try {
        load(pem, keyPem);
    } catch (...) {
        release();
        throw;
    }
}

TlsMaterial::~TlsMaterial()
{
    release();
}

void TlsMaterial::load(const QByteArray& pem, const QByteArray& keyPem)
{
    require(gnutls_certificate_allocate_credentials(&credentials));
    const gnutls_datum_t certificateBytes = datum(pem);
    const gnutls_datum_t keyBytes = datum(keyPem);
    // Says, too, when the key is that of another certificate.
    require(
        gnutls_certificate_set_x509_key_mem(credentials, &certificateBytes, &keyBytes, GNUTLS_X509_FMT_PEM));
    require(gnutls_certificate_get_x509_crt(credentials, 0, &certificates, &count));
    for (unsigned place = 0; place < count; ++place) {
        gnutls_pcert_st one{};
        require(gnutls_pcert_import_x509(&one, certificates[place], 0));
        sent.push_back(one);
    }
    gnutls_x509_privkey_t plainKey = nullptr;
    require(gnutls_certificate_get_x509_key(credentials, 0, &plainKey));
    require(gnutls_privkey_init(&key));
    require(gnutls_privkey_import_x509(key, plainKey, GNUTLS_PRIVKEY_IMPORT_AUTO_RELEASE));
}

void TlsMaterial::release()
{
    if (key)
        gnutls_privkey_deinit(key);
    for (gnutls_pcert_st& one : sent)
        gnutls_pcert_deinit(&one);
    for (unsigned place = 0; place < count; ++place)
        gnutls_x509_crt_deinit(certificates[place]);
    gnutls_free(certificates);
    if (credentials)
        gnutls_certificate_free_credentials(credentials);
}

} // namespace http

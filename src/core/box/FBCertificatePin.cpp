#include "box/FBCertificatePin.h"

#include <curl/curl.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/sha.h>
#include <openssl/x509.h>

namespace FBCertificatePin {

QString pinForCertificatePem(const QByteArray& pem)
{
    BIO* bio = BIO_new_mem_buf(pem.constData(), int(pem.size()));
    if (!bio)
        return {};
    X509* cert = PEM_read_bio_X509(bio, nullptr, nullptr, nullptr);
    BIO_free(bio);
    if (!cert)
        return {};
    QString pin;
    if (EVP_PKEY* key = X509_get_pubkey(cert)) {
        unsigned char* der = nullptr;
        const int len = i2d_PUBKEY(key, &der);
        if (len > 0) {
            unsigned char digest[SHA256_DIGEST_LENGTH];
            SHA256(der, size_t(len), digest);
            pin = QStringLiteral("sha256//") +
                  QString::fromLatin1(
                      QByteArray(reinterpret_cast<const char*>(digest), SHA256_DIGEST_LENGTH).toBase64());
            OPENSSL_free(der);
        }
        EVP_PKEY_free(key);
    }
    X509_free(cert);
    return pin;
}

QString pinFromCurl(CURL* curl)
{
    curl_certinfo* info = nullptr;
    if (curl_easy_getinfo(curl, CURLINFO_CERTINFO, &info) != CURLE_OK || !info || info->num_of_certs < 1)
        return {};
    // The first certificate is the server's own.
    for (curl_slist* item = info->certinfo[0]; item; item = item->next) {
        const QByteArray line(item->data);
        if (line.startsWith("Cert:"))
            return pinForCertificatePem(line.mid(5));
    }
    return {};
}

} // namespace FBCertificatePin

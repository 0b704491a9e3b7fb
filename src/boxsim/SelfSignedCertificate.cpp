#include "SelfSignedCertificate.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include <cstdio>
#include <memory>

namespace {
struct FileCloser
{
    void operator()(FILE* f) const { std::fclose(f); }
};
} // namespace

bool writeSelfSignedCertificate(const QString& certPath, const QString& keyPath, const QString& commonName)
{
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_RSA_gen(2048), EVP_PKEY_free);
    if (!key)
        return false;
    std::unique_ptr<X509, decltype(&X509_free)> cert(X509_new(), X509_free);
    if (!cert)
        return false;
    X509_set_version(cert.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(cert.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(cert.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(cert.get()), 60L * 60 * 24 * 365 * 10);
    X509_set_pubkey(cert.get(), key.get());
    X509_NAME* name = X509_get_subject_name(cert.get());
    const QByteArray cn = commonName.toUtf8();
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char*>(cn.constData()), -1, -1, 0);
    X509_set_issuer_name(cert.get(), name);
    if (X509_sign(cert.get(), key.get(), EVP_sha256()) == 0)
        return false;

    std::unique_ptr<FILE, FileCloser> certFile(std::fopen(certPath.toLocal8Bit().constData(), "wb"));
    std::unique_ptr<FILE, FileCloser> keyFile(std::fopen(keyPath.toLocal8Bit().constData(), "wb"));
    if (!certFile || !keyFile)
        return false;
    return PEM_write_X509(certFile.get(), cert.get()) == 1 &&
           PEM_write_PrivateKey(keyFile.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) == 1;
}

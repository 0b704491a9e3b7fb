#pragma once

#include <QByteArray>
#include <QString>

typedef void CURL;

// Public-key pins in libcurl's form: "sha256//" + base 64 of the SHA-256 of the DER public key.
namespace FBCertificatePin {

QString pinForCertificatePem(const QByteArray& pem);
// The pin of the server's certificate of a finished transfer (CURLOPT_CERTINFO on), or "".
QString pinFromCurl(CURL* curl);

} // namespace FBCertificatePin

#pragma once

#include <QString>

// A fresh self-signed certificate and key as PEM files, as a router makes one for its remote
// access. False when OpenSSL fails.
bool writeSelfSignedCertificate(const QString& certPath, const QString& keyPath, const QString& commonName);

#pragma once

#include <QByteArray>
#include <QString>

// The router's side of its login schemes and of HTTP digest authentication.
namespace SimCrypto {
QString md5Hex(const QByteArray& data);
// What the router expects for an MD5 challenge: challenge "-" md5(utf16le(challenge-password)).
QString expectedMd5Response(const QString& challenge, const QString& password);
// What it expects for a "2$..." challenge: salt2 "$" hex(pbkdf2(pbkdf2(pw, salt1), salt2)).
QString expectedPbkdf2Response(const QString& challenge, const QString& password);
} // namespace SimCrypto

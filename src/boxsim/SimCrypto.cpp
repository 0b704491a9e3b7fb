#include "SimCrypto.h"

#include <QCryptographicHash>
#include <QStringList>

#include <openssl/evp.h>

namespace SimCrypto {

QString md5Hex(const QByteArray& data)
{
    return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Md5).toHex());
}

QString expectedMd5Response(const QString& challenge, const QString& password)
{
    const QString text = challenge + u'-' + password;
    QByteArray bytes;
    for (QChar c : text) {
        const char16_t u = c.unicode() > 0xFF ? u'.' : c.unicode();
        bytes.append(char(u & 0xFF)).append(char(u >> 8));
    }
    return challenge + u'-' + md5Hex(bytes);
}

QString expectedPbkdf2Response(const QString& challenge, const QString& password)
{
    const QStringList p = challenge.split(u'$');
    if (p.size() != 5)
        return {};
    const auto derive = [](const QByteArray& secret, const QByteArray& salt, int iterations) {
        QByteArray out(32, '\0');
        PKCS5_PBKDF2_HMAC(secret.constData(), int(secret.size()),
                          reinterpret_cast<const unsigned char*>(salt.constData()), int(salt.size()),
                          iterations, EVP_sha256(), 32, reinterpret_cast<unsigned char*>(out.data()));
        return out;
    };
    const QByteArray h1 = derive(password.toUtf8(), QByteArray::fromHex(p[2].toLatin1()), p[1].toInt());
    const QByteArray h2 = derive(h1, QByteArray::fromHex(p[4].toLatin1()), p[3].toInt());
    return p[4] + u'$' + QString::fromLatin1(h2.toHex());
}

} // namespace SimCrypto

#include "box/FBLoginHash.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QStringList>

#include <openssl/evp.h>

namespace {
bool hexSalt(const QString& text, QByteArray* out)
{
    if (text.isEmpty() || text.size() % 2 != 0)
        return false;
    for (QChar c : text)
        if (!c.isDigit() && !QStringLiteral("abcdefABCDEF").contains(c))
            return false;
    *out = QByteArray::fromHex(text.toLatin1());
    return true;
}

QByteArray pbkdf2(const QByteArray& secret, const QByteArray& salt, int iterations)
{
    QByteArray out(32, '\0');
    if (PKCS5_PBKDF2_HMAC(secret.constData(), int(secret.size()),
                          reinterpret_cast<const unsigned char*>(salt.constData()), int(salt.size()),
                          iterations, EVP_sha256(), int(out.size()),
                          reinterpret_cast<unsigned char*>(out.data())) != 1)
        return {};
    return out;
}
} // namespace

namespace FBLoginHash {

QString md5ResponseFromString(const QString& text)
{
    QByteArray utf16;
    utf16.reserve(text.size() * 2);
    for (QChar c : text) {
        const ushort u = c.unicode() > 0xFF ? ushort('.') : c.unicode();
        utf16.append(char(u & 0xFF));
        utf16.append(char(u >> 8));
    }
    return QString::fromLatin1(QCryptographicHash::hash(utf16, QCryptographicHash::Md5).toHex());
}

QString pbkdf2Response(const QString& challenge, const QString& password)
{
    const QStringList parts = challenge.split(u'$');
    if (parts.size() != 5 || parts[0] != u"2")
        return {};
    bool ok1 = false, ok2 = false;
    const int iter1 = parts[1].toInt(&ok1);
    const int iter2 = parts[3].toInt(&ok2);
    QByteArray salt1, salt2;
    if (!ok1 || !ok2 || iter1 < 1 || iter2 < 1 || iter1 > MaxPbkdf2Iterations ||
        iter2 > MaxPbkdf2Iterations || !hexSalt(parts[2], &salt1) || !hexSalt(parts[4], &salt2))
        return {};
    const QByteArray hash1 = pbkdf2(password.toUtf8(), salt1, iter1);
    const QByteArray hash2 = hash1.isEmpty() ? QByteArray() : pbkdf2(hash1, salt2, iter2);
    if (hash2.isEmpty())
        return {};
    return parts[4] + u'$' + QString::fromLatin1(hash2.toHex());
}

QString responseForChallenge(const QString& challenge, const QString& password)
{
    if (challenge.startsWith(QStringLiteral("2$")))
        return pbkdf2Response(challenge, password);
    return challenge + u'-' + md5ResponseFromString(challenge + u'-' + password);
}

} // namespace FBLoginHash

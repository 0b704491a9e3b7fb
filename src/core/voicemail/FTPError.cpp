#include "voicemail/FTPError.h"

#include "base/Localization.h"

QString FTPError::alertKey() const
{
    switch (kind) {
    case Kind::LoginDenied:
        return remote ? QStringLiteral("errorFTP_Login_Denied_Remote")
                      : QStringLiteral("errorFTP_Login_Denied_Home");
    case Kind::NoConnection:
        return remote ? QStringLiteral("errorFTP_Connect_Remote") : QStringLiteral("errorFTP_Connect_Home");
    case Kind::TLSTimeout:
        return QStringLiteral("errorFTPSSL_Timeout");
    default:
        return {};
    }
}

QString FTPError::alertText() const
{
    const QString key = alertKey();
    if (key.isEmpty())
        return message;
    return QStringLiteral("%1: %2").arg(Localization::localized(key), message);
}

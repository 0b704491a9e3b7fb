#pragma once

#include <QString>

// Why an FTP operation failed, in the classes the user's alert tells apart.
struct FTPError
{
    enum class Kind { None, LoginDenied, NoConnection, TLSTimeout, Cancelled, Failed };

    Kind kind = Kind::None;
    QString message;     // the transfer library's own text
    bool remote = false; // through the router's remote access rather than the home network

    bool isError() const { return kind != Kind::None; }
    // The localisation key of the alert body ("errorFTP_Login_Denied_Home" ...), empty for
    // failures that are not about the connection.
    QString alertKey() const;
    // "<localized key text>: <message>", or the message alone.
    QString alertText() const;
};

#pragma once

#include <QString>
#include <QStringList>

// Why a request to the router did not do what was asked, as it travels back to whoever ran it:
// the tray shows it, the command line prints it. Empty (kind None) when nothing went wrong.
struct RouterFailure
{
    enum class Kind {
        None,
        WrongPassword, // the router refused the login or answered 401
        BlockTime,     // the router blocks logins for a while after wrong passwords
        MissingRight,  // the user lacks the right the command needs (TR-064 included)
        Unreachable,   // no answer, or the connection failed (certificate, TLS, ...)
        RouterError,   // the router answered with an error (a TR-064 fault, ...)
        Other,
    };

    Kind kind = Kind::None;
    // The localisation key of the message and the message as the user reads it.
    QString key;
    QString message;
    // Seconds the router blocks logins (BlockTime only).
    int blockSeconds = 0;

    bool failed() const { return kind != Kind::None; }
    explicit operator bool() const { return failed(); }

    // The message of the key, with its arguments filled in.
    static RouterFailure make(Kind kind, const QString& key, const QStringList& args = {});
    // A message that is already localised (e.g. from the connection's own error text).
    static RouterFailure withText(Kind kind, const QString& key, const QString& message);

    // The later failure replaces an earlier one; an empty one keeps it.
    void merge(const RouterFailure& later)
    {
        if (later.failed())
            *this = later;
    }
};

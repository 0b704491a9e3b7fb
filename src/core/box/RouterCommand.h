#pragma once

#include <QString>
#include <QStringList>

class TNPreferences;

// One router command as a window needs it: whether the router took it, and if not, the one
// line that says why (the alert the command raised, the session's error, or that the router
// cannot be reached). Blocks: run it on a background thread.
struct RouterCommandResult
{
    bool ok = false;
    QString answer;
    QString error;
};

namespace FBBoxConnectionHelper {

// The one-line reason a request to the router failed: the alert it raised on this thread, the
// session's error, or that the router cannot be reached.
QString routerFailureText(TNPreferences& prefs);

// Logs in or reuses the session; false with the reason when no session can be had (a wrong
// password counts as none even where the router still hands out a session).
bool ensureSession(TNPreferences& prefs, QString* error);

// Logs in first (or reuses the session), so a wrong password is reported as such.
RouterCommandResult runRouterCommand(const QString& action, const QString& number, const QString& port,
                                     TNPreferences* prefs);

// The router status check (WLAN, DECT) with a session: the query needs to know the firmware,
// which the login finds out. Posts "WLANSTATUS" and "DECTSTATUS" as the check does.
void checkRouterStatusWithSession(TNPreferences* prefs);

// Variables read with a session (logged in first or reused), for samplers that ask again and
// again: empty when no session can be had.
QStringList queryWithSession(const QStringList& variables, TNPreferences* prefs);

} // namespace FBBoxConnectionHelper

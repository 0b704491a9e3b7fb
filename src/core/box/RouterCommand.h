#pragma once

#include "box/RouterFailure.h"

#include <QString>
#include <QStringList>

class RouterSession;
class TNPreferences;

// One router command as a window needs it: whether the router took it, and if not, why.
// Blocks: run it on a background thread.
struct RouterCommandResult
{
    bool ok = false;
    QString answer;
    // What the user is to be told; failure.message is the one line (also set when the router
    // could only not be reached).
    RouterFailure failure;
    QString error() const { return failure.message; }
};

namespace FBBoxConnectionHelper {

// The failure of a request: the one it reported, else the session's connection error, else
// that the router cannot be reached.
RouterFailure routerFailure(const RouterFailure& reported, TNPreferences& prefs, RouterSession& session);

// Logs in or reuses the session; the failure when no session can be had (a wrong password
// counts as none even where the router still hands out a session). *notice gets what went
// wrong in a login that still gave a session (e.g. a right the user lacks).
RouterFailure ensureSession(TNPreferences& prefs, RouterSession& session, RouterFailure* notice = nullptr);

// Logs in first (or reuses the session), so a wrong password is reported as such.
RouterCommandResult runRouterCommand(const QString& action, const QString& number, const QString& port,
                                     TNPreferences* prefs, RouterSession& session);

// The router status check (WLAN, DECT) with a session: the query needs to know the firmware,
// which the login finds out. Posts "WLANSTATUS" and "DECTSTATUS" as the check does. What went
// wrong in the login or the check, if anything.
RouterFailure checkRouterStatusWithSession(TNPreferences* prefs, RouterSession& session);

// Variables read with a session (logged in first or reused), for samplers that ask again and
// again: empty when no session can be had.
QStringList queryWithSession(const QStringList& variables, TNPreferences* prefs, RouterSession& session);

} // namespace FBBoxConnectionHelper

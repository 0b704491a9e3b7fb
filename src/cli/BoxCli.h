#pragma once

#include "box/RouterFailure.h"

#include <QString>

#include <memory>

class CliContext;
class RouterSession;
class TNPreferences;

// What the router commands of the command line share: the location and its session, the
// login, and one clear line for whatever went wrong.
namespace BoxCli {

// The target location with its router session; used like a pointer to the location.
struct Target
{
    std::shared_ptr<TNPreferences> prefs;
    std::shared_ptr<RouterSession> session;

    TNPreferences* get() const { return prefs.get(); }
    TNPreferences* operator->() const { return prefs.get(); }
    TNPreferences& operator*() const { return *prefs; }
    RouterSession& router() const { return *session; }
};

Target prepare(CliContext& ctx);

// Logs in (or reuses the session); throws CliError when no session can be had.
void ensureSession(const Target& target);

// Throws CliError for the markers " " and "-2" and for a failure the command reported.
void checkAnswer(const QString& answer, const RouterFailure& reported, const Target& target);

// The one-line reason a request failed.
QString failureText(const Target& target, const RouterFailure& reported = {});

} // namespace BoxCli

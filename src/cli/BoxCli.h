#pragma once

#include <QString>

#include <memory>

class CliContext;
class TNPreferences;

// What the router commands of the command line share: the location, the login, and one clear
// line for whatever went wrong.
namespace BoxCli {

// The target location, with alerts collected instead of shown.
std::shared_ptr<TNPreferences> prepare(CliContext& ctx);

// Logs in (or reuses the session); throws CliError when no session can be had.
void ensureSession(TNPreferences& prefs);

// Throws CliError for the markers " " and "-2" and for an alert raised by the command.
void checkAnswer(const QString& answer, TNPreferences& prefs);

// The one-line reason a request failed.
QString failureText(TNPreferences& prefs);

} // namespace BoxCli

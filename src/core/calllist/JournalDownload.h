#pragma once

#include <QString>

#include <memory>

struct RouterFailure;

class RouterSession;
class TNPreferences;

namespace JournalLoading {
// The router's journal through the box commands: "refreshFoncalls", then "csv" with the cancel
// string, so that the transfer stops once the newest stored call went by. The text decoded as
// UTF-8 or ISO-8859-1; " ", "" or "-2" (the box layer's markers) when nothing came.
QString downloadFromRouter(const std::shared_ptr<TNPreferences>& prefs, RouterSession& session,
                           const QString& cancelString, RouterFailure* failure = nullptr);
} // namespace JournalLoading

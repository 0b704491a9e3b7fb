#pragma once

#include <QString>
#include <QVariantList>

namespace methods {

// The list of script actions the settings window offers: the property list "ScriptActions.plist"
// whose key "ScriptActions" holds the array. Each load answers an empty array when the file is
// missing or unreadable.
QVariantList loadOldScriptActions(const QString& scriptsDir); // the user's copy
QVariantList
loadNewScriptActions(const QString& resourceDir = QStringLiteral(":/tondrel/scripts")); // shipped
bool saveScriptActions(const QVariantList& actions, const QString& scriptsDir);         // atomically

} // namespace methods

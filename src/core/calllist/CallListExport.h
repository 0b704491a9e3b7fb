#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

class SettingsStore;
class TNCallinglist;

// The two exports of the call list: the script file of a web page and delimited text.
namespace CallListExport {

// The fields the delimited export can carry, with their title keys ("title_date" ...).
const QStringList& exportFieldNames(); // date, name, number, extension, line, duration, label, callstate

// The text of "data.js": the newest 50 calls, grouped as incoming, outgoing, missed and all.
QString webExportText(TNCallinglist& calls, int profile, const QDateTime& now);

// Writes "<iPhoneExportPath>/data.js" atomically when that folder exists, then starts the
// "iPhoneExportScript" in the background. False when nothing was written.
bool exportiPhoneCallerlistForProfile(TNCallinglist& calls, int profile, SettingsStore& settings,
                                      const QDateTime& now);
// The same into a given file.
bool writeWebExport(TNCallinglist& calls, int profile, const QString& filePath, const QDateTime& now,
                    QString* error);

// exportCallsFromListForProfile:forState:exportFields:delimiter:enclosedWith:
// selector: 0 all, 1 incoming, 2 missed, 3 outgoing, 6 new calls. A title line with the
// localised titles of the fields, then one line per call, oldest first.
QString exportCallsFromListForProfile(TNCallinglist& calls, int profile, int selector,
                                      const QStringList& fields, const QString& delimiter,
                                      const QString& enclosure);

} // namespace CallListExport

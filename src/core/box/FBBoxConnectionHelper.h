#pragma once

#include <QString>
#include <QStringList>

#include "box/RouterFailure.h"

class RouterSession;
class TNPreferences;

// Variable queries against the router's web interface, and the command entry.
namespace FBBoxConnectionHelper {

// One value per name in order, or an empty list when the answer does not fit the names.
// A failure of the requests goes to *failure when given.
QStringList componentsArrayForVariables(const QStringList& names, TNPreferences* prefs,
                                        RouterSession& session, RouterFailure* failure = nullptr);
QString stringForQueryVariable(const QString& name, long index, bool useLUA);
// lua: the answer is the Lua page's JSON, else one value a line.
QStringList componentsArrayForResultString(const QString& result, const QStringList& names, bool lua);
bool isValidQueryResult(const QStringList& values, qsizetype nameCount);
// False for the router's marks of an unknown ("er", "err") or not emulated ("no-emu") variable.
bool validQueryResult(const QString& value);

// The query texts the names go out in: one per chunk, each with its own names.
struct QueryChunk
{
    QString query;
    QStringList names;
};
QList<QueryChunk> queryChunks(const QStringList& names, bool useLUA);

// One command (see TNAction); its failure goes to *failure when given.
QString dialWithAction(const QString& action, const QString& number, const QString& port,
                       TNPreferences* prefs, RouterSession& session, RouterFailure* failure = nullptr);

// Percent-escapes in ISO Latin-1, "?=&+" included.
QString urlencode(const QString& text);

} // namespace FBBoxConnectionHelper

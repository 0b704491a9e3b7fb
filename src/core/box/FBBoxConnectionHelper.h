#pragma once

#include <QString>
#include <QStringList>

class TNPreferences;

// Variable queries against the router's web interface, and the command entry.
namespace FBBoxConnectionHelper {

// One value per name in order, or an empty list when the answer does not fit the names.
QStringList componentsArrayForVariables(const QStringList& names, TNPreferences* prefs);
QString stringForQueryVariable(const QString& name, long index, bool useLUA);
QStringList componentsArrayForResultString(const QString& result, const QStringList& names, TNPreferences* prefs);
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

QString dialWithAction(const QString& action, const QString& number, const QString& port, TNPreferences* prefs);

// Percent-escapes in ISO Latin-1, "?=&+" included.
QString urlencode(const QString& text);

} // namespace FBBoxConnectionHelper

#pragma once

#include <QString>

namespace SQLite {
class Database;
}

// tn_localtime(format, unixtime): the text of STRFTIME(format, unixtime, 'unixepoch', 'localtime')
// for the directives %d %m %Y %H %M %S and %%. Searching every call's shown date with STRFTIME
// asks the C library for the local time of each row; this asks once per day of calls.
namespace LocalTimeFunction {

inline constexpr const char* Name = "tn_localtime";

void registerOn(SQLite::Database& db);
// Whether format uses only the directives above.
bool supports(const QString& format);

} // namespace LocalTimeFunction

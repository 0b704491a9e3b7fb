#pragma once

#include "calllist/SqlFragment.h"

#include <QString>
#include <QVariantList>

#include <optional>

// The pieces of the call list queries: hidden-line filter, list selector, search, sort.
namespace ListQuery {

// List selectors: 1 incoming, 2 missed, 3 outgoing, 6 new calls, 9 + n the n-th smart list
// (oldest first); anything else lists all calls.
inline constexpr int SelectorAll = 0;
inline constexpr int SelectorIncoming = 1;
inline constexpr int SelectorMissed = 2;
inline constexpr int SelectorOutgoing = 3;
inline constexpr int SelectorNew = 6;
inline constexpr int SelectorFirstSmartList = 9;

// "SELECT callinglist.rowid AS rowid, callinglist.*, name, abid, label ... WHERE
// callinglist.profile = ? "
SqlFragment joinedListQuery(int profile, bool rowidAlias = true);

// One " AND callinglist.line NOT LIKE ..." per line entry whose "HideList" is 1.
SqlFragment hiddenLineFilter(const QVariantList& lines);

// The SQL expression a sortable column identifier stands for ("date" -> callinglist.calldate);
// nullopt for identifiers outside the fixed table.
std::optional<QString> sortExpression(const QString& identifier);
QString sortDirection(bool ascending);

// A search column identifier ("name", "number", "extension", "line", "duration", "date") as a
// fragment usable before LIKE; nullopt when unknown.
std::optional<SqlFragment> searchColumnExpression(const QString& identifier, const QString& sqlDateFormat);

// Search in one column, or with an empty column in number, extension, line, name and the
// displayed date. Empty text gives an empty fragment.
SqlFragment searchFragment(const QString& text, const QString& column, const QString& sqlDateFormat);

// The user's date pattern as strftime directives: "dd.MM.yyyy HH:mm" -> "%d.%m.%Y %H:%M".
QString convertedSQLDateFormat(const QString& pattern);

} // namespace ListQuery

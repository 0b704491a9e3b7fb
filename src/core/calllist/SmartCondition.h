#pragma once

#include "calllist/SqlFragment.h"

#include <QList>
#include <QString>

// One rule of a smart list, as stored in smartconditions.
struct SmartCondition
{
    int listcolumn = 0;
    int condition = 0;
    QString condvalue;

    bool operator==(const SmartCondition&) const = default;
};

namespace Smart {

// listcolumn codes.
enum Column {
    ColumnDate = 0,
    ColumnName = 1,
    ColumnNumber = 2,
    ColumnExtension = 3,
    ColumnLine = 4,
    ColumnDuration = 5,
    ColumnCallType = 6,
    // Not a rule: a row with this column switches the list to "any rule matches".
    ColumnMatchAny = 7,
};

// Date conditions.
enum DateCondition {
    Today = 0,
    CurrentMonth = 1,
    CurrentYear = 2,
    DayOfMonth = 3,
    Month = 4,
    Year = 5,
    LastDays = 6,
    DaysAgo = 7,
};

// Text conditions (name, number, extension, line, duration).
enum TextCondition { Is = 0, IsNot = 1, Contains = 2, ContainsNot = 3 };

// Call type conditions.
enum TypeCondition { TypeIncoming = 0, TypeOutgoing = 1, TypeMissed = 2, TypeNew = 3 };

// What the date and new-call rules compare with.
struct Context
{
    qint64 now = 0;          // Unix time taken as "now"
    qint64 newCallsMark = 0; // the new-calls mark of the profile
};

// The piece appended to list and counter queries for a set of rules (in the order given):
// " AND ( a AND b ) ", or " AND ( a OR b ) " when the set holds the match-any row. The
// parentheses keep "any" from reaching past the profile filter. Empty without rules.
SqlFragment conditionSearchString(const QList<SmartCondition>& conditions, const Context& context);

// The piece of one rule, or an empty fragment for a rule it does not know.
SqlFragment conditionPiece(const SmartCondition& condition, const Context& context);

// The localisation key naming a condition of a column, empty when unknown.
QString conditionKey(int listcolumn, int condition);

} // namespace Smart

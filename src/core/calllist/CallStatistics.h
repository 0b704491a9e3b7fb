#pragma once

#include "calllist/SqlFragment.h"

#include <QStringList>

class CallDatabase;

// Call counts and talk time by year, month and call state.
namespace CallStatistics {

struct TimeSum
{
    qint64 totalMinutes = 0;
    qint64 hours() const { return totalMinutes / 60; }
    qint64 minutes() const { return totalMinutes % 60; }
};

// month 1-12 and year are optional (0 = any), callstate 0 = any. A given year becomes a range
// of call dates so the (profile, calldate) index serves it.
SqlFragment periodFilter(int month, int year, int callstate);

qint64 callCount(const CallDatabase& db, int profile, int month, int year, int callstate,
                 const SqlFragment& hiddenLines);
// Whole durations: h:mm counts h*60+mm minutes.
TimeSum talkTime(const CallDatabase& db, int profile, int month, int year, int callstate,
                 const SqlFragment& hiddenLines);
// Years with calls, newest first.
QStringList years(const CallDatabase& db, int profile);

} // namespace CallStatistics

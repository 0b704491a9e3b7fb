#pragma once

#include <QString>

// Patterns that come with downloaded definitions or from the user run against pages from the
// web, so neither may hang the lookup thread.
namespace BoundedRegex {

inline constexpr qsizetype MaxPatternLength = 4096;
inline constexpr qsizetype MaxSubjectLength = 512 * 1024;

// Capture group 1 of the first match, or "" (also for an invalid or over-long pattern, or when
// the match gives up).
QString firstCapture(const QString& pattern, const QString& subject);

} // namespace BoundedRegex

#pragma once

#include <QString>

#include <chrono>

// Patterns that come with downloaded definitions or from the user run against pages from the
// web, so neither may hang the lookup thread.
namespace BoundedRegex {

inline constexpr qsizetype MaxPatternLength = 4096;
inline constexpr qsizetype MaxSubjectLength = 64 * 1024;
// Wall-clock time all patterns of one lookup may take together.
inline constexpr std::chrono::milliseconds LookupBudget{2000};

// The matching time left to one lookup; each match spends from it.
class Budget
{
public:
    explicit Budget(std::chrono::nanoseconds total = LookupBudget) : m_left(total) {}
    bool exhausted() const { return m_left <= std::chrono::nanoseconds::zero(); }
    std::chrono::nanoseconds left() const { return m_left; }
    void spend(std::chrono::nanoseconds used) { m_left -= used; }

private:
    std::chrono::nanoseconds m_left;
};

// Capture group 1 of the first match, or "" (also for an invalid or over-long pattern, or when
// the match gives up or the budget runs out). The subject is cut to MaxSubjectLength.
QString firstCapture(const QString& pattern, const QString& subject, Budget& budget);
QString firstCapture(const QString& pattern, const QString& subject);

} // namespace BoundedRegex

#include "contacts/BoundedRegex.h"

#include "base/Logging.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include <memory>

namespace BoundedRegex {

namespace {
// PCRE2's match limit counts steps per start position, so a pattern that fails slowly at every
// position (a look-ahead over the rest of the page) is quadratic in the subject and never hits
// it. A callout placed at the head of the pattern runs at every start position and ends the
// match once the deadline has passed; the lowered match limit bounds the time between two such
// checks.
constexpr uint32_t kMatchLimit = 1000000;

int stopAtDeadline(pcre2_callout_block*, void* deadline)
{
    return static_cast<QDeadlineTimer*>(deadline)->hasExpired() ? PCRE2_ERROR_CALLOUT : 0;
}

// Start-of-pattern items such as (*UTF) or (*LIMIT_MATCH=n) must stay in front.
qsizetype calloutPosition(const QString& pattern)
{
    qsizetype at = 0;
    while (pattern.mid(at, 2) == u"(*") {
        const qsizetype close = pattern.indexOf(u')', at);
        if (close < 0)
            break;
        at = close + 1;
    }
    return at;
}

struct Pcre2Free
{
    void operator()(pcre2_code* p) const { pcre2_code_free(p); }
    void operator()(pcre2_match_data* p) const { pcre2_match_data_free(p); }
    void operator()(pcre2_match_context* p) const { pcre2_match_context_free(p); }
    void operator()(pcre2_jit_stack* p) const { pcre2_jit_stack_free(p); }
};
template <typename T> using Owned = std::unique_ptr<T, Pcre2Free>;

PCRE2_SPTR16 units(const QString& text)
{
    return reinterpret_cast<PCRE2_SPTR16>(text.utf16());
}
} // namespace

QString firstCapture(const QString& pattern, const QString& subject, Budget& budget)
{
    if (pattern.isEmpty() || pattern.size() > MaxPatternLength) {
        qCWarning(lcContacts) << "pattern refused: length" << pattern.size();
        return {};
    }
    if (budget.exhausted()) {
        qCWarning(lcContacts) << "pattern not run: the lookup's time is used up";
        return {};
    }
    QString guarded = pattern;
    guarded.insert(calloutPosition(pattern), QStringLiteral("(?C1)"));
    int errorCode = 0;
    PCRE2_SIZE errorOffset = 0;
    const Owned<pcre2_code> re(pcre2_compile(units(guarded), PCRE2_SIZE(guarded.size()), PCRE2_UTF,
                                             &errorCode, &errorOffset, nullptr));
    if (!re) {
        PCRE2_UCHAR16 message[256];
        pcre2_get_error_message(errorCode, message, 256);
        qCWarning(lcContacts).noquote()
            << "pattern invalid:" << QString::fromUtf16(reinterpret_cast<const char16_t*>(message));
        return {};
    }
    pcre2_jit_compile(re.get(), PCRE2_JIT_COMPLETE); // without JIT the interpreter runs

    QDeadlineTimer deadline(std::chrono::duration_cast<std::chrono::milliseconds>(budget.left()));
    const Owned<pcre2_match_context> context(pcre2_match_context_create(nullptr));
    const Owned<pcre2_jit_stack> stack(pcre2_jit_stack_create(32 * 1024, 512 * 1024, nullptr));
    const Owned<pcre2_match_data> data(pcre2_match_data_create_from_pattern(re.get(), nullptr));
    if (!context || !data)
        return {};
    pcre2_set_match_limit(context.get(), kMatchLimit);
    pcre2_set_callout(context.get(), stopAtDeadline, &deadline);
    if (stack)
        pcre2_jit_stack_assign(context.get(), nullptr, stack.get());

    const QString cut = subject.left(MaxSubjectLength);
    QElapsedTimer used;
    used.start();
    const int rc = pcre2_match(re.get(), units(cut), PCRE2_SIZE(cut.size()), 0, 0, data.get(), context.get());
    budget.spend(std::chrono::nanoseconds(used.nsecsElapsed()));
    if (rc == PCRE2_ERROR_NOMATCH)
        return {};
    if (rc < 0) {
        qCWarning(lcContacts) << "pattern gave up:" << (rc == PCRE2_ERROR_CALLOUT ? "out of time" : "limit")
                              << rc;
        return {};
    }
    uint32_t groups = 0;
    pcre2_pattern_info(re.get(), PCRE2_INFO_CAPTURECOUNT, &groups);
    if (groups < 1 || rc < 2)
        return {};
    const PCRE2_SIZE* offsets = pcre2_get_ovector_pointer(data.get());
    if (offsets[2] == PCRE2_UNSET)
        return {};
    return cut.mid(qsizetype(offsets[2]), qsizetype(offsets[3] - offsets[2]));
}

QString firstCapture(const QString& pattern, const QString& subject)
{
    Budget budget;
    return firstCapture(pattern, subject, budget);
}

} // namespace BoundedRegex

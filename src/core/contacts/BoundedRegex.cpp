#include "contacts/BoundedRegex.h"

#include "base/Logging.h"

#include <QRegularExpression>

namespace BoundedRegex {

// QRegularExpression runs PCRE2 (JIT where available) with PCRE2's default match limit of ten
// million backtracking steps and a bounded JIT stack; a runaway pattern then fails instead of
// looping. That limit scales with the subject, so the subject is cut to MaxSubjectLength and the
// pattern to MaxPatternLength: together they bound one lookup to well under a second of CPU.
QString firstCapture(const QString& pattern, const QString& subject)
{
    if (pattern.isEmpty() || pattern.size() > MaxPatternLength) {
        qCWarning(lcContacts) << "pattern refused: length" << pattern.size();
        return {};
    }
    const QRegularExpression re(pattern);
    if (!re.isValid()) {
        qCWarning(lcContacts).noquote() << "pattern invalid:" << re.errorString();
        return {};
    }
    const auto match = re.match(QStringView(subject).left(MaxSubjectLength));
    if (!match.hasMatch())
        return {};
    return match.captured(1);
}

} // namespace BoundedRegex

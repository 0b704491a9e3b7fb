#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

// Text helpers shared by every caller that compares, shows or cleans numbers and web answers.
namespace SearchingAdditions {

// Lower case, only "+0123456789*#" kept, letters after the first dialable character turned into
// keypad digits; a leading "int" survives.
QString unifiedPhoneNumber(const QString& text);

bool containsString(const QString& text, const QString& needle, bool ignoringCase = false);

// Every character of `set` is replaced by one copy of `replacement`.
QString stringByReplacingCharactersInSet(const QString& text, QStringView set, const QString& replacement);

// XML character entities (&amp; &#228; &#xE4; ...) plus an optional table of extra names
// ("auml" -> "ä") resolved; unknown entities stay as they are.
QString stringByUnescapingEntities(const QString& text, const QHash<QString, QString>* extra = nullptr);

} // namespace SearchingAdditions

namespace FBStringHelper {
// Literal replacement of every occurrence.
QString replaceStringTarget(const QString& target, const QString& replacement, const QString& text);
} // namespace FBStringHelper

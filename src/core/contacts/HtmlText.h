#pragma once

#include <QString>

namespace HtmlText {
// Tags removed, character and the usual named entities resolved, runs of blanks collapsed.
QString toPlainText(const QString& html);
} // namespace HtmlText

#pragma once

#include <QString>
#include <QStringList>

namespace methods {

// Runs the user script named name from dir with the arguments and returns its standard output
// ("" when the file is missing, not executable, fails or hangs). A hanging script is killed
// after timeoutMs; output beyond MaxScriptOutput bytes is cut off.
inline constexpr qsizetype MaxScriptOutput = 64 * 1024;
QString executeAppleScriptWithName(const QString& dir, const QString& name, const QStringList& arguments,
                                   int timeoutMs = 30000);

} // namespace methods

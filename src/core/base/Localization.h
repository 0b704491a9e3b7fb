#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

// Localisation keys map to English source texts, translated through Qt's translator.
// Texts that take arguments use %1, %2, ... in the order the caller passes them.
namespace Localization {

QString localized(const QString& key);

template <typename... Args> QString localizedFormat(const QString& key, const Args&... args)
{
    return localized(key).arg(args...);
}

bool hasKey(const QString& key);
QStringList allKeys();
QString englishText(const QString& key);

// Installs the translation catalog for the locale's language, if one is shipped; a second call
// for the same catalog replaces it. The "C" locale and English use the source texts. The
// windows bring their own catalog ("tondrel_gui") besides the core's.
bool install(const QLocale& locale = QLocale::system(), const QString& catalog = QStringLiteral("tondrel"));

} // namespace Localization

#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

// Localisation keys map to English source texts, translated through Qt's translator.
// Texts that take arguments use %1, %2, ... in the order the caller passes them.
namespace Localization {

QString localized(const QString& key);

template<typename... Args>
QString localizedFormat(const QString& key, const Args&... args)
{
    return localized(key).arg(args...);
}

bool hasKey(const QString& key);
QStringList allKeys();
QString englishText(const QString& key);

// Installs the translation for the locale's language, if one is shipped. The "C" locale and
// English use the source texts.
bool install(const QLocale& locale = QLocale::system());

} // namespace Localization

#include "base/Localization.h"

#include "base/LocalizedStrings.h"
#include "base/Logging.h"

#include <QCoreApplication>
#include <QHash>
#include <QTranslator>

namespace {
const QHash<QString, const char*>& table()
{
    static const QHash<QString, const char*> map = [] {
        QHash<QString, const char*> m;
        for (const LocalizedString& s : localizedStrings())
            m.insert(QString::fromLatin1(s.key), s.english);
        return m;
    }();
    return map;
}
} // namespace

namespace Localization {

QString localized(const QString& key)
{
    const auto it = table().constFind(key);
    if (it == table().constEnd()) {
        qCWarning(lcApp) << "Missing localisation key" << key;
        return key;
    }
    return QCoreApplication::translate(kLocalizationContext, it.value());
}

bool hasKey(const QString& key)
{
    return table().contains(key);
}

QStringList allKeys()
{
    QStringList keys = table().keys();
    keys.sort();
    return keys;
}

QString englishText(const QString& key)
{
    return QString::fromUtf8(table().value(key, ""));
}

bool install(const QLocale& locale, const QString& catalog)
{
    // Called from the main thread at start-up only.
    static QHash<QString, QTranslator*> installed;
    if (QTranslator* old = installed.take(catalog)) {
        QCoreApplication::removeTranslator(old);
        delete old;
    }
    if (locale.language() == QLocale::C || locale.language() == QLocale::English)
        return true;
    auto* t = new QTranslator;
    if (!t->load(locale, catalog, QStringLiteral("_"), QStringLiteral(":/i18n"))) {
        delete t;
        return false;
    }
    QCoreApplication::installTranslator(t);
    installed.insert(catalog, t);
    return true;
}

} // namespace Localization

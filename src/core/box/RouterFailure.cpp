#include "box/RouterFailure.h"

#include "base/Localization.h"

RouterFailure RouterFailure::make(Kind kind, const QString& key, const QStringList& args)
{
    QString text = Localization::localized(key);
    for (const QString& arg : args)
        text = text.arg(arg);
    return withText(kind, key, text);
}

RouterFailure RouterFailure::withText(Kind kind, const QString& key, const QString& message)
{
    RouterFailure failure;
    failure.kind = kind;
    failure.key = key;
    failure.message = message;
    return failure;
}

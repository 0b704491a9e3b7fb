#pragma once

#include "monitor/CallerNameResolver.h"

#include <QObject>

// Caller names for the call monitor from the process-wide caller cache, address book and
// reverse lookup (whatever of them the composition root installed), with the current location's
// dialling context. The web lookup runs only when the location asks for it.
class SharedCallerNameResolver final : public QObject, public CallerNameResolver
{
    Q_OBJECT
public:
    using QObject::QObject;

    QStringList searchNameForPhonenumber(const QString& number) override;
    void reverseSearchInBackground(const QString& connID, const QString& number, ReverseResult done) override;
};

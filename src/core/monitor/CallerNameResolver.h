#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// How the call monitor learns a caller's name: the caller cache and address book first
// (searchNameForPhonenumber), then a reverse lookup on a background thread whose answer comes
// back through the callback, on the listener's thread.
class CallerNameResolver
{
public:
    using ReverseResult = std::function<void(const QString& key, const QString& name)>;

    virtual ~CallerNameResolver() = default;

    // [abid, name, label]; ["", "", ""] when the number is unknown.
    virtual QStringList searchNameForPhonenumber(const QString& number) = 0;

    // Starts a lookup in the background; done is called with key only when a name was found.
    virtual void reverseSearchInBackground(const QString& key, const QString& number, ReverseResult done) = 0;
};

// Knows no one: what the listener uses until an address book is wired in.
class UnknownCallerResolver final : public CallerNameResolver
{
public:
    QStringList searchNameForPhonenumber(const QString&) override
    {
        return {QString(), QString(), QString()};
    }
    void reverseSearchInBackground(const QString&, const QString&, ReverseResult) override {}
};

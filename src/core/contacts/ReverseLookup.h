#pragma once

#include "base/NumberForms.h"
#include "contacts/BoundedRegex.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QThreadPool>
#include <QVariantMap>

#include <functional>

class FBReverseSearch;
class HttpTransport;
class NotificationCenter;
class SettingsStore;

struct ReverseSearchResult
{
    QString name;
    QString label;
    QVariantMap toMap() const { return {{QStringLiteral("Name"), name}, {QStringLiteral("Label"), label}}; }
};

// The one entry point for asking the web (or the user's own script or query) for a name.
class ReverseLookup
{
public:
    // Runs the user's script N with the arguments; its standard output, "" on any failure.
    using ScriptRunner = std::function<QString(const QString& script, const QStringList& arguments)>;
    using NameFound = std::function<void(const QString& name, const QString& connID)>;

    ReverseLookup(FBReverseSearch& search, SettingsStore& settings, HttpTransport& http,
                  NotificationCenter& center, ScriptRunner scripts);

    void setTimeoutMs(int ms) { m_timeoutMs = ms; }

    // "ReverseSearchCustom" script, then its query, then the definitions. Blocks on the network;
    // the patterns of one lookup share one BoundedRegex::Budget.
    ReverseSearchResult reverseSearchMain(const QString& number, const Prefixis& prefixis);
    ReverseSearchResult reverseSearchCustomScript(const QString& number);
    ReverseSearchResult reverseSearchCustomURL(const QString& number, BoundedRegex::Budget* budget = nullptr);

    // Looks the number up on a pool thread. A found name reaches onFound on the context
    // object's thread (the call monitor's: the main thread), then "RELOADCALLINGLIST" is posted.
    void reverseSearchInBackground(const QString& connID, const QString& number, const Prefixis& prefixis,
                                   QObject* context, NameFound onFound);
    // The body of the background lookup; returns the name found ("" when none).
    QString threadReverseSearch(const QString& connID, const QString& number, const Prefixis& prefixis,
                                QObject* context, const NameFound& onFound);

    // Scripts are executable files in scriptsDir; a name with a path separator is refused.
    static ScriptRunner scriptRunnerForFolder(const QString& scriptsDir, int timeoutMs = 10000);

private:
    FBReverseSearch& m_search;
    SettingsStore& m_settings;
    HttpTransport& m_http;
    NotificationCenter& m_center;
    ScriptRunner m_scripts;
    int m_timeoutMs = 10000;
    // Background look-ups use this object and its dependencies: they end before it does.
    QThreadPool m_pool;
};

namespace methods {
// Percent escapes replaced by the characters they stand for.
QString urldecode(const QString& text);
} // namespace methods

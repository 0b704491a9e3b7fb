#pragma once

#include "monitor/CallRecord.h"
#include "monitor/MonitorLine.h"

#include <QList>
#include <QMap>

#include <functional>
#include <memory>
#include <optional>

class CallerNameResolver;
class Clock;
class SettingsStore;
class TNPreferences;

// The calls, connection ids and extension states the call monitor's lines describe. No socket,
// no desktop: the listener feeds it parsed lines and announces what comes back.
class CallTable
{
public:
    enum ExtensionState { Free = 1, InCall = 2, Ringing = 3 };
    static constexpr qsizetype NotFound = -1;

    struct Context
    {
        std::function<std::shared_ptr<TNPreferences>()> preferences; // the watched location; may answer null
        SettingsStore& settings;                                     // global keys
        const Clock& clock;
        CallerNameResolver& names;
    };

    // What one line did.
    struct Change
    {
        CallRecord record; // the stored record after the line, or the one a filtered call would have made
        qsizetype index = NotFound;     // of the stored record; NotFound when nothing is kept
        bool hasRecord = true;          // false when the line named an unknown connection
        bool showCall = false;          // the call is one the user wants to see
        bool announce = false;          // worth a desktop notification
        std::optional<int> scriptState; // the call scripts' event, when they run
        bool extensionsChanged = false;
        bool lookUpName = false; // no name known yet: worth a reverse lookup of record.number
    };

    explicit CallTable(Context context);

    Change apply(const MonitorLine& line);

    const QList<CallRecord>& calls() const { return m_calls; }
    CallRecord& at(qsizetype index) { return m_calls[index]; }
    const QMap<QString, int>& extensions() const { return m_extensions; }
    const QMap<QString, QString>& connIDs() const { return m_connIDs; }

    qsizetype indexForConnID(const QString& connID) const;
    qsizetype indexForUID(const QString& uid) const;

    // A new connection starts from nothing known about the extensions.
    void clearConnections();
    void clearCalls() { m_calls.clear(); }

    void changeStateForExtension(int state, const QString& extension);
    bool showCallForLine(const QString& line, int callType, bool startedExternal) const;

    // A call the program asked the router to dial; null for an internal call ("**"), which the
    // router never reports: only the two extensions ring.
    const CallRecord* addDialledCall(const QString& number, const QString& extension,
                                     const QStringList& contact);
    bool cancelCallForUID(const QString& uid);
    bool setContactForUID(const QStringList& contact, const QString& uid);
    bool setContactForConnID(const QStringList& contact, const QString& connID);
    bool setMemoIDForUID(qint64 memoID, const QString& uid);

    // Extension key for an extension number as the router sends it.
    static QString extensionKey(const QString& extension);

private:
    Change ring(const MonitorLine& line);
    Change call(const MonitorLine& line);
    Change connectLine(const MonitorLine& line);
    Change disconnect(const MonitorLine& line);
    QStringList contactFor(const QString& number, bool* unnamed) const;
    QString extensionTitle(const QString& extension) const;
    std::shared_ptr<TNPreferences> prefs() const;

    Context m_context;
    QList<CallRecord> m_calls;
    QMap<QString, int> m_extensions;
    QMap<QString, QString> m_connIDs;
};

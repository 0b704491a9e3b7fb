#pragma once

#include "monitor/CallRecord.h"

#include <QHash>
#include <QMutex>
#include <QThreadPool>
#include <QVariantList>
#include <QVariantMap>

// Runs the user's scripts on call events: 1 incoming call rings, 2 incoming call ended,
// 3 outgoing call started, 4 outgoing call ended. A script can hand a value (the part after
// ":" of its output) to its next run for the same call.
class TNScriptManager
{
public:
    enum CallState { Ringing = 1, IncomingEnded = 2, OutgoingStarted = 3, OutgoingEnded = 4 };

    explicit TNScriptManager(QString scriptsDir, int timeoutMs = 30000);
    ~TNScriptManager();

    // Starts the scripts of one event on a background thread and returns at once.
    void executeAppleScriptsWithCallState(int state, const CallRecord& call, const QVariantList& appleScripts,
                                          const QVariantMap& appleScriptsParams);
    // The same, on the calling thread.
    void threadExecuteAppleScripts(int state, const CallRecord& call, const QVariantList& appleScripts,
                                   const QVariantMap& appleScriptsParams);

    // The argument list every script of an event starts with.
    static QStringList argumentsForCall(const CallRecord& call);

    // The value a script left for a call; "" when none.
    QString memoryFor(const QString& uid, const QString& script) const;
    bool waitForDone(int msecs = -1);

    static const QString bundleIdentifier;

private:
    QString m_dir;
    int m_timeoutMs;
    mutable QMutex m_mutex;
    QHash<QString, QHash<QString, QString>> m_execMemory; // call UID -> script -> value
    QThreadPool m_pool;
};

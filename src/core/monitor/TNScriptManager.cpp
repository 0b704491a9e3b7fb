#include "monitor/TNScriptManager.h"

#include "base/Localization.h"
#include "monitor/CallScriptRunner.h"

const QString TNScriptManager::bundleIdentifier = QStringLiteral("org.tondrel.Tondrel");

TNScriptManager::TNScriptManager(QString scriptsDir, int timeoutMs)
    : m_dir(std::move(scriptsDir)), m_timeoutMs(timeoutMs)
{
    // Events of one call come seconds apart; a few threads keep a slow script from holding up
    // the next call's scripts.
    m_pool.setMaxThreadCount(4);
}

TNScriptManager::~TNScriptManager()
{
    m_pool.waitForDone();
}

QStringList TNScriptManager::argumentsForCall(const CallRecord& call)
{
    QString label = call.contactLabel();
    if (!label.isEmpty() && Localization::hasKey(label))
        label = Localization::localized(label);
    label.remove(u'\t');
    return {call.number, call.contactName(), call.contactABID(), call.line,    label,
            call.connID, bundleIdentifier,   call.MemoSubject,   call.MemoBody};
}

void TNScriptManager::executeAppleScriptsWithCallState(int state, const CallRecord& call,
                                                       const QVariantList& appleScripts,
                                                       const QVariantMap& appleScriptsParams)
{
    if (appleScripts.isEmpty())
        return;
    m_pool.start([this, state, call, appleScripts, appleScriptsParams] {
        threadExecuteAppleScripts(state, call, appleScripts, appleScriptsParams);
    });
}

void TNScriptManager::threadExecuteAppleScripts(int state, const CallRecord& call,
                                                const QVariantList& appleScripts,
                                                const QVariantMap& appleScriptsParams)
{
    QStringList arguments = argumentsForCall(call);
    for (const QVariant& rowValue : appleScripts) {
        const QVariantList row = rowValue.toList();
        if (row.size() <= state || !row.at(state).toBool())
            continue;
        const QString name = row.at(0).toString();
        // The list is shared by the rows of this event: later scripts also get the extra
        // parameters of earlier ones. Users' scripts rely on it.
        arguments += appleScriptsParams.value(name).toStringList();
        QStringList callArguments = arguments;
        {
            QMutexLocker lock(&m_mutex);
            const auto it = m_execMemory.constFind(call.UID);
            if (it != m_execMemory.constEnd() && it->contains(name))
                callArguments.prepend(it->value(name));
        }
        const QString result = methods::executeAppleScriptWithName(m_dir, name, callArguments, m_timeoutMs);
        const QStringList parts = result.split(u':');
        if (parts.size() >= 2) {
            QMutexLocker lock(&m_mutex);
            m_execMemory[call.UID].insert(name, parts.at(1));
        }
    }
    if (state == IncomingEnded || state == OutgoingEnded) {
        QMutexLocker lock(&m_mutex);
        m_execMemory.remove(call.UID);
    }
}

QString TNScriptManager::memoryFor(const QString& uid, const QString& script) const
{
    QMutexLocker lock(&m_mutex);
    return m_execMemory.value(uid).value(script);
}

bool TNScriptManager::waitForDone(int msecs)
{
    return m_pool.waitForDone(msecs);
}

#include "assistant/TNAssistantSaver.h"

#include "base/Defaults.h"
#include "base/Localization.h"
#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferencesManager.h"

void TNAssistantSaver::progress(int percent)
{
    m_center.post(Notifications::UPDATESAVEPROGRESS, nullptr, {{QStringLiteral("progress"), percent}});
}

QString TNAssistantSaver::savePreferences(const AssistantRouterData& data)
{
    m_error.clear();
    progress(0);
    // The first location is the program's first start: the global defaults come with it.
    if (!m_manager.isConfigured())
        methods::writeFirstStartDefaults(m_manager.store());
    const QString uid = m_manager.addNewLocation();
    auto prefs = m_manager.locationPreferencesForUID(uid);
    progress(30);

    bool ok = prefs != nullptr;
    if (ok) {
        prefs->hostName = data.host;
        prefs->webPort = data.webPort;
        prefs->userName = data.userName;
        prefs->passWord = data.pass;
        prefs->remoteHostName = data.remoteHost;
        prefs->remoteUserName = data.remoteUser;
        prefs->remotePassWord = data.remotePass;
        bool portOk = false;
        const int sslPort = data.remoteSSLPort.toInt(&portOk);
        prefs->remotesslPort = portOk && sslPort > 0 && sslPort <= 65535 ? sslPort : 443;
        if (!data.name.isEmpty())
            prefs->locationName = data.name;
        if (data.prefixis.size() == 4)
            prefs->prefixis = data.prefixis;
        prefs->broadcastaddress = data.broadcast;
        prefs->macaddress = data.mac;
        prefs->dialPort = data.dialPort;
        prefs->dialPortInt = data.dialPort.toInt();
        if (!data.lines.isEmpty())
            prefs->lines = data.lines;
        if (!data.faxLines.isEmpty())
            prefs->faxLines = data.faxLines;
        prefs->defaultCallArt = 0;
        prefs->hideOwnNumber = false;
        prefs->remoteAccess = false;
        progress(60);
        ok = prefs->save();
    }
    if (!ok) {
        qCWarning(lcAssistant) << "assistant: the new location could not be saved";
        m_manager.removeLocationForID(uid);
        m_error = Localization::localized(QStringLiteral("errorSaving"));
        m_center.post(Notifications::FINISHSAVING, nullptr, {{QStringLiteral("success"), false}});
        return {};
    }
    m_manager.activateCurrentLocationForID(uid);
    progress(100);
    m_center.post(Notifications::FINISHSAVING, nullptr,
                  {{QStringLiteral("success"), true}, {QStringLiteral("uid"), uid}});
    m_center.post(Notifications::ACTIVATESETTINGS);
    return uid;
}

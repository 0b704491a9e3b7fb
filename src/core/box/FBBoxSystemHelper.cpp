#include "box/FBBoxSystemHelper.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBNetworkHelper.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QThreadPool>

namespace FBBoxSystemHelper {

QStringList statusVariables()
{
    return {QStringLiteral("wlan:settings/ap_enabled"), QStringLiteral("wlan:settings/ap_enabled_scnd"),
            QStringLiteral("dect:settings/enabled"), QStringLiteral("wlan:settings/ssid"),
            QStringLiteral("wlan:settings/ssid_scnd")};
}

int getWLANStatus(const QStringList& values)
{
    if (values.size() < 3)
        return 2;
    const int first = values[0].contains(u'1') ? 16 : 8;
    const int second = values[1].contains(u'1') ? 128 : (!values[1].contains(u'0') ? 32 : 64);
    return first + second;
}

int getDECTStatus(const QStringList& values)
{
    if (values.size() < 3)
        return 2;
    if (values[2].contains(u'1'))
        return 16;
    if (values[2].contains(u'0'))
        return 8;
    return 2;
}

int expectedWLANStatus(int status, const QString& command)
{
    if (command == u"WLANon")
        return 144;
    if (command == u"WLANoff")
        return 72;
    if (command == u"WLAN2on")
        return status | 16;
    if (command == u"WLAN2off")
        return status & ~16;
    if (command == u"WLAN5on")
        return status | 128;
    if (command == u"WLAN5off")
        return status & ~128;
    return status;
}

static TNPreferences* orCurrent(TNPreferences* prefs, std::shared_ptr<TNPreferences>* holder)
{
    if (prefs)
        return prefs;
    if (auto* mgr = TNPreferencesManager::sharedManager())
        *holder = mgr->currentPreferences();
    return holder->get();
}

void threadcheckWLANStatus(TNPreferences* given)
{
    std::shared_ptr<TNPreferences> holder;
    TNPreferences* prefs = orCurrent(given, &holder);
    if (!prefs)
        return;
    const QStringList values = FBBoxConnectionHelper::componentsArrayForVariables(statusVariables(), prefs);
    {
        QMutexLocker lock(&prefs->runtimeMutex());
        prefs->WLANStatus = getWLANStatus(values);
        prefs->DECTStatus = getDECTStatus(values);
        // Four values are enough here: a valid answer always carries all five.
        if (values.size() >= 4) {
            prefs->wlanSSID = values.value(3);
            prefs->wlanSSID_scnd = values.value(4);
        }
    }
    NotificationCenter::defaultCenter().post(Notifications::WLANSTATUS);
    NotificationCenter::defaultCenter().post(Notifications::DECTSTATUS);
}

QString threadSetWLANStatus(TNPreferences* prefs, const QString& command)
{
    {
        QMutexLocker lock(&prefs->runtimeMutex());
        prefs->WLANStatus = expectedWLANStatus(prefs->WLANStatus, command);
    }
    const QString answer = FBBoxConnectionHelper::dialWithAction(command, QString(), QString(), prefs);
    threadcheckWLANStatus(prefs);
    return answer;
}

QString threadSetDECTStatus(TNPreferences* prefs, const QString& command)
{
    QString value;
    {
        QMutexLocker lock(&prefs->runtimeMutex());
        if (command == u"DECToff") {
            prefs->DECTStatus = 8;
            value = QStringLiteral("0");
        } else if (command == u"DECTon") {
            prefs->DECTStatus = 16;
            value = QStringLiteral("1");
        }
    }
    return FBBoxConnectionHelper::dialWithAction(QStringLiteral("setDECT"), QString(), value, prefs);
}

void getWLANStatusInBackground(TNPreferences* prefs)
{
    QThreadPool::globalInstance()->start([prefs] { threadcheckWLANStatus(prefs); });
}

void setWLANStatusInBackground(std::shared_ptr<TNPreferences> prefs, const QString& command)
{
    if (prefs)
        QThreadPool::globalInstance()->start([prefs, command] { threadSetWLANStatus(prefs.get(), command); });
}

void setDECTStatusInBackground(std::shared_ptr<TNPreferences> prefs, const QString& command)
{
    if (prefs)
        QThreadPool::globalInstance()->start([prefs, command] {
            threadSetDECTStatus(prefs.get(), command);
            // The switch shows the new state at once; the next status check confirms it.
            NotificationCenter::defaultCenter().post(Notifications::DECTSTATUS);
        });
}

QString languageFromLoginScreen(const QString& page)
{
    static const QRegularExpression re(QStringLiteral(".*/html/(.*)/menus/.*"));
    const QString lang = re.match(page).captured(1);
    return lang.isEmpty() ? QStringLiteral("de") : lang;
}

QString requestBoxLanguageUsePreferences(TNPreferences* prefs)
{
    return languageFromLoginScreen(
        FBBoxConnectionHelper::dialWithAction(QStringLiteral("loginScreen"), QString(), QString(), prefs));
}

QString getboxLanguage()
{
    std::shared_ptr<TNPreferences> holder;
    TNPreferences* prefs = orCurrent(nullptr, &holder);
    return prefs ? prefs->boxLanguage : QString();
}

void setboxLanguageUsePreferences(TNPreferences* prefs)
{
    if (!prefs || !prefs->boxLanguage.isEmpty())
        return;
    const QString lang = requestBoxLanguageUsePreferences(prefs);
    prefs->boxLanguage = lang;
    if (lang.isEmpty())
        return;
    if (auto* mgr = TNPreferencesManager::sharedManager(); mgr && !prefs->uid.isEmpty())
        mgr->saveLocationValue(lang, keys::BoxLanguage, prefs->uid);
}

QVariantMap parseConfigDef(const QString& page)
{
    static const QRegularExpression re(QStringLiteral(".*setvariable var:(.*) '(.*)'.*"));
    QVariantMap result;
    for (auto it = re.globalMatch(page); it.hasNext();) {
        const auto m = it.next();
        if (m.lastCapturedIndex() >= 2)
            result.insert(m.captured(1), m.captured(2));
    }
    return result;
}

QVariantMap parseBoxInfo(const QString& page)
{
    // Non-greedy, so that several elements on one line each give their own entry.
    static const QRegularExpression re(QStringLiteral("<j:([^>]*)>([^<]*)</j:"));
    QVariantMap result;
    for (auto it = re.globalMatch(page); it.hasNext();) {
        const auto m = it.next();
        result.insert(m.captured(1), m.captured(2));
    }
    return result;
}

QVariantMap configXMLDefinitionsForPreferences(TNPreferences* prefs)
{
    const QVariantMap info =
        parseBoxInfo(FBBoxConnectionHelper::dialWithAction(QStringLiteral("jason_boxinfo"), QString(), QString(), prefs));
    if (!info.isEmpty()) {
        QMutexLocker lock(&prefs->runtimeMutex());
        prefs->useLUA = true;
    }
    return info;
}

QVariantMap configDefinitionsForPreferences(TNPreferences* prefs)
{
    if (!prefs)
        return {};
    QVariantMap def;
    if (!prefs->useLUA)
        def = parseConfigDef(FBBoxConnectionHelper::dialWithAction(QStringLiteral("config.def"), QString(), QString(), prefs));
    if (def.isEmpty())
        def = configXMLDefinitionsForPreferences(prefs);
    return def;
}

QVariant boxusersForConfiguration(TNPreferences* prefs)
{
    const QString answer = FBBoxConnectionHelper::dialWithAction(
        QStringLiteral("userrights"),
        QStringLiteral("?users=boxusers:settings/user/list(UID,id,enabled,is_myself,name,email,password,"
                       "box_admin_rights,nas_rights,phone_rights,dial_rights)"
                       "&compatibility_mode=boxusers:settings/compatibility_mode"),
        QString(), prefs);
    return QJsonDocument::fromJson(answer.toUtf8()).toVariant();
}

QVariantMap rightsForUserInList(const QString& userName, const QVariant& userList)
{
    const QVariantList users = userList.toMap().value(QStringLiteral("users")).toList();
    for (const QVariant& u : users) {
        const QVariantMap user = u.toMap();
        const bool match = userName.isEmpty() ? user.value(QStringLiteral("is_myself")).toString() == u"1"
                                              : user.value(QStringLiteral("name")).toString() == userName;
        if (!match)
            continue;
        QVariantMap rights;
        for (const char* key : {"box_admin_rights", "dial_rights", "phone_rights", "nas_rights"})
            if (user.contains(QLatin1String(key)))
                rights.insert(QLatin1String(key), user.value(QLatin1String(key)).toString());
        return rights;
    }
    return {};
}

QVariantMap rightsForUser(const QString& userName, TNPreferences* prefs)
{
    return rightsForUserInList(userName, boxusersForConfiguration(prefs));
}

void checkNetworkEnvironmentForConfiguration(TNPreferences* prefs)
{
    if (!prefs)
        return;
    if (!prefs->remoteHostName.isEmpty() && prefs->autoRemoteAccess) {
        const bool home = FBNetworkHelper::isDeviceInLocalSubnetAndRoutersMACAddressUsePreferences(prefs);
        QMutexLocker lock(&prefs->runtimeMutex());
        prefs->remoteAccess = !home;
    }
    if (!prefs->configDefinition.isValid() || prefs->configDefinition.toMap().isEmpty())
        prefs->configDefinition = configDefinitionsForPreferences(prefs);
}

} // namespace FBBoxSystemHelper

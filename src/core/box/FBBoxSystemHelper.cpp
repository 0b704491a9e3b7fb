#include "box/FBBoxSystemHelper.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/RouterSession.h"

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

void threadcheckWLANStatus(TNPreferences* prefs, RouterSession& session, RouterFailure* failure)
{
    if (!prefs)
        return;
    const QStringList values =
        FBBoxConnectionHelper::componentsArrayForVariables(statusVariables(), prefs, session, failure);
    {
        QMutexLocker lock(&session.mutex());
        session.WLANStatus = getWLANStatus(values);
        session.DECTStatus = getDECTStatus(values);
        // Four values are enough here: a valid answer always carries all five.
        if (values.size() >= 4) {
            session.wlanSSID = values.value(3);
            session.wlanSSID_scnd = values.value(4);
        }
    }
    session.notifications().post(Notifications::WLANSTATUS);
    session.notifications().post(Notifications::DECTSTATUS);
}

QString threadSetWLANStatus(TNPreferences* prefs, RouterSession& session, const QString& command,
                            RouterFailure* failure)
{
    {
        QMutexLocker lock(&session.mutex());
        session.WLANStatus = expectedWLANStatus(session.WLANStatus, command);
    }
    const QString answer =
        FBBoxConnectionHelper::dialWithAction(command, QString(), QString(), prefs, session, failure);
    threadcheckWLANStatus(prefs, session);
    return answer;
}

QString threadSetDECTStatus(TNPreferences* prefs, RouterSession& session, const QString& command,
                            RouterFailure* failure)
{
    QString value;
    {
        QMutexLocker lock(&session.mutex());
        if (command == u"DECToff") {
            session.DECTStatus = 8;
            value = QStringLiteral("0");
        } else if (command == u"DECTon") {
            session.DECTStatus = 16;
            value = QStringLiteral("1");
        }
    }
    return FBBoxConnectionHelper::dialWithAction(QStringLiteral("setDECT"), QString(), value, prefs, session,
                                                 failure);
}

void setWLANStatusInBackground(std::shared_ptr<TNPreferences> prefs, std::shared_ptr<RouterSession> session,
                               const QString& command, FailureHandler onFailure)
{
    if (prefs && session)
        QThreadPool::globalInstance()->start([prefs, session, command, onFailure] {
            RouterFailure failure;
            threadSetWLANStatus(prefs.get(), *session, command, &failure);
            if (failure && onFailure)
                onFailure(failure);
        });
}

void setDECTStatusInBackground(std::shared_ptr<TNPreferences> prefs, std::shared_ptr<RouterSession> session,
                               const QString& command, FailureHandler onFailure)
{
    if (prefs && session)
        QThreadPool::globalInstance()->start([prefs, session, command, onFailure] {
            RouterFailure failure;
            threadSetDECTStatus(prefs.get(), *session, command, &failure);
            // The switch shows the new state at once; the next status check confirms it.
            session->notifications().post(Notifications::DECTSTATUS);
            if (failure && onFailure)
                onFailure(failure);
        });
}

QString languageFromLoginScreen(const QString& page)
{
    static const QRegularExpression re(QStringLiteral(".*/html/(.*)/menus/.*"));
    const QString lang = re.match(page).captured(1);
    return lang.isEmpty() ? QStringLiteral("de") : lang;
}

QString requestBoxLanguageUsePreferences(TNPreferences* prefs, RouterSession& session)
{
    return languageFromLoginScreen(FBBoxConnectionHelper::dialWithAction(
        QStringLiteral("loginScreen"), QString(), QString(), prefs, session));
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

QVariantMap configXMLDefinitionsForPreferences(TNPreferences* prefs, RouterSession& session)
{
    const QVariantMap info = parseBoxInfo(FBBoxConnectionHelper::dialWithAction(
        QStringLiteral("jason_boxinfo"), QString(), QString(), prefs, session));
    if (!info.isEmpty()) {
        QMutexLocker lock(&session.mutex());
        session.useLUA = true;
    }
    return info;
}

QVariantMap configDefinitionsForPreferences(TNPreferences* prefs, RouterSession& session)
{
    if (!prefs)
        return {};
    bool lua = false;
    {
        QMutexLocker lock(&session.mutex());
        lua = session.useLUA;
    }
    QVariantMap def;
    if (!lua)
        def = parseConfigDef(FBBoxConnectionHelper::dialWithAction(QStringLiteral("config.def"), QString(),
                                                                   QString(), prefs, session));
    if (def.isEmpty())
        def = configXMLDefinitionsForPreferences(prefs, session);
    return def;
}

QVariant boxusersForConfiguration(TNPreferences* prefs, RouterSession& session)
{
    const QString answer = FBBoxConnectionHelper::dialWithAction(
        QStringLiteral("userrights"),
        QStringLiteral("?users=boxusers:settings/user/list(UID,id,enabled,is_myself,name,email,password,"
                       "box_admin_rights,nas_rights,phone_rights,dial_rights)"
                       "&compatibility_mode=boxusers:settings/compatibility_mode"),
        QString(), prefs, session);
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

QVariantMap rightsForUser(const QString& userName, TNPreferences* prefs, RouterSession& session)
{
    return rightsForUserInList(userName, boxusersForConfiguration(prefs, session));
}

} // namespace FBBoxSystemHelper

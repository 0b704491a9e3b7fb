#include "box/TNAction.h"

#include "base/Localization.h"
#include "base/Logging.h"
#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBNetworkHelper.h"
#include "box/RouterSession.h"
#include "box/TNSessionManager.h"

#include "box/TNSessionRights.h"
#include <QRegularExpression>

#include <QDateTime>

// Commands and their requests. Older firmware: POST to /cgi-bin/webcm with the body below and the
// SID. Lua firmware: TR-064 for telephony and WLAN, Lua pages for the rest.
//
// command          older firmware (webcm body)                          Lua firmware
// WLANoff/WLANon   &wlan:settings/ap_enabled=0|1&...ap_enabled_scnd=0|1  WLAN2off/on, then WLAN5off/on unless
// 0x20 WLAN2off/on      &wlan:settings/ap_enabled=0|1                         wlanconfig1 WLANConfiguration:1
// SetEnable WLAN5off/on      &wlan:settings/ap_enabled_scnd=0|1                    wlanconfig2
// WLANConfiguration:2 SetEnable call &telcfg:settings/DialPort=P&...UseClickToDial=1&telcfg:command/Dial=N
//                                                                        dial port first, x_voip
//                                                                        X_AVM-DE_DialNumber
// CALLon/CALLoff   as call with port 50 and #96*5* / #96*4*              port 50, X_AVM-DE_DialNumber
// testExtension    as call with port 50 and **N                          port 50, X_AVM-DE_DialNumber **N
// restoreCall      port 50, Dial= and Hangup=                            x_voip X_AVM-DE_DialHangup
// cancelCall       port P, Dial= and Hangup=                             x_voip X_AVM-DE_DialHangup
// setPhonePort     &telcfg:settings/DialPort=P                           POST /fon_num/dial_foncalls.lua
// refreshDiversity &telcfg:command/RefreshDiversity=                     none: not sent
// setDECT          &dect:settings/enabled=N                              POST /dect/dect_settings.lua
// query            Q&getpage=../html/query.txt                           GET /query.lua?Q
// querylua         -                                                     GET /query.lua?Q
// userrights       -                                                     GET /query.lua + N (N begins with
// "?") jason_boxinfo    GET /jason_boxinfo.xml, no session loginScreen      GET / (the start page names
// /html/<lang>/menus/), no session config.def       GET /cgi-bin/webcm?&getpage=../html/config.def
// model_firmware   &var:n[0]=logic:status/nspver&getpage=../html/query.txt&var:cnt=1
// getWLAN, filter, firmware, boxLanguage: pages with markers, see kPages.

namespace {
struct PageDef
{
    const char* command;
    const char* luaPath;
    const char* pagename;
    const char* menu;
};

const PageDef kPages[] = {
    {"getWLAN", "/wlan/wlan_settings.lua", "common", "wlan"},
    {"filter", "/fon_num/callthrough.lua", "isdn", "fon"},
    {"firmware", "/system/update.lua", "update", "system"},
    {"boxLanguage", "/home/home.lua", "home", "home"},
};

QString soapEnable(bool on)
{
    return QStringLiteral("<ns1:SetEnable><NewEnable xsi:type=\"xsd:int\">%1</NewEnable></ns1:SetEnable>")
        .arg(on ? 1 : 0);
}

QString xmlEscape(const QString& s)
{
    return s.toHtmlEscaped();
}

FBSOAPRequest dialNumber(const QString& number)
{
    return {QStringLiteral("x_voip"), QStringLiteral("X_VoIP:1"), QStringLiteral("X_AVM-DE_DialNumber"),
            QStringLiteral("<ns1:X_AVM-DE_DialNumber><NewX_AVM-DE_PhoneNumber xsi:type=\"xsd:string\">%1"
                           "</NewX_AVM-DE_PhoneNumber></ns1:X_AVM-DE_DialNumber>")
                .arg(xmlEscape(number))};
}

FBSOAPRequest hangup()
{
    return {QStringLiteral("x_voip"), QStringLiteral("X_VoIP:1"), QStringLiteral("X_AVM-DE_DialHangup"),
            QStringLiteral("<ns1:X_AVM-DE_DialHangup></ns1:X_AVM-DE_DialHangup>")};
}

QString dialForm(const QString& port, const QString& dial)
{
    return QStringLiteral("&telcfg:settings/DialPort=") + port +
           QStringLiteral("&telcfg:settings/UseClickToDial=1&telcfg:command/Dial=") + dial;
}

bool isLoginPage(const QString& page)
{
    return page.contains(QStringLiteral("<input type=\"password\""));
}
} // namespace

std::uint32_t TNAction::neededPhoneRightForConfig(const TNPreferences* prefs)
{
    return prefs && prefs->remoteAccess ? TNSessionRightPhoneRemote : TNSessionRightPhoneLocal;
}

std::uint32_t TNAction::neededDialRightForConfig(const TNPreferences* prefs)
{
    return prefs && prefs->remoteAccess ? TNSessionRightDialRemote : TNSessionRightDialLocal;
}

std::uint32_t TNAction::neededDialBoxAdminForConfig(const TNPreferences* prefs)
{
    return prefs && prefs->remoteAccess ? RightBoxAdminRemote : RightBoxAdminLocal;
}

QString TNAction::debugUserRight(std::uint32_t mask)
{
    return TNSessionRights::debugUserRight(mask);
}

void TNAction::csvPlan(Plan& p, int csvType, const QString& boxLanguage)
{
    if (csvType == 2) {
        p.method = "GET";
        p.path = QStringLiteral("/fon_num/foncalls_list.lua?csv=");
        p.parameters.clear();
        return;
    }
    p.method = "POST";
    p.path = QStringLiteral("/cgi-bin/webcm");
    p.parameters = boxLanguage == u"de"
                       ? QStringLiteral("&getpage=..%2Fhtml%2Fde%2FFRITZ%21Box_Anrufliste.csv")
                       : QStringLiteral("&getpage=..%2Fhtml%2Fen%2FFRITZ%21Box_Calllist.csv");
    p.parameters += QStringLiteral(
        "&telcfg:settings/RefreshJournal=:-)&telcfg:command/RefreshJournal=:-)&telcfg:settings/UseJournal=1");
}

TNAction::Plan TNAction::planFor(const QString& action, const QString& number, const QString& givenPort,
                                 const TNPreferences& prefs, bool lua)
{
    Plan p;
    QString port = givenPort.isEmpty() ? QStringLiteral("50") : givenPort;
    const QString webcm = QStringLiteral("/cgi-bin/webcm");
    const std::uint32_t dialRight = neededDialRightForConfig(&prefs);
    const std::uint32_t adminRight = neededDialBoxAdminForConfig(&prefs);
    const std::uint32_t phoneRight = neededPhoneRightForConfig(&prefs);

    const auto wlan = [&](int radio, bool on) {
        p.right = adminRight;
        if (lua) {
            p.soap = {QStringLiteral("wlanconfig%1").arg(radio),
                      QStringLiteral("WLANConfiguration:%1").arg(radio), QStringLiteral("SetEnable"),
                      soapEnable(on)};
        } else {
            p.path = webcm;
            p.parameters =
                QStringLiteral("&wlan:settings/%1=%2")
                    .arg(radio == 1 ? QStringLiteral("ap_enabled") : QStringLiteral("ap_enabled_scnd"))
                    .arg(on ? 1 : 0);
        }
        p.needsOutput = false;
    };

    if (action == u"WLAN2off" || action == u"WLAN2on") {
        wlan(1, action.endsWith(u"on"));
    } else if (action == u"WLAN5off" || action == u"WLAN5on") {
        wlan(2, action.endsWith(u"on"));
    } else if (action == u"WLANoff" || action == u"WLANon") {
        const int v = action == u"WLANon" ? 1 : 0;
        p.right = adminRight;
        p.path = webcm;
        p.parameters = QStringLiteral("&wlan:settings/ap_enabled=%1&wlan:settings/ap_enabled_scnd=%1").arg(v);
        p.needsOutput = false;
    } else if (action == u"call") {
        if (port == u"61")
            port = QStringLiteral("6"); // the router's port numbering for click-to-dial
        p.right = dialRight;
        if (lua)
            p.soap = dialNumber(number);
        else {
            p.path = webcm;
            p.parameters = dialForm(port, number);
        }
    } else if (action == u"CALLon" || action == u"CALLoff" || action == u"testExtension") {
        const QString dial = action == u"CALLon"    ? QStringLiteral("#96*5*")
                             : action == u"CALLoff" ? QStringLiteral("#96*4*")
                                                    : QStringLiteral("**") + number;
        p.right = action == u"testExtension" ? dialRight : phoneRight;
        if (lua)
            p.soap = dialNumber(dial);
        else {
            p.path = webcm;
            p.parameters = dialForm(QStringLiteral("50"), dial);
        }
    } else if (action == u"restoreCall" || action == u"cancelCall") {
        p.right = dialRight;
        if (lua)
            p.soap = hangup();
        else {
            p.path = webcm;
            p.parameters = dialForm(action == u"restoreCall" ? QStringLiteral("50") : port, QString()) +
                           QStringLiteral("&telcfg:command/Hangup=");
        }
    } else if (action == u"setPhonePort") {
        p.right = dialRight;
        if (lua) {
            p.path = QStringLiteral("/fon_num/dial_foncalls.lua");
            p.parameters = QStringLiteral("&clicktodial=on&port=") + port + QStringLiteral("&btn_apply=");
        } else {
            p.path = webcm;
            p.parameters = QStringLiteral("&telcfg:settings/DialPort=") + port;
        }
    } else if (action == u"refreshDiversity") {
        p.right = phoneRight;
        if (lua)
            p.known = false; // the Lua pages have no such command
        else {
            p.path = webcm;
            p.parameters = QStringLiteral("&telcfg:command/RefreshDiversity=");
        }
    } else if (action == u"setDECT") {
        // The switch hands its value as the port text; the number text serves older callers.
        const QString value = givenPort.isEmpty() ? number : givenPort;
        p.right = adminRight;
        if (lua) {
            p.path = QStringLiteral("/dect/dect_settings.lua");
            p.parameters = value == u"0" ? QStringLiteral("&dect_assi=0&btnSave=")
                                         : QStringLiteral("&dect_activ=on&dect_pin=****&btnSave=");
        } else {
            p.path = webcm;
            p.parameters = QStringLiteral("&dect:settings/enabled=") + value;
        }
    } else if (action == u"query" || action == u"querylua") {
        p.encoding = FBEncoding::Utf8;
        if (lua || action == u"querylua") {
            p.method = "GET";
            p.path = QStringLiteral("/query.lua?");
            p.parameters = number;
            p.right = adminRight;
        } else {
            p.path = webcm;
            p.parameters = number + QStringLiteral("&getpage=../html/query.txt");
        }
    } else if (action == u"userrights") {
        p.encoding = FBEncoding::Utf8;
        p.method = "GET";
        p.path = QStringLiteral("/query.lua");
        p.parameters = number;
    } else if (action == u"refreshFoncalls") {
        // Bytes as sent: the journal may be UTF-8 or ISO-8859-1. The router itself refuses the
        // journal to a user without the right, so the base right suffices here.
        p.encoding = FBEncoding::Latin1;
        if (lua) {
            p.path = QStringLiteral("/fon_num/foncalls_list.lua");
            p.parameters = QStringLiteral("&usejournal=on&refresh=&callstab=all");
        } else {
            p.path = webcm;
            p.parameters = QStringLiteral("&telcfg:settings/RefreshJournal=:-)&var%3Apagename=foncalls");
        }
    } else if (action == u"csv") {
        p.encoding = FBEncoding::Latin1;
        // The flavour found by "refreshFoncalls" decides (see csvPlan); without it the firmware.
        csvPlan(p, lua ? 2 : 1, prefs.boxLanguage);
    } else if (action == u"jason_boxinfo") {
        p.method = "GET";
        p.path = QStringLiteral("/jason_boxinfo.xml");
        p.needsSession = false;
        p.encoding = FBEncoding::Utf8;
    } else if (action == u"loginScreen") {
        p.method = "GET";
        p.path = QStringLiteral("/");
        p.needsSession = false;
    } else if (action == u"config.def") {
        p.method = "GET";
        p.path = webcm;
        p.parameters = QStringLiteral("&getpage=../html/config.def");
    } else if (action == u"model_firmware") {
        p.path = webcm;
        p.parameters = QStringLiteral("&var:n[0]=logic:status/nspver&getpage=../html/query.txt&var:cnt=1");
    } else {
        p.known = false;
        for (const PageDef& page : kPages) {
            if (action != QLatin1String(page.command))
                continue;
            p.known = true;
            p.method = "GET";
            p.encoding = FBEncoding::Utf8;
            if (lua) {
                p.path = QString::fromLatin1(page.luaPath);
                p.pageMarker = QStringLiteral("<!-- pagename:%1-->").arg(p.path);
            } else {
                const QString lang = prefs.boxLanguage.isEmpty() ? QStringLiteral("de") : prefs.boxLanguage;
                p.path = webcm;
                // Joined, not formatted: the escapes would read as placeholders.
                p.parameters = QStringLiteral("&getpage=..%2Fhtml%2F") + lang +
                               QStringLiteral("%2Fmenus%2Fmenu2.html&var%3Alang=") + lang +
                               QStringLiteral("&var%3Apagename=") + QLatin1String(page.pagename) +
                               QStringLiteral("&var%3Amenu=") + QLatin1String(page.menu);
                p.pageMarker =
                    QStringLiteral("name=\"var:pagename\" value=\"%1\"").arg(QLatin1String(page.pagename));
            }
        }
    }
    return p;
}

QString TNAction::ensureDialPort(const QString& port)
{
    const QStringList current = FBBoxConnectionHelper::componentsArrayForVariables(
        {QStringLiteral("telcfg:settings/DialPort")}, m_prefs, *m_session, &failure);
    if (current.isEmpty() || current.first() != port) {
        const QString r = send(QStringLiteral("setPhonePort"),
                               planFor(QStringLiteral("setPhonePort"), QString(), port, *m_prefs, useLUA()));
        if (r == u" " || r == u"-2")
            return r;
    }
    return {};
}

QString TNAction::runLuaComposite(const QString& action, const QString& number, const QString& port,
                                  bool* handled)
{
    *handled = true;
    if (action == u"WLANoff" || action == u"WLANon") {
        const bool on = action == u"WLANon";
        QString r = dialWithAction(on ? QStringLiteral("WLAN2on") : QStringLiteral("WLAN2off"), number, port,
                                   m_prefs, *m_session);
        if (r == u" " || r == u"-2")
            return r;
        int status = 0;
        {
            QMutexLocker lock(&m_session->mutex());
            status = m_session->WLANStatus;
        }
        if (!(status & 0x20))
            r = dialWithAction(on ? QStringLiteral("WLAN5on") : QStringLiteral("WLAN5off"), number, port,
                               m_prefs, *m_session);
        return r;
    }
    QString dialPort;
    if (action == u"call")
        dialPort = port.isEmpty() ? QStringLiteral("50") : (port == u"61" ? QStringLiteral("6") : port);
    else if (action == u"CALLon" || action == u"CALLoff" || action == u"testExtension")
        dialPort = QStringLiteral("50");
    if (dialPort.isEmpty()) {
        *handled = false;
        return {};
    }
    // The right is checked before anything is sent, the dial port query included.
    const Plan plan = planFor(action, number, port, *m_prefs, useLUA());
    const TNSessionManager& session = m_session->sessionManager();
    if (session.sessionResult == TNSessionResultLoggedIn && !(session.userRights & plan.right)) {
        failure = RouterFailure::make(RouterFailure::Kind::MissingRight, QStringLiteral("missingUserRights"));
        return QStringLiteral(" ");
    }
    if (const QString r = ensureDialPort(dialPort); !r.isEmpty())
        return r;
    return send(action, plan);
}

bool TNAction::useLUA() const
{
    QMutexLocker lock(&m_session->mutex());
    return m_session->useLUA;
}

QString TNAction::dialWithAction(const QString& action, const QString& number, const QString& port,
                                 TNPreferences* prefs, RouterSession& routerSession)
{
    if (!prefs)
        return QStringLiteral(" ");
    m_prefs = prefs;
    m_session = &routerSession;
    // The login tells which firmware answers, so it comes before the form is chosen.
    if (planFor(action, number, port, *prefs, useLUA()).needsSession && !m_sessionChecked) {
        failure.merge(routerSession.sessionManager().currentSessionIDUsePreferences(prefs));
        m_sessionChecked = true;
    }
    if (useLUA()) {
        bool handled = false;
        const QString r = runLuaComposite(action, number, port, &handled);
        if (handled)
            return r;
    }
    Plan plan = planFor(action, number, port, *prefs, useLUA());
    TNSessionManager& session = routerSession.sessionManager();
    if (action == u"csv" && session.csvType != 0)
        csvPlan(plan, session.csvType, prefs->boxLanguage);
    const QString answer = send(action, plan);
    if (action == u"refreshFoncalls") {
        // Only the older interface names the export file on the refreshed page.
        static const QRegularExpression csvFile(QStringLiteral(".*value=\"(.*).csv\".*"));
        const QRegularExpressionMatch m = csvFile.match(answer);
        session.csvType = m.hasMatch() && !m.captured(1).isEmpty() ? 1 : 2;
    }
    return answer;
}

QString TNAction::send(const QString& action, const Plan& planIn)
{
    Plan plan = planIn;
    if (!plan.known) {
        qCWarning(lcBox) << "command without a request for this firmware:" << action;
        return QString();
    }
    TNSessionManager& session = m_session->sessionManager();
    if (plan.needsSession) {
        if (!m_sessionChecked)
            failure.merge(session.currentSessionIDUsePreferences(m_prefs));
        if (session.sessionResult == TNSessionResultUnreachable) {
            qCInfo(lcBox) << "Show Error? network available:" << FBNetworkHelper::isInternetConnection();
            if (!session.errorMessage.isEmpty())
                failure = RouterFailure::withText(RouterFailure::Kind::Unreachable, QString(),
                                                  session.errorMessage);
            return QStringLiteral(" ");
        }
        if (!(session.userRights & plan.right)) {
            double updated = 0;
            QString sid;
            {
                QMutexLocker lock(&m_session->mutex());
                updated = m_prefs->remoteAccess ? m_session->remoteUpdateTime : m_session->updateTime;
                sid = m_prefs->remoteAccess ? m_session->remoteSessionID : m_session->sessionID;
            }
            // The detail is for the log only: it carries the session state, not the SID itself.
            qCInfo(lcBox).noquote() << QStringLiteral("%1 - %2 - %3 - %4 / %5 - %6: %7")
                                           .arg(action)
                                           .arg(session.sessionResult)
                                           .arg(sid.size() == 16 ? QStringLiteral("<sid>") : sid)
                                           .arg(updated, 0, 'f', 0)
                                           .arg(session.now(), 0, 'f', 0)
                                           .arg(TNSessionRights::debugUserRight(session.userRights))
                                           .arg(TNSessionRights::debugUserRight(plan.right));
            failure =
                RouterFailure::make(RouterFailure::Kind::MissingRight, QStringLiteral("missingUserRights"));
            return QStringLiteral(" ");
        }
        if (session.sessionResult != TNSessionResultLoggedIn)
            return QStringLiteral(" ");
        QString sid;
        QString password;
        {
            QMutexLocker lock(&m_session->mutex());
            sid = m_prefs->remoteAccess ? m_session->remoteSessionID : m_session->sessionID;
            password = m_prefs->remoteAccess ? m_prefs->remotePassWord : m_prefs->passWord;
        }
        if (sid == u"-2") {
            QMutexLocker lock(&m_session->mutex());
            m_session->sessionID.clear();
            m_session->remoteSessionID.clear();
            return QString();
        }
        if (!plan.isSoap()) {
            if (sid == u"-1")
                plan.parameters +=
                    QStringLiteral("&login:command/password=") + FBBoxConnectionHelper::urlencode(password);
            else
                plan.parameters += QStringLiteral("&sid=") + sid;
        }
    }

    QString base;
    int tr064Port = 49000;
    bool remote = false;
    {
        QMutexLocker lock(&m_session->mutex());
        remote = m_prefs->remoteAccess;
        tr064Port = m_prefs->tr064Port;
        if (remote)
            base = QStringLiteral("https://%1:%2").arg(m_prefs->remoteHostName).arg(m_prefs->remotesslPort);
        else
            base = m_prefs->webPort == 80
                       ? QStringLiteral("http://") + m_prefs->hostName
                       : QStringLiteral("http://%1:%2").arg(m_prefs->hostName).arg(m_prefs->webPort);
    }

    if (plan.isSoap()) {
        if (!(session.userRights & RightTR064)) {
            failure = RouterFailure::make(RouterFailure::Kind::MissingRight, QStringLiteral("errorTR064"));
            return QStringLiteral(" ");
        }
        const QString soapBase = remote
                                     ? base + QStringLiteral("/tr064")
                                     : QStringLiteral("http://%1:%2").arg(m_prefs->hostName).arg(tr064Port);
        FBSOAPConnection soap;
        soap.cancelOnString = cancelOnString;
        const QString answer = soap.startWithRequest(
            FBSOAPConnection::buildRequest(FBSOAPConnection::controlUrl(soapBase, plan.soap.controlPath),
                                           plan.soap),
            plan.needsOutput, *m_prefs, *m_session);
        failure.merge(soap.connection.failure);
        failure.merge(FBSOAPConnection::reportFault(answer));
        return answer;
    }

    QString path = plan.path;
    FBRequest request;
    if (plan.method == "GET") {
        if (!path.contains(u'?') && !plan.parameters.contains(u'?'))
            path += u'?';
        path += plan.parameters;
        request.method = "GET";
    } else {
        request.setFormBody(plan.parameters.toLatin1());
    }
    request.url = base + path;
    if (remote) {
        QMutexLocker lock(&m_session->mutex());
        request.setHeader(
            "Authorization",
            "Basic " + (m_prefs->remoteUserName + u':' + m_prefs->remotePassWord).toLatin1().toBase64());
    }
    FBConnection connection(*m_prefs, *m_session);
    connection.cancelOnString = cancelOnString;
    const QString answer = connection.startWithRequest(request, plan.needsOutput, plan.encoding);
    failure.merge(connection.failure);
    if (!plan.pageMarker.isEmpty() && answer != u"-2" && !answer.isEmpty() && !isLoginPage(answer) &&
        !answer.contains(plan.pageMarker)) {
        qCInfo(lcBox) << "wrong page for" << action;
        return QString();
    }
    return answer;
}

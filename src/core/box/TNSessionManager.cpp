#include "box/TNSessionManager.h"

#include "base/Clock.h"
#include "base/Localization.h"
#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"
#include "box/FBLoginHash.h"
#include "box/FBNetworkHelper.h"
#include "box/RouterSession.h"

#include <QMutex>
#include <QRegularExpression>
#include <QScopeGuard>

namespace {
const QString kInvalidSID = QStringLiteral("0000000000000000");

QString capture(const QString& text, const QString& element)
{
    const QRegularExpression re(QStringLiteral(".*<%1>(.*)</%1>.*").arg(element));
    const auto m = re.match(text);
    return m.hasMatch() ? m.captured(1) : QString();
}

bool hasElement(const QString& text, const QString& element)
{
    return QRegularExpression(QStringLiteral(".*<%1>(.*)</%1>.*").arg(element)).match(text).hasMatch();
}
} // namespace

TNSessionManager::TNSessionManager(RouterSession& session) : m_session(session) {}

double TNSessionManager::now() const
{
    static const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    return double(reference.msecsTo(m_session.clock().now())) / 1000.0;
}

RouterFailure TNSessionManager::currentSessionIDUsePreferences(TNPreferences* prefs)
{
    if (!prefs)
        return {};
    QMutexLocker lock(&m_lock);
    currentPreferences = prefs;
    // The login's own queries check the session again: that must not wipe what it found so far.
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    if (m_depth == 1)
        m_failure = {};
    {
        QMutexLocker plock(&m_session.mutex());
        hostName = prefs->hostName;
        userName = prefs->userName;
        passWord = prefs->passWord;
        remoteHostName = prefs->remoteHostName;
        remoteUserName = prefs->remoteUserName;
        remotePassWord = prefs->remotePassWord;
        remotesslPort = prefs->remotesslPort;
        remoteAccess = prefs->remoteAccess;
        webPort = prefs->webPort;
    }
    const double t = now();
    if (sessionResult == TNSessionResultBlocked && blockUntilTimeInterval > t)
        return {}; // no request while the router blocks logins

    double updated = 0;
    QString sid;
    {
        QMutexLocker plock(&m_session.mutex());
        updated = remoteAccess ? m_session.remoteUpdateTime : m_session.updateTime;
        sid = remoteAccess ? m_session.remoteSessionID : m_session.sessionID;
    }
    // 550 s: a little less than the router's ten minutes.
    if (t - updated <= 550 && !sid.isEmpty())
        return {};
    updatedSessionID();
    return m_failure;
}

void TNSessionManager::setBothSessionIDs(const QString& sid)
{
    QMutexLocker plock(&m_session.mutex());
    m_session.sessionID = sid;
    m_session.remoteSessionID = sid;
}

void TNSessionManager::updatedSessionID()
{
    if (!currentPreferences)
        return;
    allFinished = false;
    hasUserRights = false;
    luaType = 0;
    csvType = 0;
    m_loginRights = 0;
    certificateRefused = false;

    int result =
        retrieveSessionIDForRequest(requestForSessionCommand(QStringLiteral("sessionlua"), {}), true);
    // A refused challenge is not retried on the older login page: the router sent it on purpose.
    const bool challengeRefused = m_failure.key == u"errorUnexpectedChallenge";
    if (result == TNSessionResultUnreachable || result == TNSessionResultBlocked || challengeRefused) {
        sessionResult = result;
        userRights = TNSessionRightBase;
        allFinished = true;
        return;
    }
    if (result != TNSessionResultLoggedIn) {
        result = retrieveSessionIDForRequest(requestForSessionCommand(QStringLiteral("session"), {}), false);
        if (result == TNSessionResultNoSession) {
            setBothSessionIDs(QStringLiteral("-1"));
            QMutexLocker plock(&m_session.mutex());
            m_session.loginError = false;
            m_session.errorMessageShown = false;
            sessionResult = TNSessionResultLoggedIn;
        } else {
            sessionResult = result;
            if (result != TNSessionResultLoggedIn) {
                userRights = TNSessionRightBase;
                allFinished = true;
                return;
            }
        }
    } else {
        sessionResult = result;
        // A router that logs in on the Lua page speaks the Lua pages and TR-064: the queries
        // that follow (TR-064 right, user list) must already take that form.
        QMutexLocker plock(&m_session.mutex());
        if (!m_session.useLUA) {
            m_session.useLUA = true;
            m_session.switchedLUA = true;
        }
    }

    {
        QMutexLocker plock(&m_session.mutex());
        (remoteAccess ? m_session.remoteUpdateTime : m_session.updateTime) = now();
    }
    if (m_loginRights)
        userRights = m_loginRights;
    else if (hasUserRights)
        assignUserRights();
    else
        assignDefaultUserRights();

    const QStringList tr064 = FBBoxConnectionHelper::componentsArrayForVariables(
        {QStringLiteral("tr064:settings/enabled")}, currentPreferences, m_session, &m_failure);
    if (!tr064.isEmpty() && tr064.first() == u"1")
        userRights |= RightTR064;
    qCDebug(lcBox) << "rights:" << TNSessionRights::debugUserRight(userRights);
    allFinished = true;
}

int TNSessionManager::retrieveSessionIDForRequest(const FBRequest& request, bool useLUA)
{
    const QString body = startWithRequest(request);
    const QString challenge = capture(body, QStringLiteral("Challenge"));
    if (challenge.isEmpty()) {
        if (body == u"-2") {
            setBothSessionIDs(QStringLiteral("-2"));
            return TNSessionResultUnreachable;
        }
        return TNSessionResultNoSession;
    }
    if (useLUA) {
        // A self-closing <Rights/> is the element of current routers as well.
        if (!hasElement(body, QStringLiteral("Rights")) && !body.contains(QStringLiteral("<Rights/>"))) {
            luaType = 1;
            return TNSessionResultRejected;
        }
        luaType = 3;
        static const QRegularExpression lastUser(QStringLiteral("<User last=\"1\">([^<]*)</User>"));
        m_lastUserFromPage = lastUser.match(body).captured(1);
    }
    if (hasBlockTimeError(body))
        return TNSessionResultBlocked;

    const QString password = (remoteAccess && useLUA) ? remotePassWord : passWord;
    const QString response = FBLoginHash::responseForChallenge(challenge, password);
    if (response.isEmpty()) {
        qCWarning(lcBox).noquote() << "login challenge refused:" << challenge.left(64);
        m_failure =
            RouterFailure::make(RouterFailure::Kind::Other, QStringLiteral("errorUnexpectedChallenge"));
        return TNSessionResultRejected;
    }
    const QString answer = startWithRequest(requestForSessionCommand(
        useLUA ? QStringLiteral("responselua") : QStringLiteral("response"), response));
    if (hasBlockTimeError(answer))
        return TNSessionResultBlocked;
    return handleSessionLoginOutput(answer);
}

int TNSessionManager::handleSessionLoginOutput(const QString& output)
{
    if (!hasElement(output, QStringLiteral("SID")))
        return TNSessionResultNoSession;
    const QString sid = capture(output, QStringLiteral("SID"));
    if (sid.isEmpty())
        return TNSessionResultNoSession;
    if (sid == kInvalidSID) {
        qCInfo(lcBox) << "-####";
        m_failure = RouterFailure::make(RouterFailure::Kind::WrongPassword, QStringLiteral("errorWrongPass"));
        return TNSessionResultRejected;
    }
    {
        QMutexLocker plock(&m_session.mutex());
        (remoteAccess ? m_session.remoteSessionID : m_session.sessionID) = sid;
        m_session.loginError = false;
        m_session.errorMessageShown = false;
    }
    if (!capture(output, QStringLiteral("Rights")).isEmpty())
        hasUserRights = true;
    m_loginRights = TNSessionRights::maskFromLoginRights(output, remoteAccess);
    return TNSessionResultLoggedIn;
}

bool TNSessionManager::hasBlockTimeError(const QString& output)
{
    const QString block = capture(output, QStringLiteral("BlockTime"));
    if (block.isEmpty() || block.toInt() < 1)
        return false;
    m_failure =
        RouterFailure::make(RouterFailure::Kind::BlockTime, QStringLiteral("errorBlockTime"), {block});
    m_failure.blockSeconds = block.toInt();
    blockUntilTimeInterval = now() + block.toDouble();
    m_session.notifications().post(Notifications::ADDSTATUSBAR, nullptr,
                                   {{QStringLiteral("BlockTime"), block}});
    return true;
}

FBRequest TNSessionManager::requestForSessionCommand(const QString& command, const QString& parameter) const
{
    QString base;
    if (remoteAccess)
        base = QStringLiteral("https://%1:%2").arg(remoteHostName).arg(remotesslPort);
    else
        base = webPort == 80 ? QStringLiteral("http://") + hostName
                             : QStringLiteral("http://%1:%2").arg(hostName).arg(webPort);

    FBRequest request;
    QString body;
    // version=2 asks current routers for the PBKDF2 challenge; older ones ignore it.
    if (command == u"sessionlua") {
        request.url = base + QStringLiteral("/login_sid.lua?version=2");
    } else if (command == u"responselua") {
        request.url = base + QStringLiteral("/login_sid.lua?version=2");
        body = QStringLiteral("response=") + parameter;
        const QString localUser = userName.isEmpty() ? m_lastUserFromPage : userName;
        if (remoteAccess)
            body += QStringLiteral("&username=") + FBBoxConnectionHelper::urlencode(remoteUserName);
        else if (!localUser.isEmpty())
            body += QStringLiteral("&username=") + FBBoxConnectionHelper::urlencode(localUser);
    } else if (command == u"session") {
        request.url = base + QStringLiteral("/cgi-bin/webcm");
        body = QStringLiteral("getpage=..%2Fhtml%2Flogin_sid.xml");
    } else if (command == u"response") {
        request.url = base + QStringLiteral("/cgi-bin/webcm");
        body = QStringLiteral("getpage=..%2Fhtml%2Flogin_sid.xml&login:command/response=") + parameter;
    }
    if (!body.isEmpty())
        request.setFormBody(body.toLatin1());
    if (remoteAccess)
        request.setHeader("Authorization",
                          "Basic " + (remoteUserName + u':' + remotePassWord).toLatin1().toBase64());
    return request;
}

void TNSessionManager::onUnauthorized()
{
    if (!currentPreferences)
        return;
    {
        QMutexLocker plock(&m_session.mutex());
        if (m_session.loginError)
            return;
        m_session.loginError = true;
    }
    const QString key = (remotePassWord.isEmpty() && remoteAccess)
                            ? QStringLiteral("errorWrongPassEmptyRemote")
                            : QStringLiteral("errorWrongRemoteLogin");
    m_failure = RouterFailure::make(RouterFailure::Kind::WrongPassword, key);
}

QString TNSessionManager::startWithRequest(const FBRequest& request)
{
    FBConnection connection(*currentPreferences, m_session);
    connection.timeoutSeconds = loginTimeoutSeconds;
    connection.onUnauthorized = [this] { onUnauthorized(); };
    finished = false;
    errorOccured = false;
    ++requestCount;
    const QString body = connection.startWithRequest(request, true, FBEncoding::Ascii);
    finished = true;
    if (connection.errorOccured) {
        errorOccured = true;
        certificateRefused = connection.certificateRefused;
        const bool plainReachability = connection.timedOut || connection.curlCode == 7 /* couldn't connect */
                                       || connection.curlCode == 6                     /* couldn't resolve */
                                       || connection.curlCode == 28 || connection.curlCode == 56;
        errorMessage.clear();
        if (connection.certificateRefused)
            errorMessage = connection.errorDescription;
        else if (FBNetworkHelper::isInternetConnection() && !plainReachability)
            errorMessage =
                QStringLiteral("%1 (%2)").arg(connection.errorDescription).arg(connection.curlCode);
        qCInfo(lcBox) << "Session didFailWithError" << connection.curlCode << connection.errorDescription;
        return QStringLiteral("-2");
    }
    return body;
}

void TNSessionManager::assignUserRights()
{
    userRights = TNSessionRightBase;
    const QVariantMap rights = FBBoxSystemHelper::rightsForUser(userName, currentPreferences, m_session);
    if (rights.isEmpty()) {
        userRights |= RightBoxAdminNone | TNSessionRightDialNone | RightNASNone | TNSessionRightPhoneNone;
        return;
    }
    for (auto it = rights.begin(); it != rights.end(); ++it)
        userRights |= TNSessionRights::bitsForUserListValue(it.key(), it.value().toString());
}

void TNSessionManager::assignDefaultUserRights()
{
    userRights = TNSessionRightBase | RightNASNone;
    if (remoteAccess) {
        userRights |= TNSessionRightDialRemote | TNSessionRightDialLocal | TNSessionRightPhoneRemote |
                      TNSessionRightPhoneLocal | RightBoxAdminRemote | RightBoxAdminLocal;
    } else if (!userName.isEmpty()) {
        userRights |= RightBoxAdminLocal | TNSessionRightDialLocal | TNSessionRightPhoneLocal;
    }
}

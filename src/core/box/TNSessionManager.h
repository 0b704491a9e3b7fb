#pragma once

#include "box/FBConnection.h"
#include "box/RouterFailure.h"
#include "box/TNSessionRights.h"

#include <QRecursiveMutex>
#include <QString>

#include <cstdint>

class RouterSession;
class TNPreferences;

// Obtains and keeps the router session (SID) of one location and the rights of its user. Part
// of the location's RouterSession, whose fields it fills.
class TNSessionManager
{
public:
    explicit TNSessionManager(RouterSession& session);

    // Makes sure the session holds a usable SID, logging in when needed. The failure of the
    // login made now (wrong password, block time, ...); empty when none was needed or it worked.
    RouterFailure currentSessionIDUsePreferences(TNPreferences* prefs);
    void updatedSessionID();
    int retrieveSessionIDForRequest(const FBRequest& request, bool useLUA);
    int handleSessionLoginOutput(const QString& output);
    bool hasBlockTimeError(const QString& output);
    FBRequest requestForSessionCommand(const QString& command, const QString& parameter) const;
    QString startWithRequest(const FBRequest& request);
    void assignUserRights();
    void assignDefaultUserRights();
    void customCancel() { errorOccured = true; }

    // Seconds since 2001-01-01 of the clock.
    double now() const;

    QString hostName, userName, passWord;
    QString remoteHostName, remoteUserName, remotePassWord;
    int remotesslPort = 443;
    int webPort = 80;
    bool remoteAccess = false;
    int sessionResult = TNSessionResultUnknown;
    double blockUntilTimeInterval = 0;
    std::uint32_t userRights = TNSessionRightBase;
    int luaType = 0;
    int csvType = 0;
    TNPreferences* currentPreferences = nullptr;
    QString errorMessage;
    bool finished = true;
    bool allFinished = true;
    bool errorOccured = false;
    bool hasUserRights = false;
    bool certificateRefused = false;
    int loginTimeoutSeconds = 60;
    // Requests sent by this manager, for the log.
    int requestCount = 0;

private:
    void setBothSessionIDs(const QString& sid);
    void onUnauthorized();

    RouterSession& m_session;
    // What went wrong in the login under way.
    RouterFailure m_failure;
    int m_depth = 0;
    QRecursiveMutex m_lock;
    // Rights listed in the successful login answer (0: none listed).
    std::uint32_t m_loginRights = 0;
    // The user the router marked last="1", when the location has none.
    QString m_lastUserFromPage;
};

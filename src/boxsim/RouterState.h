#pragma once

#include "Scenario.h"

#include <QDateTime>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QMutex>
#include <QString>

// The router's run-time state shared by its web, TR-064 and HTTPS servers: variables, sessions,
// failed logins and the record of what it was asked to do.
class RouterState
{
public:
    explicit RouterState(Scenario& scenario);

    Scenario& scenario() { return m_scenario; }
    QString firmware() const; // "lua", "form" or "nologin"

    // Variables: unknown ones read "er", those the scenario lists as not emulated "no-emu".
    QString variable(const QString& name) const;
    void setVariable(const QString& name, const QString& value);

    QJsonObject user(const QString& name) const; // empty when unknown
    QJsonArray users() const;

    // Sessions.
    QString newSession(const QString& userName);
    bool validSession(const QString& sid, QString* userName = nullptr);

    // Login challenges and failures.
    QString challenge(bool pbkdf2);
    void rotateChallenge();
    int blockSecondsLeft() const;
    void loginFailed();
    void loginSucceeded();

    // What the router was asked: every request and every action.
    void recordRequest(const QString& method, const QString& path);
    void recordAction(const QJsonObject& action);
    QJsonArray requests() const;
    QJsonArray actions() const;
    void clearRecords();

private:
    Scenario& m_scenario;
    mutable QMutex m_mutex;
    QHash<QString, QString> m_vars;
    QHash<QString, QPair<QString, QDateTime>> m_sessions;
    QString m_md5Challenge;
    QString m_pbkdf2Challenge;
    int m_failures = 0;
    QDateTime m_blockedUntil;
    QJsonArray m_requests;
    QJsonArray m_actions;
};

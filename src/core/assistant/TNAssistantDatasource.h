#pragma once

#include "assistant/AssistantRouterData.h"
#include "box/RouterFailure.h"

#include <QString>

class RouterSessions;
class SettingsStore;
class SecretStore;

// Reads a router for the setup assistant: logs in with what the user typed (in a settings
// object of its own, profile -1, never stored), asks the seventeen variables and, when the
// router keeps user accounts, the accounts.
class TNAssistantDatasource
{
public:
    // The read runs in a session of its own, made by sessions but kept by no location.
    TNAssistantDatasource(SettingsStore& store, SecretStore& secrets, RouterSessions& sessions)
        : m_store(store), m_secrets(secrets), m_sessions(sessions)
    {
    }

    // assistantDataForHost:forUser:withPass: with data->host, webPort, userName and pass set.
    AssistantRules::ReadOutcome assistantDataForHost(AssistantRouterData* data);
    // The localized reason of the last failure.
    QString errorMessage() const { return m_error; }
    // What the user is to be shown beyond that line (a refused password, missing rights, ...).
    RouterFailure failure() const { return m_failure; }

private:
    SettingsStore& m_store;
    SecretStore& m_secrets;
    RouterSessions& m_sessions;
    QString m_error;
    RouterFailure m_failure;
};

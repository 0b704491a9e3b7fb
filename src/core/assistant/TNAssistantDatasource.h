#pragma once

#include "assistant/AssistantRouterData.h"

#include <QString>

class SettingsStore;
class SecretStore;

// Reads a router for the setup assistant: logs in with what the user typed (in a settings
// object of its own, profile -1, never stored), asks the seventeen variables and, when the
// router keeps user accounts, the accounts.
class TNAssistantDatasource
{
public:
    TNAssistantDatasource(SettingsStore& store, SecretStore& secrets) : m_store(store), m_secrets(secrets) {}

    // assistantDataForHost:forUser:withPass: with data->host, webPort, userName and pass set.
    AssistantRules::ReadOutcome assistantDataForHost(AssistantRouterData* data);
    // The localized reason of the last failure.
    QString errorMessage() const { return m_error; }

private:
    SettingsStore& m_store;
    SecretStore& m_secrets;
    QString m_error;
};

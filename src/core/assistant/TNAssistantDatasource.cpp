#include "assistant/TNAssistantDatasource.h"

#include "box/FBBoxPhoneHelper.h"

#include "base/Localization.h"
#include "base/Logging.h"
#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBNetworkHelper.h"
#include "box/RouterSession.h"
#include "box/RouterSessions.h"
#include "box/TNSessionManager.h"

#include <QCoreApplication>

#include <memory>

using AssistantRules::ReadOutcome;

ReadOutcome TNAssistantDatasource::assistantDataForHost(AssistantRouterData* data)
{
    m_error.clear();
    m_failure = {};
    auto prefs = std::make_shared<TNPreferences>(m_store, m_secrets);
    prefs->hostName = data->host;
    prefs->webPort = data->webPort;
    prefs->userName = data->userName;
    prefs->passWord = data->pass;
    prefs->activeProfileInt = -1;
    prefs->activeProfile = QStringLiteral("-1");

    const std::shared_ptr<RouterSession> routerSession = m_sessions.detached();
    TNSessionManager& session = routerSession->sessionManager();
    m_failure = session.currentSessionIDUsePreferences(prefs.get());
    QStringList answer;
    if (session.sessionResult == TNSessionResultLoggedIn)
        answer = FBBoxConnectionHelper::componentsArrayForVariables(AssistantRules::assistantVariables(),
                                                                    prefs.get(), *routerSession, &m_failure);
    const ReadOutcome outcome =
        AssistantRules::assistantDataFromAnswer(answer, session.sessionResult, session.userRights, data);
    switch (outcome) {
    case ReadOutcome::MissingRights:
        m_error = Localization::localizedFormat(QStringLiteral("missingUserRightsAssistant"),
                                                QCoreApplication::applicationName());
        m_failure = RouterFailure::withText(RouterFailure::Kind::MissingRight,
                                            QStringLiteral("missingUserRightsAssistant"), m_error);
        qCWarning(lcAssistant) << "assistant: the user lacks the settings right";
        return outcome;
    case ReadOutcome::NotLoggedIn:
    case ReadOutcome::InvalidAnswer:
        m_error = Localization::localized(QStringLiteral("assistantErrorConfig"));
        qCWarning(lcAssistant) << "assistant: reading the router failed, session result"
                               << session.sessionResult;
        return outcome;
    case ReadOutcome::Ok:
        break;
    }

    if (data->readUsers && data->userSlots > 0) {
        QStringList names;
        for (int i = 0; i < data->userSlots; ++i)
            names += AssistantRules::userVariables(i);
        data->users = AssistantRules::usersFromAnswer(
            FBBoxConnectionHelper::componentsArrayForVariables(names, prefs.get(), *routerSession),
            data->userSlots);
    }
    // The new location starts with the router's own numbers.
    data->lines = FBBoxPhoneHelper::getLinesFromBoxAndMerge({}, prefs.get(), *routerSession);
    data->faxLines = FBBoxPhoneHelper::getFaxLinesFromBoxAndMerge({}, prefs.get(), *routerSession);
    const QVariantMap home = FBNetworkHelper::getHomeLocationForHost(data->host);
    data->broadcast = home.value(QStringLiteral("Broadcast")).toString();
    data->mac = home.value(QStringLiteral("MAC")).toString();
    return outcome;
}

#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include "box/RouterFailure.h"

#include <functional>
#include <memory>

class RouterSession;
class TNPreferences;

// What the router says about itself, and the WLAN and DECT switches.
namespace FBBoxSystemHelper {

// The five variables read for the status, in order.
QStringList statusVariables();
int getWLANStatus(const QStringList& values);
int getDECTStatus(const QStringList& values);
// The status expected right after the command word, before the router is asked again.
int expectedWLANStatus(int status, const QString& command);

// Reads WLAN and DECT state and the WLAN names into the session, posts WLANSTATUS and DECTSTATUS.
void threadcheckWLANStatus(TNPreferences* prefs, RouterSession& session, RouterFailure* failure = nullptr);
// Returns the command's answer (" " when not sent); its failure goes to *failure when given.
QString threadSetWLANStatus(TNPreferences* prefs, RouterSession& session, const QString& command,
                            RouterFailure* failure = nullptr);
QString threadSetDECTStatus(TNPreferences* prefs, RouterSession& session, const QString& command,
                            RouterFailure* failure = nullptr);

// Called on the worker thread with what went wrong.
using FailureHandler = std::function<void(const RouterFailure&)>;
// The switches on a thread of their own; settings and session are kept alive until they end.
void setWLANStatusInBackground(std::shared_ptr<TNPreferences> prefs, std::shared_ptr<RouterSession> session,
                               const QString& command, FailureHandler onFailure = {});
void setDECTStatusInBackground(std::shared_ptr<TNPreferences> prefs, std::shared_ptr<RouterSession> session,
                               const QString& command, FailureHandler onFailure = {});

QString languageFromLoginScreen(const QString& page);
QString requestBoxLanguageUsePreferences(TNPreferences* prefs, RouterSession& session);

QVariantMap parseConfigDef(const QString& page);
QVariantMap parseBoxInfo(const QString& page);
QVariantMap configDefinitionsForPreferences(TNPreferences* prefs, RouterSession& session);
QVariantMap configXMLDefinitionsForPreferences(TNPreferences* prefs, RouterSession& session);

QVariant boxusersForConfiguration(TNPreferences* prefs, RouterSession& session);
// "box_admin_rights", "dial_rights", "phone_rights", "nas_rights" of the user; empty when unknown.
QVariantMap rightsForUserInList(const QString& userName, const QVariant& userList);
QVariantMap rightsForUser(const QString& userName, TNPreferences* prefs, RouterSession& session);

} // namespace FBBoxSystemHelper

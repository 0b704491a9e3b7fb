#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>

class TNPreferences;

// What the router says about itself, and the WLAN and DECT switches.
namespace FBBoxSystemHelper {

// The five variables read for the status, in order.
QStringList statusVariables();
int getWLANStatus(const QStringList& values);
int getDECTStatus(const QStringList& values);
// The status expected right after the command word, before the router is asked again.
int expectedWLANStatus(int status, const QString& command);

// Reads WLAN and DECT state and the WLAN names into prefs, posts WLANSTATUS and DECTSTATUS.
void threadcheckWLANStatus(TNPreferences* prefs);
// Returns the command's answer (" " when not sent).
QString threadSetWLANStatus(TNPreferences* prefs, const QString& command);
QString threadSetDECTStatus(TNPreferences* prefs, const QString& command);
void getWLANStatusInBackground(TNPreferences* prefs = nullptr);
// The switches on a thread of their own; the settings object is kept alive until they end.
void setWLANStatusInBackground(std::shared_ptr<TNPreferences> prefs, const QString& command);
void setDECTStatusInBackground(std::shared_ptr<TNPreferences> prefs, const QString& command);

QString languageFromLoginScreen(const QString& page);
QString requestBoxLanguageUsePreferences(TNPreferences* prefs);
QString getboxLanguage();
void setboxLanguageUsePreferences(TNPreferences* prefs);

QVariantMap parseConfigDef(const QString& page);
QVariantMap parseBoxInfo(const QString& page);
QVariantMap configDefinitionsForPreferences(TNPreferences* prefs);
QVariantMap configXMLDefinitionsForPreferences(TNPreferences* prefs);

QVariant boxusersForConfiguration(TNPreferences* prefs);
// "box_admin_rights", "dial_rights", "phone_rights", "nas_rights" of the user; empty when unknown.
QVariantMap rightsForUserInList(const QString& userName, const QVariant& userList);
QVariantMap rightsForUser(const QString& userName, TNPreferences* prefs);

void checkNetworkEnvironmentForConfiguration(TNPreferences* prefs);

} // namespace FBBoxSystemHelper

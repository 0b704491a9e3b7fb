#pragma once

#include <QString>
#include <QVariant>

#include <vector>

// Every settings key is spelled once, here. The location table (LocationKeys.h) adds the
// per-location types and defaults.
namespace keys {

// Global keys.
inline const QString Locations = QStringLiteral("Locations");
inline const QString CurrentLocation = QStringLiteral("CurrentLocation");
inline const QString Profiles = QStringLiteral("Profiles");
inline const QString ActiveProfile = QStringLiteral("ActiveProfile"); // legacy, with "Profiles"
inline const QString ListAtStartup = QStringLiteral("ListAtStartup");
inline const QString ListAferCall = QStringLiteral("ListAferCall"); // spelled so on purpose
inline const QString DateFormatString = QStringLiteral("dateFormatString");
inline const QString MenuDockState = QStringLiteral("MENU_DOCK_STATE");
inline const QString HotkeyCodeNewCall = QStringLiteral("hotkeyCodeNewCall");
inline const QString ModifierFlagsNewCall = QStringLiteral("modifierFlagsNewCall");
inline const QString HotkeyCodeList = QStringLiteral("hotkeyCodeList");
inline const QString ModifierFlagsList = QStringLiteral("modifierFlagsList");
inline const QString ShowCallinglistOnStart = QStringLiteral("showCallinglistOnStart");
inline const QString AutoUpdateReverseSearch = QStringLiteral("autoUpdateReverseSearch");
inline const QString ShowTrafficMonitorInMenu = QStringLiteral("showTrafficMonitorInMenu");
inline const QString ShowTrafficMonitorWindow = QStringLiteral("showTrafficMonitorWindow");
inline const QString ShowTrafficMonitorMenuLabel = QStringLiteral("showTrafficMonitorMenuLabel");
inline const QString ShowTrafficMonitorMenuGraph = QStringLiteral("showTrafficMonitorMenuGraph");
inline const QString OutgoingCalls = QStringLiteral("OutgoingCalls");
inline const QString MonitorAlwaysOnTop = QStringLiteral("monitorAlwaysOnTop");
inline const QString MonitorOpenExternCalls = QStringLiteral("monitorOpenExternCalls");
inline const QString SelCLGrp = QStringLiteral("SelCLGrp");
inline const QString AddressBook = QStringLiteral("AddressBook");
inline const QString ReverseSearchCustom = QStringLiteral("ReverseSearchCustom");
inline const QString ReverseSearchUpdateInterval = QStringLiteral("reverseSearchUpdateInterval");
inline const QString UpdateDateReverseSearch = QStringLiteral("UpdateDateReverseSearch");
inline const QString Version = QStringLiteral("Version");
// Where the reverse-lookup definitions are downloaded from.
inline const QString ReverseSearchUpdateURL = QStringLiteral("ReverseSearchUpdateURL");
// The call list's sort: [column identifier, ascending 1/0].
inline const QString CallinglistSortOrdering = QStringLiteral("NSTableView Sort Ordering CallinglistTable");
// Journal import: age limit in days (0 keeps every call), web export, badge.
inline const QString ListDeleteInterval = QStringLiteral("ListDeleteInterval");
inline const QString IPhoneExportState = QStringLiteral("iPhoneExportState");
inline const QString IPhoneExportPath = QStringLiteral("iPhoneExportPath");
inline const QString IPhoneExportScript = QStringLiteral("iPhoneExportScript");
inline const QString BadgeNewCalls = QStringLiteral("badgeNewCalls");
inline const QString BadgeNewAbsentiaCalls = QStringLiteral("badgeNewAbsentiaCalls");

// Location keys.
inline const QString Profile = QStringLiteral("Profile");
inline const QString Name = QStringLiteral("Name");
inline const QString Host = QStringLiteral("Host");
inline const QString UserName = QStringLiteral("userName");
inline const QString Lines = QStringLiteral("Lines");
inline const QString CallMonitorFilter = QStringLiteral("CallMonitorFilter"); // legacy "Lines"
inline const QString Extensions = QStringLiteral("Extensions");
inline const QString Ports = QStringLiteral("Ports"); // legacy "Extensions"
inline const QString Prefixis = QStringLiteral("Prefixis");
inline const QString AppleScript = QStringLiteral("AppleScript");
inline const QString AppleScriptParams = QStringLiteral("AppleScriptParams");
inline const QString BoxLanguage = QStringLiteral("BoxLanguage");
inline const QString CallMonitor = QStringLiteral("CallMonitor");
inline const QString CallAutoClose = QStringLiteral("CallAutoClose");
inline const QString ConfirmDial = QStringLiteral("ConfirmDial");
inline const QString ShowCallOptions = QStringLiteral("showCallOptions");
inline const QString ShowGrowlMonitor = QStringLiteral("showGrowlMonitor");
inline const QString ShowUserNC = QStringLiteral("showUserNC");
inline const QString ReverseSearch = QStringLiteral("reverseSearch");
inline const QString HideOwnNumber = QStringLiteral("hideOwnNumber");
inline const QString CbcUse = QStringLiteral("cbcUse");
inline const QString Cbc = QStringLiteral("cbc");
inline const QString DefaultCallArt = QStringLiteral("DefaultCallArt");
inline const QString DefaultCallArtNewLocation = QStringLiteral("defaultCallArt"); // kept as found
inline const QString Dialport = QStringLiteral("dialport");
inline const QString ContactFormat = QStringLiteral("contactFormat");
inline const QString FaxHeader = QStringLiteral("FaxHeader");
inline const QString FaxID = QStringLiteral("FaxID");
inline const QString FaxLines = QStringLiteral("FaxLines");
inline const QString LoadVoicemails = QStringLiteral("LoadVoicemails");
inline const QString RemoteAccess = QStringLiteral("RemoteAccess");
inline const QString AutoRemoteAccess = QStringLiteral("AutoRemoteAccess");
inline const QString RemoteHost = QStringLiteral("RemoteHost");
inline const QString RemoteUser = QStringLiteral("RemoteUser");
inline const QString RemoteSSLPort = QStringLiteral("RemoteSSLPort");
inline const QString RemoteCertificateKey = QStringLiteral("RemoteCertificateKey");
inline const QString Broadcast = QStringLiteral("Broadcast");
inline const QString MAC = QStringLiteral("MAC");
inline const QString WakeOnLan = QStringLiteral("WakeOnLan");
inline const QString FTPUserName = QStringLiteral("FTPUserName");
inline const QString FTPSSL = QStringLiteral("FTPSSL");
inline const QString SaveDate = QStringLiteral("SaveDate");
inline const QString WebPort = QStringLiteral("WebPort");
inline const QString CallMonitorPort = QStringLiteral("CallMonitorPort");
inline const QString TR064Port = QStringLiteral("TR064Port");
inline const QString FTPPort = QStringLiteral("FTPPort");

// Password keys (keychain only, never in the settings file).
inline const QString Pass = QStringLiteral("Pass");
inline const QString RemotePass = QStringLiteral("RemotePass");
inline const QString FTPPass = QStringLiteral("FTPPass");

} // namespace keys

enum class SettingType { String, Bool, Int, Array, Dict, Date };

struct GlobalKeyDef
{
    QString key;
    SettingType type;
    QVariant missingValue; // what a reader takes when the key is absent
};

// The global keys with their types; readers outside the table use the `methods` helpers.
const std::vector<GlobalKeyDef>& globalKeyTable();
const GlobalKeyDef* findGlobalKey(const QString& key);

QString settingTypeName(SettingType type);
// Parses a command-line text into a value of the given type; an invalid QVariant on bad input.
QVariant parseSettingValue(SettingType type, const QString& text, QString* error);

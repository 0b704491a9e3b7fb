#pragma once

#include <QString>

// The names of the in-process notifications, exactly as posted and observed.
namespace Notifications {
inline const QString CALLMONITORSTATUS = QStringLiteral("CALLMONITORSTATUS");
inline const QString UPDATEEXTENSIONMENU = QStringLiteral("UPDATEEXTENSIONMENU");
inline const QString RELOADCURRENTCALLS = QStringLiteral("RELOADCURRENTCALLS");
inline const QString UPDATECALLMONITORDETAILS = QStringLiteral("UPDATECALLMONITORDETAILS");
inline const QString WLANSTATUS = QStringLiteral("WLANSTATUS");
inline const QString DECTSTATUS = QStringLiteral("DECTSTATUS");
inline const QString REFRESHLATESTCALLSMENU = QStringLiteral("REFRESHLATESTCALLSMENU");
inline const QString REFRESHLOCATIONSMENU = QStringLiteral("REFRESHLOCATIONSMENU");
inline const QString ACTIVATESETTINGS = QStringLiteral("ACTIVATESETTINGS");
inline const QString UPDATEABFAXLIST = QStringLiteral("UPDATEABFAXLIST");
inline const QString UPDATEABFAXLISTCLEAN = QStringLiteral("UPDATEABFAXLISTCLEAN");
inline const QString RELOADABFAXLIST = QStringLiteral("RELOADABFAXLIST");
inline const QString RELOADCALLINGLIST = QStringLiteral("RELOADCALLINGLIST");
inline const QString UPDATESIDETABLE = QStringLiteral("UPDATESIDETABLE");
inline const QString RELOADMEMOS = QStringLiteral("RELOADMEMOS");
inline const QString GETNEWCALLERLIST = QStringLiteral("GETNEWCALLERLIST");
inline const QString RELOADCOUNTER = QStringLiteral("RELOADCOUNTER");
inline const QString ADDSTATUSBAR = QStringLiteral("ADDSTATUSBAR");
inline const QString STOPFTPTRANSFER = QStringLiteral("STOPFTPTRANSFER");
inline const QString SSDPSEARCHCOMPLETED = QStringLiteral("SSDPSEARCHCOMPLETED");
inline const QString UPDATESAVEPROGRESS = QStringLiteral("UPDATESAVEPROGRESS");
inline const QString FINISHSAVING = QStringLiteral("FINISHSAVING");

// All of the above, for tables and tests.
const QStringList& all();
} // namespace Notifications

#include "base/NotificationNames.h"

#include <QStringList>

const QStringList& Notifications::all()
{
    static const QStringList names = {
        CALLMONITORSTATUS,
        UPDATEEXTENSIONMENU,
        RELOADCURRENTCALLS,
        UPDATECALLMONITORDETAILS,
        WLANSTATUS,
        DECTSTATUS,
        REFRESHLATESTCALLSMENU,
        REFRESHLOCATIONSMENU,
        ACTIVATESETTINGS,
        UPDATEABFAXLIST,
        UPDATEABFAXLISTCLEAN,
        RELOADABFAXLIST,
        RELOADCALLINGLIST,
        UPDATESIDETABLE,
        RELOADMEMOS,
        GETNEWCALLERLIST,
        RELOADCOUNTER,
        ADDSTATUSBAR,
        STOPFTPTRANSFER,
        SSDPSEARCHCOMPLETED,
        UPDATESAVEPROGRESS,
        FINISHSAVING,
    };
    return names;
}

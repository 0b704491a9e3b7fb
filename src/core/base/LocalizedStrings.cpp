#include "base/LocalizedStrings.h"

#include <QtGlobal>

namespace {
// QT_TRANSLATE_NOOP lets lupdate find the source texts; "//:" lines reach the translator.
const LocalizedString kStrings[] = {
    // Alerts and dialogs.
    {"Error", QT_TRANSLATE_NOOP("Tondrel", "Error")},
    {"unknown", QT_TRANSLATE_NOOP("Tondrel", "Unknown")},
    {"Yes", QT_TRANSLATE_NOOP("Tondrel", "Yes")},
    {"No", QT_TRANSLATE_NOOP("Tondrel", "No")},
    {"Cancel", QT_TRANSLATE_NOOP("Tondrel", "Cancel")},
    {"Location", QT_TRANSLATE_NOOP("Tondrel", "Location")},

    // Router login.
    {"errorWrongPass", QT_TRANSLATE_NOOP("Tondrel", "The password for the router is wrong.")},
    {"errorWrongPassEmptyRemote",
     QT_TRANSLATE_NOOP("Tondrel",
                       "No password is set for remote access. Enter it in the location's settings.")},
    {"errorWrongRemoteLogin",
     QT_TRANSLATE_NOOP(
         "Tondrel",
         "The router refused the remote access login. Check the user name and password for remote access.")},
    //: %1: block time in seconds, as the router sent it
    {"errorBlockTime",
     QT_TRANSLATE_NOOP("Tondrel", "After failed logins the router refuses further logins for %1 seconds.")},
    {"errorUnexpectedChallenge",
     QT_TRANSLATE_NOOP("Tondrel",
                       "The router asked for a login that Tondrel does not accept (unexpected challenge).")},
    {"missingUserRights",
     QT_TRANSLATE_NOOP(
         "Tondrel",
         "The router user lacks the right this action needs. Check the user's rights on the router.")},

    {"errorCertificateChanged",
     QT_TRANSLATE_NOOP("Tondrel",
                       "The router's certificate for remote access has changed. The connection was "
                       "refused; accept the new certificate in the location's settings if you trust it.")},
    //: %1: host and port
    {"errorBoxUnreachable", QT_TRANSLATE_NOOP("Tondrel", "The router cannot be reached at %1.")},

    // TR-064.
    {"errorTR064", QT_TRANSLATE_NOOP("Tondrel", "The router does not allow access for applications (TR-064). "
                                                "Turn it on in the router's home network settings.")},
    {"errorTR064_606",
     QT_TRANSLATE_NOOP("Tondrel",
                       "The router user is not allowed to perform this action (TR-064 error 606).")},
    //: %1: error code, %2: error description from the router
    {"errorTR064_ErrorCode", QT_TRANSLATE_NOOP("Tondrel", "The router reported TR-064 error %1: %2")},

    // Call notifications.
    {"incomingcall", QT_TRANSLATE_NOOP("Tondrel", "Incoming call")},
    {"outgoingcall", QT_TRANSLATE_NOOP("Tondrel", "Outgoing call")},
    {"answerheadset", QT_TRANSLATE_NOOP("Tondrel", "Please pick up the handset")},
    {"callfinished", QT_TRANSLATE_NOOP("Tondrel", "Call ended")},
    {"callabsentia", QT_TRANSLATE_NOOP("Tondrel", "Missed call")},
    {"callnotavailable", QT_TRANSLATE_NOOP("Tondrel", "No answer")},
    {"unknownnumber", QT_TRANSLATE_NOOP("Tondrel", "Number withheld")},
    {"unknowncaller", QT_TRANSLATE_NOOP("Tondrel", "Unknown caller")},
    {"callduration", QT_TRANSLATE_NOOP("Tondrel", "Duration:")},
    {"calltime", QT_TRANSLATE_NOOP("Tondrel", "Time:")},
    {"line", QT_TRANSLATE_NOOP("Tondrel", "Line:")},

    // Phone labels of address book entries.
    {"home", QT_TRANSLATE_NOOP("Tondrel", "Home")},
    {"work", QT_TRANSLATE_NOOP("Tondrel", "Work")},
    {"mobile", QT_TRANSLATE_NOOP("Tondrel", "Mobile")},
    {"main", QT_TRANSLATE_NOOP("Tondrel", "Main")},
    {"iPhone", QT_TRANSLATE_NOOP("Tondrel", "iPhone")},
    {"other", QT_TRANSLATE_NOOP("Tondrel", "Other")},
    {"fax", QT_TRANSLATE_NOOP("Tondrel", "Fax")},
    {"pager", QT_TRANSLATE_NOOP("Tondrel", "Pager")},

    // Contact name format.
    {"Firstname", QT_TRANSLATE_NOOP("Tondrel", "First name")},
    {"Firstname_Short", QT_TRANSLATE_NOOP("Tondrel", "First name initial")},
    {"Surname", QT_TRANSLATE_NOOP("Tondrel", "Last name")},
    {"Surname_Short", QT_TRANSLATE_NOOP("Tondrel", "Last name initial")},
    {"Company", QT_TRANSLATE_NOOP("Tondrel", "Company")},
    {"Label_Single", QT_TRANSLATE_NOOP("Tondrel", "One entry per number, with label")},
    {"Label_Short_Single", QT_TRANSLATE_NOOP("Tondrel", "One entry per number, with short label")},

    // Call list columns and export titles.
    {"title_date", QT_TRANSLATE_NOOP("Tondrel", "Date")},
    {"title_name", QT_TRANSLATE_NOOP("Tondrel", "Name")},
    {"title_number", QT_TRANSLATE_NOOP("Tondrel", "Number")},
    {"title_extension", QT_TRANSLATE_NOOP("Tondrel", "Extension")},
    {"title_line", QT_TRANSLATE_NOOP("Tondrel", "Line")},
    {"title_duration", QT_TRANSLATE_NOOP("Tondrel", "Duration")},
    {"title_label", QT_TRANSLATE_NOOP("Tondrel", "Label")},
    {"title_callstate", QT_TRANSLATE_NOOP("Tondrel", "Call type")},

    // Call list actions.
    {"CallNumber", QT_TRANSLATE_NOOP("Tondrel", "Call this number")},
    {"CopyNumber", QT_TRANSLATE_NOOP("Tondrel", "Copy number")},
    {"CopyCallDetails", QT_TRANSLATE_NOOP("Tondrel", "Copy call details")},
    {"noReverseMatch", QT_TRANSLATE_NOOP("Tondrel", "No name was found for this number.")},

    // Smart list rules.
    {"CallinPhoneList", QT_TRANSLATE_NOOP("Tondrel", "Incoming calls")},
    {"CalloutPhoneList", QT_TRANSLATE_NOOP("Tondrel", "Outgoing calls")},
    {"CallinfailedPhoneList", QT_TRANSLATE_NOOP("Tondrel", "Missed calls")},
    {"smart_new_call", QT_TRANSLATE_NOOP("Tondrel", "New calls")},
    {"smart_today", QT_TRANSLATE_NOOP("Tondrel", "Today")},
    {"smart_curr_month", QT_TRANSLATE_NOOP("Tondrel", "This month")},
    {"smart_curr_year", QT_TRANSLATE_NOOP("Tondrel", "This year")},
    {"smart_day", QT_TRANSLATE_NOOP("Tondrel", "Day of month")},
    {"smart_month", QT_TRANSLATE_NOOP("Tondrel", "Month")},
    {"smart_year", QT_TRANSLATE_NOOP("Tondrel", "Year")},
    {"smart_last_days", QT_TRANSLATE_NOOP("Tondrel", "In the last … days")},
    {"smart_days_ago", QT_TRANSLATE_NOOP("Tondrel", "Exactly … days ago")},
    {"smart_is", QT_TRANSLATE_NOOP("Tondrel", "is")},
    {"smart_is_not", QT_TRANSLATE_NOOP("Tondrel", "is not")},
    {"smart_contains", QT_TRANSLATE_NOOP("Tondrel", "contains")},
    {"smart_contains_not", QT_TRANSLATE_NOOP("Tondrel", "does not contain")},

    // Extensions.
    {"ISDNDevices", QT_TRANSLATE_NOOP("Tondrel", "ISDN devices")},

    // Menu bar.
    {"WLANoff", QT_TRANSLATE_NOOP("Tondrel", "Turn off Wi-Fi")},
    {"askWLANoff",
     QT_TRANSLATE_NOOP("Tondrel", "Do you really want to turn off the router's Wi-Fi? Devices that use it, "
                                  "this computer included, will lose their connection.")},

    // Traffic chart series.
    {"ds_internet", QT_TRANSLATE_NOOP("Tondrel", "Internet")},
    {"ds_tv", QT_TRANSLATE_NOOP("Tondrel", "TV")},
    {"us_realtime", QT_TRANSLATE_NOOP("Tondrel", "Real-time")},
    {"us_important", QT_TRANSLATE_NOOP("Tondrel", "Prioritised")},
    {"us_default", QT_TRANSLATE_NOOP("Tondrel", "Normal")},
    {"us_low", QT_TRANSLATE_NOOP("Tondrel", "Background")},

    // Voicemail and fax; FTP errors are followed by ": " and the FTP library's message.
    {"Voicemail / Fax", QT_TRANSLATE_NOOP("Tondrel", "Voicemail / Fax")},
    {"Home", QT_TRANSLATE_NOOP("Tondrel", "Home network")},
    {"Remote", QT_TRANSLATE_NOOP("Tondrel", "Remote access")},
    {"errorFTP_NO_DIR_FOUND",
     QT_TRANSLATE_NOOP("Tondrel", "No voicemail or fax folder was found on the router's storage.")},
    {"errorFTP_Login_Denied_Home",
     QT_TRANSLATE_NOOP("Tondrel", "Login to the router's storage refused (home network)")},
    {"errorFTP_Login_Denied_Remote",
     QT_TRANSLATE_NOOP("Tondrel", "Login to the router's storage refused (remote access)")},
    {"errorFTP_Login_Denied",
     QT_TRANSLATE_NOOP("Tondrel", "Wrong user name or password for the router's storage")},
    {"errorFTP_Connect_Home",
     QT_TRANSLATE_NOOP("Tondrel", "No connection to the router's storage (home network)")},
    {"errorFTP_Connect_Remote",
     QT_TRANSLATE_NOOP("Tondrel", "No connection to the router's storage (remote access)")},
    {"errorFTPSSL_Timeout",
     QT_TRANSLATE_NOOP("Tondrel", "The secure connection to the router's storage timed out")},

    // Setup assistant.
    //: %1: application name
    {"missingUserRightsAssistant",
     QT_TRANSLATE_NOOP(
         "Tondrel",
         "This router user has no right to change the router's settings. %1 needs a user with that right.")},
    {"assistantErrorConfig",
     QT_TRANSLATE_NOOP(
         "Tondrel",
         "The settings could not be read from the router. Check the address, user name and password.")},
    {"errorSaving", QT_TRANSLATE_NOOP("Tondrel", "The settings could not be saved.")},
    {"myfritzPassTitle", QT_TRANSLATE_NOOP("Tondrel", "MyFRITZ! password")},
    {"remotePassTitle", QT_TRANSLATE_NOOP("Tondrel", "Remote access password")},
    {"saveTitle", QT_TRANSLATE_NOOP("Tondrel", "Save settings")},
    {"Back", QT_TRANSLATE_NOOP("Tondrel", "Back")},
    {"next", QT_TRANSLATE_NOOP("Tondrel", "Next")},
    {"assistantHelp0", QT_TRANSLATE_NOOP("Tondrel", "Choose your router from the list of routers found on "
                                                    "the network, or enter its host name or address.")},
    {"assistantHelp1",
     QT_TRANSLATE_NOOP("Tondrel", "Enter the user name and password you log in to the router with. Leave the "
                                  "user name empty if the router asks only for a password.")},
    {"assistantHelp2", QT_TRANSLATE_NOOP("Tondrel", "The dialling settings and remote access data are read "
                                                    "from the router. Check them before you go on.")},
    {"assistantHelp3",
     QT_TRANSLATE_NOOP("Tondrel", "To reach the router from outside your home network, enter its internet "
                                  "address and the password for remote access.")},
    {"assistantHelp3_1",
     QT_TRANSLATE_NOOP("Tondrel", "Your router is registered with MyFRITZ! and can be reached through it "
                                  "from outside. Enter the password for remote access.")},
    {"assistantHelp4",
     QT_TRANSLATE_NOOP("Tondrel",
                       "Everything is ready. Save the settings to add the router as a new location.")},
};
} // namespace

std::span<const LocalizedString> localizedStrings()
{
    return kStrings;
}

#pragma once

#include <QString>
#include <QStringList>

// The tray application's command line: where its files are, and what it is asked to open (a
// URL, --new-call, --calllist, --voicemail), which a second start hands to the running one.
struct TrayArguments
{
    bool ok = true;
    int exitCode = 0;     // when !ok or for --help/--version
    bool exitNow = false; // --help, --version or an error: print message and exit
    QString message;      // the help or error text
    QString configDir;
    QString dataDir;
    QString secrets;      // "file" keeps passwords in secrets.json
    QStringList requests; // handed to TrayApplication::handleArguments

    static TrayArguments parse(const QStringList& arguments);
};

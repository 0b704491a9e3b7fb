#pragma once

#include "voicemail/TNFTPDatasource.h"
#include "voicemail/VBFTPConnection.h"

#include <QStringList>
#include <QVariantMap>

#include <string>
#include <vector>

class CliContext;

// What voicemail and fax commands share: a logged-in FTP session on the target location with
// the router's "FRITZ" folders found.
class FTPCommandSession
{
public:
    // Throws CliError(1, ...) with the alert text when the router's storage cannot be used.
    explicit FTPCommandSession(CliContext& ctx);

    CliContext& ctx;
    VBFTPConnection connection;
    TNFTPDatasource datasource;
    QStringList directories;
    QVariantList loadFlags;

    // 1-based position in list, or the item's file name; throws CliError(1, ...) when unknown.
    static int resolveId(const std::string& id, const QStringList& fileNames);
};

// The entry map prepared for JSON: dates as ISO text, plus the list id and group title.
QVariantMap jsonEntry(int id, const QString& header, QVariantMap entry);

// Writes data to path through a temporary file renamed into place.
void writeFileAtomically(const QString& path, const QByteArray& data);

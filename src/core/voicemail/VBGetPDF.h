#pragma once

#include "voicemail/VoicemailEntry.h"

#include <QString>

class VBFTPConnection;

// Fetches one received fax.
class VBGetPDF
{
public:
    explicit VBGetPDF(VBFTPConnection& connection) : m_connection(connection) {}

    // Downloads the fax into tempDir as "<name>.fax.pdf"; returns its path, or an empty string
    // with error set.
    QString getPDF(const FaxEntry& entry, const QString& tempDir, QString* error);

private:
    VBFTPConnection& m_connection;
};

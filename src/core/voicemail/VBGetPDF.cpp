#include "voicemail/VBGetPDF.h"

#include "voicemail/VBFTPConnection.h"

#include <QDir>
#include <QFileInfo>

QString VBGetPDF::getPDF(const FaxEntry& entry, const QString& tempDir, QString* error)
{
    const QString path =
        QDir(tempDir).filePath(QFileInfo(entry.fileName()).completeBaseName() + QStringLiteral(".fax.pdf"));
    if (!m_connection.downloadFile(entry.PATH, path)) {
        *error = m_connection.lastError().alertText();
        return {};
    }
    return path;
}

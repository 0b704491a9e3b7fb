#include "FTPCommandSupport.h"

#include "CliContext.h"

#include "app/AppEnvironment.h"
#include "app/ServiceAdapters.h"
#include "base/NotificationCenter.h"
#include "base/TNPreferences.h"

#include <QDateTime>
#include <QSaveFile>

FTPCommandSession::FTPCommandSession(CliContext& context)
    : ctx(context), connection(context.environment().notifications()),
      datasource(context.environment().notifications(), context.environment().voicemailMarkers(),
                 &context.environment().callerNames())
{
    auto prefs = ctx.targetLocation();
    loadFlags = prefs->loadVoicemails;
    if (!connection.connectUsePreferences(*prefs, datasource.newConnID()))
        throw CliError(1, connection.lastError().alertText());
    directories = datasource.loadFRITZDirectories(connection);
    if (directories.isEmpty())
        throw CliError(1, datasource.lastErrorText);
}

int FTPCommandSession::resolveId(const std::string& id, const QStringList& fileNames)
{
    const QString text = QString::fromStdString(id);
    bool isNumber = false;
    const int n = text.toInt(&isNumber);
    if (isNumber && n >= 1 && n <= fileNames.size())
        return n - 1;
    const qsizetype byName = fileNames.indexOf(text);
    if (byName >= 0)
        return int(byName);
    throw CliError(1, QStringLiteral("no entry '%1' (use the id or file name that list shows)").arg(text));
}

QVariantMap jsonEntry(int id, const QString& header, QVariantMap entry)
{
    const QDateTime stamp = entry.value(QStringLiteral("CallTimestamp")).toDateTime();
    entry.insert(QStringLiteral("CallTimestamp"),
                 stamp.isValid() ? QVariant(stamp.toString(Qt::ISODate)) : QVariant::fromValue(nullptr));
    entry.insert(QStringLiteral("id"), id);
    entry.insert(QStringLiteral("Header"), header);
    return entry;
}

void writeFileAtomically(const QString& path, const QByteArray& data)
{
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(data) != data.size() || !out.commit())
        throw CliError(1, QStringLiteral("%1: %2").arg(path, out.errorString()));
}

#include "calllist/CallListExport.h"

#include "base/Localization.h"
#include "base/Logging.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>

namespace CallListExport {

namespace {
constexpr int kWebExportLimit = 50;

QString dateText(TNCallinglist& calls, int profile, qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(calls.dateFormatForProfile(profile));
}

QString fieldValue(TNCallinglist& calls, const CallRow& c, const QString& field)
{
    if (field == u"date")
        return dateText(calls, c.profile, c.calldate);
    if (field == u"name")
        return c.name;
    if (field == u"number")
        return c.phonenumber;
    if (field == u"extension")
        return c.extension;
    if (field == u"line")
        return c.line;
    if (field == u"duration")
        return c.duration;
    if (field == u"label")
        return c.label;
    if (field == u"callstate")
        return QString::number(c.callstate);
    return {};
}
} // namespace

const QStringList& exportFieldNames()
{
    static const QStringList names = {QStringLiteral("date"),   QStringLiteral("name"),
                                      QStringLiteral("number"), QStringLiteral("extension"),
                                      QStringLiteral("line"),   QStringLiteral("duration"),
                                      QStringLiteral("label"),  QStringLiteral("callstate")};
    return names;
}

QString webExportText(TNCallinglist& calls, int profile, const QDateTime& now)
{
    const QList<CallRow> rows =
        calls.getCallerlistForProfile(profile, ListQuery::SelectorAll, QString(), QString(),
                                      QStringLiteral("date"), QStringLiteral("DESC"), kWebExportLimit);
    // Groups: 0 incoming, 1 outgoing, 2 missed, 3 all.
    QStringList groups[4];
    for (const CallRow& c : rows) {
        // Values go in as stored: the page's own script reads them.
        const QString record = QStringLiteral("{ date:\"%1\", name:\"%2\", number:\"%3\", extension:\"%4\", "
                                              "line:\"%5\", duration:\"%6\", state:\"%7\"}")
                                   .arg(dateText(calls, profile, c.calldate), c.name, c.phonenumber,
                                        c.extension, c.line, c.duration, QString::number(c.callstate));
        const int group = c.callstate == 1 ? 0 : c.callstate == 3 ? 1 : c.callstate == 2 ? 2 : -1;
        if (group >= 0)
            groups[group].append(record);
        groups[3].append(record);
    }
    QString text =
        QStringLiteral("var refreshData = \"%1\";\n").arg(now.toString(calls.dateFormatForProfile(profile)));
    text += QStringLiteral("var calldata = new Array();\n");
    for (int g = 0; g < 4; ++g)
        text += QStringLiteral("calldata[%1] = new Object();calldata[%1] = [%2];")
                    .arg(g)
                    .arg(groups[g].join(u", "));
    return text + u'\n';
}

bool writeWebExport(TNCallinglist& calls, int profile, const QString& filePath, const QDateTime& now,
                    QString* error)
{
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    file.write(webExportText(calls, profile, now).toUtf8());
    if (!file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

bool exportiPhoneCallerlistForProfile(TNCallinglist& calls, int profile, SettingsStore& settings,
                                      const QDateTime& now)
{
    const QString folder = settings.value(keys::IPhoneExportPath).toString();
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        qCInfo(lcCalllist) << "web export folder missing:" << folder;
        return false;
    }
    QString error;
    if (!writeWebExport(calls, profile, QDir(folder).filePath(QStringLiteral("data.js")), now, &error)) {
        qCWarning(lcCalllist) << "web export not written:" << error;
        return false;
    }
    const QString script = settings.value(keys::IPhoneExportScript).toString();
    if (!script.isEmpty() && !QProcess::startDetached(script, {}))
        qCWarning(lcCalllist) << "the web export script could not be started:" << script;
    return true;
}

QString exportCallsFromListForProfile(TNCallinglist& calls, int profile, int selector,
                                      const QStringList& fields, const QString& delimiter,
                                      const QString& enclosure)
{
    const QList<CallRow> rows = calls.getCallerlistForProfile(
        profile, selector, QString(), QString(), QStringLiteral("date"), QStringLiteral("ASC"), 0);
    auto line = [&](const auto& valueOf) {
        QStringList cells;
        for (const QString& field : fields)
            cells.append(enclosure + valueOf(field) + enclosure);
        return cells.join(delimiter) + u'\n';
    };
    QString text =
        line([](const QString& field) { return Localization::localized(QStringLiteral("title_") + field); });
    for (const CallRow& c : rows)
        text += line([&](const QString& field) { return fieldValue(calls, c, field); });
    return text;
}

} // namespace CallListExport

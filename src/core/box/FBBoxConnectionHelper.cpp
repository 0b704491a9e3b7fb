#include "box/FBBoxConnectionHelper.h"

#include "base/TNPreferences.h"
#include "box/TNAction.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace FBBoxConnectionHelper {

QString stringForQueryVariable(const QString& name, long index, bool useLUA)
{
    if (useLUA)
        return QStringLiteral("&%1=%1").arg(name);
    return QStringLiteral("&var:n[%1]=%2&var:n%1=%2").arg(index).arg(name);
}

QList<QueryChunk> queryChunks(const QStringList& names, bool useLUA)
{
    QList<QueryChunk> chunks;
    QueryChunk current;
    int n = 0;
    for (const QString& name : names) {
        current.query += stringForQueryVariable(name, n++, useLUA);
        current.names.append(name);
        // Keep each request below the router's 12000-character limit.
        if (current.query.size() + 550 >= 12001) {
            current.query += QStringLiteral("&var:cnt=%1").arg(n);
            chunks.append(current);
            current = {};
            n = 0;
        }
    }
    if (!current.query.isEmpty()) {
        current.query += QStringLiteral("&var:cnt=%1").arg(n);
        chunks.append(current);
    }
    return chunks;
}

QStringList componentsArrayForVariables(const QStringList& names, TNPreferences* prefs)
{
    if (!prefs || names.isEmpty())
        return {};
    const bool lua = prefs->useLUA;
    QStringList result;
    for (const QueryChunk& chunk : queryChunks(names, lua)) {
        const QString answer = dialWithAction(QStringLiteral("query"), chunk.query, QString(), prefs);
        // Each chunk's answer belongs to that chunk's names only.
        result += componentsArrayForResultString(answer, chunk.names, prefs);
    }
    return result;
}

QStringList componentsArrayForResultString(const QString& result, const QStringList& names, TNPreferences* prefs)
{
    QStringList values;
    if (prefs && prefs->useLUA) {
        const QJsonDocument doc = QJsonDocument::fromJson(result.toUtf8());
        if (!doc.isObject())
            return {};
        const QJsonObject object = doc.object();
        for (const QString& name : names)
            if (object.contains(name))
                values.append(object.value(name).toVariant().toString());
    } else {
        values = result.split(u'\n');
    }
    return isValidQueryResult(values, names.size()) ? values : QStringList();
}

bool isValidQueryResult(const QStringList& values, qsizetype nameCount)
{
    return values.size() >= nameCount && values.size() <= nameCount + 2;
}

bool validQueryResult(const QString& value)
{
    return value != u"er" && value != u"err" && value != u"no-emu";
}

QString dialWithAction(const QString& action, const QString& number, const QString& port, TNPreferences* prefs)
{
    TNAction command;
    const QString answer = command.dialWithAction(action, number, port, prefs);
    command.finish();
    return answer;
}

QString urlencode(const QString& text)
{
    // toPercentEncoding escapes everything but the unreserved characters, "?=&+" among them.
    return QString::fromLatin1(text.toLatin1().toPercentEncoding(QByteArray(), QByteArrayLiteral("?=&+")));
}

} // namespace FBBoxConnectionHelper

#include "box/FBBoxConnectionHelper.h"

#include "base/TNPreferences.h"
#include "box/RouterSession.h"
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

QStringList componentsArrayForVariables(const QStringList& names, TNPreferences* prefs,
                                        RouterSession& session, RouterFailure* failure)
{
    if (!prefs || names.isEmpty())
        return {};
    const auto lua = [&session] {
        QMutexLocker lock(&session.mutex());
        return session.useLUA;
    };
    const bool luaQuery = lua();
    QStringList result;
    for (const QueryChunk& chunk : queryChunks(names, luaQuery)) {
        const QString answer =
            dialWithAction(QStringLiteral("query"), chunk.query, QString(), prefs, session, failure);
        // Each chunk's answer belongs to that chunk's names only.
        result += componentsArrayForResultString(answer, chunk.names, lua());
    }
    return result;
}

QStringList componentsArrayForResultString(const QString& result, const QStringList& names, bool lua)
{
    QStringList values;
    if (lua) {
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

QString dialWithAction(const QString& action, const QString& number, const QString& port,
                       TNPreferences* prefs, RouterSession& session, RouterFailure* failure)
{
    TNAction command;
    const QString answer = command.dialWithAction(action, number, port, prefs, session);
    command.finish();
    if (failure)
        failure->merge(command.failure);
    return answer;
}

QString urlencode(const QString& text)
{
    // toPercentEncoding escapes everything but the unreserved characters, "?=&+" among them.
    return QString::fromLatin1(text.toLatin1().toPercentEncoding(QByteArray(), QByteArrayLiteral("?=&+")));
}

} // namespace FBBoxConnectionHelper

#include "calllist/MemoStore.h"

#include "calllist/CallDatabase.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace {

const QString kSelect = QStringLiteral("SELECT memos.rowid, memos.*, COALESCE( caller.name,  '' ) AS name, "
                                       "COALESCE( caller.abid,  '' ) AS abid, "
                                       "COALESCE( caller.label,  '' ) AS label FROM memos LEFT JOIN caller "
                                       "ON memos.phonenumber = caller.phonenumber ");

QList<Memo> memos(const QList<QVariantMap>& rows)
{
    QList<Memo> list;
    for (const QVariantMap& r : rows)
        list.append(Memo::fromRecord(r));
    return list;
}

} // namespace

Memo Memo::fromRecord(const QVariantMap& r)
{
    Memo m;
    m.rowid = r.value(QStringLiteral("rowid")).toLongLong();
    m.profile = r.value(QStringLiteral("profile")).toInt();
    m.phonenumber = r.value(QStringLiteral("phonenumber")).toString();
    m.calldate = r.value(QStringLiteral("calldate")).toLongLong();
    m.subject = r.value(QStringLiteral("subject")).toString();
    m.body = r.value(QStringLiteral("body")).toString();
    m.category = r.value(QStringLiteral("category")).toInt();
    m.name = r.value(QStringLiteral("name")).toString();
    m.abid = r.value(QStringLiteral("abid")).toString();
    m.label = r.value(QStringLiteral("label")).toString();
    return m;
}

QVariantMap Memo::toVariantMap() const
{
    return {{QStringLiteral("rowid"), rowid},
            {QStringLiteral("profile"), profile},
            {QStringLiteral("phonenumber"), phonenumber},
            {QStringLiteral("calldate"), calldate},
            {QStringLiteral("subject"), subject},
            {QStringLiteral("body"), body},
            {QStringLiteral("category"), category},
            {QStringLiteral("name"), name},
            {QStringLiteral("abid"), abid},
            {QStringLiteral("label"), label}};
}

QList<Memo> MemoStore::getMemosForProfile(int profile) const
{
    return memos(m_db.selectLogged(
        SqlFragment(kSelect + QStringLiteral("WHERE memos.profile = ? ORDER BY memos.calldate ASC"),
                    {profile}),
        "getMemosForProfile"));
}

std::optional<Memo> MemoStore::getDetailMemoWithID(qint64 id) const
{
    const auto rows = m_db.selectLogged(SqlFragment(kSelect + QStringLiteral("WHERE memos.rowid = ?"), {id}),
                                        "getDetailMemoWithID");
    if (rows.isEmpty())
        return std::nullopt;
    return Memo::fromRecord(rows.first());
}

std::optional<Memo> MemoStore::memoForCall(int profile, const QString& number, qint64 calldate) const
{
    const auto rows = m_db.selectLogged(
        SqlFragment(kSelect + QStringLiteral(
                                  "WHERE memos.profile = ? AND memos.phonenumber = ? AND memos.calldate = ? "
                                  "ORDER BY memos.rowid DESC LIMIT 1"),
                    {profile, number, calldate}),
        "memoForCall");
    if (rows.isEmpty())
        return std::nullopt;
    return Memo::fromRecord(rows.first());
}

qint64 MemoStore::setMemoForProfile(int profile, const QString& number, qint64 calldate,
                                    const QString& subject, const QString& body)
{
    auto db = m_db.open();
    if (!db)
        return 0;
    try {
        SQLite::Transaction tx(*db);
        CallDatabase::exec(
            *db, SqlFragment(QStringLiteral("INSERT INTO memos (profile, phonenumber, calldate, subject, "
                                            "body, category) VALUES (?, ?, ?, ?, ?, 0)"),
                             {profile, number, calldate, subject, body}));
        const qint64 id = CallDatabase::lastInsertRowid(*db);
        tx.commit();
        return id;
    } catch (const std::exception&) {
        return 0;
    }
}

bool MemoStore::updateMemoWithID(qint64 id, const QString& subject, const QString& body)
{
    if (!getDetailMemoWithID(id))
        return false;
    return m_db.execLogged(
        {SqlFragment(QStringLiteral("UPDATE memos SET subject = ?, body = ? WHERE rowid = ?"),
                     {subject, body, id})},
        "updateMemoWithID");
}

bool MemoStore::deleteMemoWithID(qint64 id)
{
    if (!getDetailMemoWithID(id))
        return false;
    return m_db.execLogged({SqlFragment(QStringLiteral("DELETE FROM memos WHERE rowid = ?"), {id})},
                           "deleteMemoWithID");
}

QList<Memo> MemoStore::searchMemosForProfile(int profile, const QString& text, const QString& column,
                                             const QString& sqlDateFormat) const
{
    SqlFragment sql(kSelect + QStringLiteral("WHERE memos.profile = ?"), {profile});
    const QString value = likeEscaped(text);
    const QString like = u' ' + likeContainsPiece();
    static const QList<std::pair<QString, QString>> columns = {
        {QStringLiteral("number"), QStringLiteral("memos.phonenumber")},
        {QStringLiteral("subject"), QStringLiteral("memos.subject")},
        {QStringLiteral("body"), QStringLiteral("memos.body")},
        {QStringLiteral("name"), QStringLiteral("caller.name")},
    };
    if (text.isEmpty()) {
        // nothing to filter
    } else if (column == u"date") {
        sql.add(QStringLiteral(" AND STRFTIME(?,memos.calldate,'unixepoch','localtime')") + like + u' ',
                {sqlDateFormat, value});
    } else if (!column.isEmpty()) {
        const auto it =
            std::find_if(columns.begin(), columns.end(), [&](const auto& c) { return c.first == column; });
        if (it == columns.end())
            return {};
        sql.add(QStringLiteral(" AND ") + it->second + like + u' ', {value});
    } else {
        sql.add(QStringLiteral(" AND ( memos.phonenumber") + like, {value});
        sql.add(QStringLiteral(" OR memos.subject") + like, {value});
        sql.add(QStringLiteral(" OR memos.body") + like, {value});
        sql.add(QStringLiteral(" OR caller.name") + like, {value});
        sql.add(QStringLiteral(" OR STRFTIME(?,memos.calldate,'unixepoch','localtime')") + like +
                    QStringLiteral(" ) "),
                {sqlDateFormat, value});
    }
    sql.add(QStringLiteral(" ORDER BY memos.calldate ASC"));
    return memos(m_db.selectLogged(sql, "searchMemosForProfile"));
}

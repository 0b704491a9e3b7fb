#include "calllist/CallDatabase.h"

#include "base/Logging.h"
#include "calllist/LocalTimeFunction.h"

#include <QDir>
#include <QFileInfo>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

QString likeEscaped(const QString& value)
{
    QString out(u'%');
    out.reserve(value.size() + 2);
    for (const QChar c : value) {
        if (c == u'\\' || c == u'%' || c == u'_')
            out += u'\\';
        out += c;
    }
    return out + u'%';
}

QString likeContainsPiece()
{
    return QStringLiteral("LIKE ? ESCAPE '\\'");
}

namespace {

void bindAll(SQLite::Statement& stmt, const QVariantList& args)
{
    int index = 1;
    for (const QVariant& v : args) {
        switch (v.typeId()) {
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Long:
        case QMetaType::Bool:
            stmt.bind(index, static_cast<int64_t>(v.toLongLong()));
            break;
        case QMetaType::Double:
            stmt.bind(index, v.toDouble());
            break;
        case QMetaType::UnknownType:
            stmt.bind(index);
            break;
        default:
            if (v.isNull() && v.typeId() != QMetaType::QString)
                stmt.bind(index);
            else
                stmt.bind(index, v.toString().toStdString());
        }
        ++index;
    }
}

QVariant columnValue(const SQLite::Column& col)
{
    switch (col.getType()) {
    case SQLITE_INTEGER:
        return QVariant::fromValue<qint64>(col.getInt64());
    case SQLITE_FLOAT:
        return col.getDouble();
    case SQLITE_NULL:
        return {};
    default:
        return QString::fromUtf8(static_cast<const char*>(col.getBlob()), col.getBytes());
    }
}

// The five tables of the first file format; IF NOT EXISTS keeps older files as they are.
const char* const kTables[] = {
    "CREATE TABLE IF NOT EXISTS callinglist (profile integer, callstate integer, calldate integer, "
    "phonenumber text, extension text, line text, duration text)",
    "CREATE TABLE IF NOT EXISTS caller (phonenumber text, name text, abid text, label text)",
    "CREATE TABLE IF NOT EXISTS memos (profile integer, phonenumber text, calldate date, subject text, body "
    "text, "
    "category integer)",
    "CREATE TABLE IF NOT EXISTS smartlist (profile integer, name text)",
    "CREATE TABLE IF NOT EXISTS smartconditions (sid integer, listcolumn integer, condition integer, "
    "condvalue text)",
};

} // namespace

CallDatabase::CallDatabase(QString path) : m_path(std::move(path)) {}

bool CallDatabase::fileExists() const
{
    return QFileInfo::exists(m_path);
}

std::unique_ptr<SQLite::Database> CallDatabase::open() const
{
    try {
        auto db = std::make_unique<SQLite::Database>(
            m_path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, BusyTimeoutMs);
        // WAL is a property of the file; synchronous is per connection and NORMAL is safe with WAL.
        db->exec("PRAGMA synchronous = NORMAL");
        LocalTimeFunction::registerOn(*db);
        return db;
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "Could not open db." << e.what();
        return nullptr;
    }
}

bool CallDatabase::initialize()
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    auto db = open();
    if (!db) {
        qCWarning(lcCalllist) << "Could not open db. init";
        return false;
    }
    try {
        db->exec("PRAGMA journal_mode = WAL");
        const int version = db->execAndGet("PRAGMA user_version").getInt();
        if (version < SchemaVersion) {
            SQLite::Transaction tx(*db);
            migrate(*db, version);
            db->exec("PRAGMA user_version = " + std::to_string(SchemaVersion));
            tx.commit();
        }
        return true;
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "Could not open db. init" << e.what();
        return false;
    }
}

void CallDatabase::migrate(SQLite::Database& db, int from)
{
    if (from < 1) {
        for (const char* table : kTables)
            db.exec(table);
        // The caller cache holds one name per number; older files may hold duplicates, the
        // first stored one wins as it did in lookups.
        db.exec("DELETE FROM caller WHERE rowid NOT IN (SELECT MIN(rowid) FROM caller GROUP BY phonenumber)");
        db.exec("CREATE UNIQUE INDEX IF NOT EXISTS caller_phonenumber ON caller (phonenumber)");
        db.exec("CREATE INDEX IF NOT EXISTS callinglist_profile_date ON callinglist (profile, calldate)");
        db.exec("CREATE INDEX IF NOT EXISTS callinglist_profile_state_date ON callinglist (profile, "
                "callstate, calldate)");
        db.exec("CREATE INDEX IF NOT EXISTS memos_profile_date ON memos (profile, calldate)");
        db.exec("CREATE INDEX IF NOT EXISTS smartlist_profile ON smartlist (profile)");
        db.exec("CREATE INDEX IF NOT EXISTS smartconditions_sid ON smartconditions (sid)");
    }
}

QList<QVariantMap> CallDatabase::select(SQLite::Database& db, const SqlFragment& sql)
{
    SQLite::Statement stmt(db, sql.text.toStdString());
    bindAll(stmt, sql.args);
    QList<QVariantMap> rows;
    const int columns = stmt.getColumnCount();
    QStringList names;
    for (int i = 0; i < columns; ++i)
        names.append(QString::fromUtf8(stmt.getColumnName(i)));
    while (stmt.executeStep()) {
        QVariantMap row;
        for (int i = 0; i < columns; ++i)
            row.insert(names[i], columnValue(stmt.getColumn(i)));
        rows.append(row);
    }
    return rows;
}

QVariant CallDatabase::scalar(SQLite::Database& db, const SqlFragment& sql)
{
    SQLite::Statement stmt(db, sql.text.toStdString());
    bindAll(stmt, sql.args);
    if (!stmt.executeStep())
        return {};
    return columnValue(stmt.getColumn(0));
}

int CallDatabase::exec(SQLite::Database& db, const SqlFragment& sql)
{
    SQLite::Statement stmt(db, sql.text.toStdString());
    bindAll(stmt, sql.args);
    return stmt.exec();
}

qint64 CallDatabase::lastInsertRowid(SQLite::Database& db)
{
    return db.getLastInsertRowid();
}

QList<QVariantMap> CallDatabase::selectLogged(const SqlFragment& sql, const char* what) const
{
    auto db = open();
    if (!db)
        return {};
    try {
        return select(*db, sql);
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << what << e.what();
        return {};
    }
}

CallDatabase::Table CallDatabase::selectTableLogged(const SqlFragment& sql, const char* what) const
{
    Table table;
    auto db = open();
    if (!db)
        return table;
    try {
        SQLite::Statement stmt(*db, sql.text.toStdString());
        bindAll(stmt, sql.args);
        const int columns = stmt.getColumnCount();
        for (int i = 0; i < columns; ++i)
            table.columns.append(QString::fromUtf8(stmt.getColumnName(i)));
        while (stmt.executeStep()) {
            QVariantList row;
            row.reserve(columns);
            for (int i = 0; i < columns; ++i)
                row.append(columnValue(stmt.getColumn(i)));
            table.rows.append(std::move(row));
        }
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << what << e.what();
        return {};
    }
    return table;
}

QVariant CallDatabase::scalarLogged(const SqlFragment& sql, const char* what) const
{
    auto db = open();
    if (!db)
        return {};
    try {
        return scalar(*db, sql);
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << what << e.what();
        return {};
    }
}

bool CallDatabase::execLogged(std::initializer_list<SqlFragment> statements, const char* what) const
{
    auto db = open();
    if (!db)
        return false;
    try {
        SQLite::Transaction tx(*db);
        for (const SqlFragment& sql : statements)
            exec(*db, sql);
        tx.commit();
        return true;
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << what << e.what();
        return false;
    }
}

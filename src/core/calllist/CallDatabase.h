#pragma once

#include "calllist/SqlFragment.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>

namespace SQLite {
class Database;
}

// The database file: opening a connection (WAL, busy wait), the schema and its migrations, and
// running bound statements. Every operation opens its own connection, so background imports and
// the main thread never share one.
class CallDatabase
{
public:
    static constexpr int SchemaVersion = 1;
    static constexpr int BusyTimeoutMs = 10000;

    explicit CallDatabase(QString path);

    const QString& path() const { return m_path; }
    bool fileExists() const;

    // Creates the folder, the tables and indexes, and migrates older files. False when the file
    // cannot be opened.
    bool initialize();

    // A new connection, or null (logged) when the file cannot be opened.
    std::unique_ptr<SQLite::Database> open() const;

    // Statement helpers; they throw SQLite::Exception on errors.
    static QList<QVariantMap> select(SQLite::Database& db, const SqlFragment& sql);
    static QVariant scalar(SQLite::Database& db, const SqlFragment& sql);
    static int exec(SQLite::Database& db, const SqlFragment& sql);
    static qint64 lastInsertRowid(SQLite::Database& db);

    // One connection per call, errors logged: the list, or empty when anything failed.
    QList<QVariantMap> selectLogged(const SqlFragment& sql, const char* what) const;
    // The same as rows of values in column order, cheaper for long lists.
    struct Table
    {
        QStringList columns;
        QList<QVariantList> rows;
    };
    Table selectTableLogged(const SqlFragment& sql, const char* what) const;
    QVariant scalarLogged(const SqlFragment& sql, const char* what) const;
    // Runs the statements in one transaction; false (logged) on failure, nothing is changed then.
    bool execLogged(std::initializer_list<SqlFragment> statements, const char* what) const;

private:
    void migrate(SQLite::Database& db, int from);

    QString m_path;
};

#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class CallDatabase;
namespace SQLite {
class Database;
class Transaction;
} // namespace SQLite

// A call as the journal import stores it.
struct NewCall
{
    int profile = 0;
    int callstate = 0;
    qint64 calldate = 0; // Unix time, seconds
    QString phonenumber;
    QString extension;
    QString line;
    QString duration; // h:mm
};

// Many inserts in one transaction on one connection, each row in its own savepoint so that a
// failing row is skipped alone. Nothing is stored unless commit() is called.
class CallBatch
{
public:
    explicit CallBatch(const CallDatabase& db);
    ~CallBatch();
    CallBatch(const CallBatch&) = delete;
    CallBatch& operator=(const CallBatch&) = delete;

    bool isOpen() const { return m_tx != nullptr; }
    // The new rowid, 0 when the row failed.
    qint64 insertCall(const NewCall& call);
    // Adds or replaces the cached name of a number.
    bool insertCaller(const QString& name, const QString& number, const QString& abid, const QString& label);
    // [abid, name, label] cached for the number (names added in this batch included), or empty.
    QStringList searchCaller(const QString& number);
    // Whether a call of the profile with that start and number is already stored.
    bool containsCall(int profile, qint64 calldate, const QString& number);
    bool commit();

    // The connection, for statements of the importer that share the transaction.
    SQLite::Database* connection() const { return m_db.get(); }

private:
    std::unique_ptr<SQLite::Database> m_db;
    std::unique_ptr<SQLite::Transaction> m_tx;
    struct Statements;
    std::unique_ptr<Statements> m_stmts;
};

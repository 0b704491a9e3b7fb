#include "calllist/CallBatch.h"

#include "base/Logging.h"
#include "calllist/CallDatabase.h"

#include <SQLiteCpp/SQLiteCpp.h>

struct CallBatch::Statements
{
    explicit Statements(SQLite::Database& db)
        : insertCall(db, "INSERT INTO callinglist (profile, callstate, calldate, phonenumber, extension, "
                         "line, duration) "
                         "VALUES (?, ?, ?, ?, ?, ?, ?)"),
          insertCaller(db,
                       "INSERT INTO caller (phonenumber, name, abid, label) VALUES (?, ?, ?, ?) "
                       "ON CONFLICT (phonenumber) DO UPDATE SET name = excluded.name, abid = excluded.abid, "
                       "label = excluded.label"),
          findCall(
              db,
              "SELECT rowid,calldate from callinglist WHERE profile = ? AND calldate = ? AND phonenumber = ? "
              "ORDER BY calldate DESC LIMIT 1"),
          findCaller(db, "SELECT name, abid, label FROM caller WHERE phonenumber = ? LIMIT 1"),
          savepoint(db, "SAVEPOINT callrow"), release(db, "RELEASE callrow"),
          rollback(db, "ROLLBACK TO callrow")
    {
    }
    SQLite::Statement insertCall, insertCaller, findCall, findCaller, savepoint, release, rollback;
};

namespace {
// tryReset: after a failed step, reset() would rethrow the old error.
void run(SQLite::Statement& stmt)
{
    stmt.tryReset();
    stmt.exec();
}
} // namespace

CallBatch::CallBatch(const CallDatabase& db) : m_db(db.open())
{
    if (!m_db)
        return;
    try {
        m_tx = std::make_unique<SQLite::Transaction>(*m_db);
        m_stmts = std::make_unique<Statements>(*m_db);
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "Could not open db." << e.what();
        m_stmts.reset();
        m_tx.reset();
    }
}

CallBatch::~CallBatch()
{
    m_stmts.reset(); // statements go before the transaction rolls back
    m_tx.reset();
}

qint64 CallBatch::insertCall(const NewCall& c)
{
    if (!m_stmts)
        return 0;
    auto& s = *m_stmts;
    try {
        run(s.savepoint);
        s.insertCall.tryReset();
        s.insertCall.bind(1, c.profile);
        s.insertCall.bind(2, c.callstate);
        s.insertCall.bind(3, static_cast<int64_t>(c.calldate));
        s.insertCall.bind(4, c.phonenumber.toStdString());
        s.insertCall.bind(5, c.extension.toStdString());
        s.insertCall.bind(6, c.line.toStdString());
        s.insertCall.bind(7, c.duration.toStdString());
        s.insertCall.exec();
        const qint64 rowid = m_db->getLastInsertRowid();
        run(s.release);
        return rowid;
    } catch (const std::exception& e) {
        qCDebug(lcCalllist) << "skipping a call that could not be stored:" << e.what();
        s.insertCall.tryReset();
        try {
            run(s.rollback);
            run(s.release);
        } catch (const std::exception&) {
        }
        return 0;
    }
}

bool CallBatch::insertCaller(const QString& name, const QString& number, const QString& abid,
                             const QString& label)
{
    if (!m_stmts)
        return false;
    auto& s = *m_stmts;
    try {
        s.insertCaller.tryReset();
        s.insertCaller.bind(1, number.toStdString());
        s.insertCaller.bind(2, name.toStdString());
        s.insertCaller.bind(3, abid.toStdString());
        s.insertCaller.bind(4, label.toStdString());
        s.insertCaller.exec();
        return true;
    } catch (const std::exception& e) {
        qCDebug(lcCalllist) << "insertCaller" << e.what();
        return false;
    }
}

QStringList CallBatch::searchCaller(const QString& number)
{
    if (!m_stmts)
        return {};
    auto& s = *m_stmts;
    try {
        s.findCaller.tryReset();
        s.findCaller.bind(1, number.toStdString());
        if (!s.findCaller.executeStep())
            return {};
        return {QString::fromStdString(s.findCaller.getColumn(1).getString()),
                QString::fromStdString(s.findCaller.getColumn(0).getString()),
                QString::fromStdString(s.findCaller.getColumn(2).getString())};
    } catch (const std::exception& e) {
        qCDebug(lcCalllist) << "searchCaller" << e.what();
        return {};
    }
}

bool CallBatch::containsCall(int profile, qint64 calldate, const QString& number)
{
    if (!m_stmts)
        return false;
    auto& s = *m_stmts;
    try {
        s.findCall.tryReset();
        s.findCall.bind(1, profile);
        s.findCall.bind(2, static_cast<int64_t>(calldate));
        s.findCall.bind(3, number.toStdString());
        return s.findCall.executeStep();
    } catch (const std::exception& e) {
        qCDebug(lcCalllist) << "containsCall" << e.what();
        return false;
    }
}

bool CallBatch::commit()
{
    if (!m_tx)
        return false;
    try {
        m_stmts.reset();
        m_tx->commit();
        m_tx.reset();
        return true;
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "commit" << e.what();
        return false;
    }
}

#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

#include <optional>

class CallDatabase;

// A memo with its caller's cached name (empty strings when unknown).
struct Memo
{
    qint64 rowid = 0;
    int profile = 0;
    QString phonenumber;
    qint64 calldate = 0;
    QString subject;
    QString body;
    int category = 0;
    QString name;
    QString abid;
    QString label;

    static Memo fromRecord(const QVariantMap& record);
    QVariantMap toVariantMap() const; // keyed by the column names
};

// Notes on calls, listed oldest call first.
class MemoStore
{
public:
    explicit MemoStore(const CallDatabase& db) : m_db(db) {}

    QList<Memo> getMemosForProfile(int profile) const;
    std::optional<Memo> getDetailMemoWithID(qint64 id) const;
    // The newest memo written about one call (number and call date) of a profile.
    std::optional<Memo> memoForCall(int profile, const QString& number, qint64 calldate) const;
    // The new memo's rowid, 0 on failure.
    qint64 setMemoForProfile(int profile, const QString& number, qint64 calldate, const QString& subject,
                             const QString& body);
    bool updateMemoWithID(qint64 id, const QString& subject, const QString& body);
    bool deleteMemoWithID(qint64 id);
    // column: "number", "subject", "body", "name" or "date"; empty searches them all.
    QList<Memo> searchMemosForProfile(int profile, const QString& text, const QString& column,
                                      const QString& sqlDateFormat) const;

private:
    const CallDatabase& m_db;
};

#pragma once

#include "calllist/CallRow.h"

#include <QAbstractTableModel>
#include <QIcon>

class TNCallinglist;

// The calls of one list of the active profile as the table shows them: a header row before the
// first call of each day (with that day's count), then the calls. Rows come from the call
// database a page at a time (the view asks for more as it scrolls), or, for the calls in
// progress, from a list handed in.
class CallListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { State, Date, Name, Number, Extension, Line, Duration, ColumnCount };
    enum Role {
        DayHeaderRole = Qt::UserRole + 1, // bool
        DayCountRole,                     // int, header rows
        RowidRole,                        // qint64, 0 for calls not stored
        NumberRole,                       // the raw number ("" when withheld)
        ContactRole,                      // QStringList [abid, name, label]
        CallStateRole,                    // 1 incoming, 2 missed, 3 outgoing
        CallDateRole,                     // Unix time
    };

    struct Query
    {
        int profile = 0;
        int selector = 0;
        QString search;
        QString searchColumn; // "" searches all columns
    };

    explicit CallListModel(TNCallinglist& calls, QObject* parent = nullptr);

    // The sort identifiers of the columns, in column order ("callstateimg", "date", ...).
    static const QStringList& columnIdentifiers();
    static int columnForIdentifier(const QString& identifier); // -1 when unknown
    static QIcon stateIcon(int callstate);
    static QString stateText(int callstate);

    // Loads the first page of a list from the database.
    void setQuery(const Query& query);
    const Query& query() const { return m_query; }
    // Reads the list again, as far as it had been read.
    void reload();
    // Shows the given calls instead of the database (the calls in progress).
    void showCalls(int profile, const QList<CallRow>& calls);
    bool showsDatabase() const { return m_fromDatabase; }

    void setPageSize(int calls) { m_pageSize = calls > 0 ? calls : 1; }
    int pageSize() const { return m_pageSize; }
    // Calls (not headers) read so far.
    int callCount() const { return m_callCount; }
    const CallListEntry* entryAt(int row) const;
    // Date, name, number, extension, line and duration of a call row, one per line.
    QString callDetails(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Stores the choice as the list's sort and reads the list in that order.
    void sort(int column, Qt::SortOrder order) override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

signals:
    void loaded();

private:
    QList<CallListEntry> readDatabase(int limit) const;
    void replaceEntries(QList<CallListEntry> entries);
    void sortFixedCalls();
    QVariant callData(const CallListEntry& entry, int column, int role) const;

    TNCallinglist& m_calls;
    Query m_query;
    bool m_fromDatabase = true;
    QList<CallRow> m_fixedCalls;
    QList<CallListEntry> m_entries;
    int m_pageSize = 1000;
    int m_limit = 1000;
    int m_callCount = 0;
    bool m_more = false;
};

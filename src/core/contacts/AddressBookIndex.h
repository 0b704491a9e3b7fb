#pragma once

#include "base/NumberForms.h"
#include "contacts/AddressBook.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <memory>
#include <mutex>

// The book's phone entries normalised once per snapshot and dialling context, so that a lookup
// costs a few hash probes instead of a pass over every entry. The matching rules stay those of a
// pass in book order: each table keeps the first entry (lowest position) for a value. The single
// and the batch parts are made on first use, each only when asked for.
class AddressBookIndex
{
public:
    struct Entry
    {
        int person;
        int phone;
    };

    AddressBookIndex(std::shared_ptr<const AddressBookSnapshot> snapshot, const Prefixis& prefixis);

    // The index for this snapshot and context, made on first use and kept while it is current.
    static std::shared_ptr<const AddressBookIndex>
    forSnapshot(std::shared_ptr<const AddressBookSnapshot> snapshot, const Prefixis& prefixis);

    const AddressBookSnapshot& snapshot() const { return *m_snapshot; }
    const QVector<Entry>& entries() const { return m_entries; }

    // Single lookup: position of the first entry whose first or second form equals a or b; -1.
    int firstSingleMatch(const QString& a, const QString& b) const;

    // Batch forms per entry, in entry order: digits only with the country folded, and the form
    // with the own area removed (empty when it is the same).
    const QVector<QString>& batchFirst() const;
    const QVector<QString>& batchSecond() const;

private:
    struct Context
    {
        QString international, country, area, internationalCountry, trunkArea;
    };
    static QString singleFirstForm(const QString& value, const Context& c);
    static QString batchFirstForm(const QString& value, const Context& c);
    static QString areaStripped(QString value, const Context& c);
    const QString& valueAt(int position) const;
    void buildSingle() const;
    void buildBatch() const;

    std::shared_ptr<const AddressBookSnapshot> m_snapshot;
    Context m_context;
    QVector<Entry> m_entries;
    mutable std::once_flag m_singleOnce;
    mutable std::once_flag m_batchOnce;
    mutable QHash<QString, int> m_singleFirst;
    mutable QHash<QString, int> m_singleSecond;
    mutable QVector<QString> m_batchFirst;
    mutable QVector<QString> m_batchSecond;
};

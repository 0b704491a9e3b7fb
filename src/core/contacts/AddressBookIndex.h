#pragma once

#include "contacts/AddressBook.h"
#include "contacts/NumberForms.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <memory>

// The book's phone entries normalised once per snapshot and dialling context, so that a lookup
// costs a few hash probes instead of a pass over every entry. The matching rules stay those of a
// pass in book order: each table keeps the first entry (lowest position) for a value.
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
    const QVector<QString>& batchFirst() const { return m_batchFirst; }
    const QVector<QString>& batchSecond() const { return m_batchSecond; }

    // The single lookup's two forms of one entry value.
    static QString singleFirstForm(const QString& value, const Prefixis& p);
    static QString areaStripped(const QString& value, const Prefixis& p);
    static QString batchFirstForm(const QString& value, const Prefixis& p);

private:
    std::shared_ptr<const AddressBookSnapshot> m_snapshot;
    QVector<Entry> m_entries;
    QHash<QString, int> m_singleFirst;
    QHash<QString, int> m_singleSecond;
    QVector<QString> m_batchFirst;
    QVector<QString> m_batchSecond;
};

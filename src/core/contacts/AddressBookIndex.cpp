#include "contacts/AddressBookIndex.h"

#include "contacts/StringAdditions.h"

#include <QMutex>

AddressBookIndex::AddressBookIndex(std::shared_ptr<const AddressBookSnapshot> snapshot, const Prefixis& p)
    : m_snapshot(std::move(snapshot))
{
    const auto& people = m_snapshot->people;
    for (int i = 0; i < people.size(); ++i)
        for (int j = 0; j < people.at(i).phones.size(); ++j)
            m_entries.append({i, j});
    const int count = int(m_entries.size());
    m_singleFirst.reserve(count);
    m_singleSecond.reserve(count);
    m_batchFirst.resize(count);
    m_batchSecond.resize(count);
    // Backwards, so that the entry left in a table for a value is the first in book order.
    for (int position = count - 1; position >= 0; --position) {
        const QString& value =
            people.at(m_entries.at(position).person).phones.at(m_entries.at(position).phone).value;
        const QString first = singleFirstForm(value, p);
        QString second = areaStripped(first, p);
        if (second != first)
            m_singleSecond.insert(std::move(second), position);
        m_singleFirst.insert(first, position);
        QString batch = batchFirstForm(value, p);
        QString batchArea = areaStripped(batch, p);
        if (batchArea != batch)
            m_batchSecond[position] = std::move(batchArea);
        m_batchFirst[position] = std::move(batch);
    }
}

QString AddressBookIndex::singleFirstForm(const QString& value, const Prefixis& p)
{
    QString v = SearchingAdditions::stringByReplacingCharactersInSet(value, u"()./- ", QString());
    if (!v.isEmpty() && v.at(0) == u'+')
        v = p.international + v.mid(1);
    return methods::removePrefixWhenLongEnough(v, p.internationalCountry());
}

// P2P3 removed at the start when long enough, and only then P3 as well.
QString AddressBookIndex::areaStripped(const QString& value, const Prefixis& p)
{
    const QString p2p3 = p.trunkArea();
    if (value.size() < p2p3.size())
        return value;
    return methods::removePrefixWhenLongEnough(methods::removePrefixWhenLongEnough(value, p2p3), p.area);
}

QString AddressBookIndex::batchFirstForm(const QString& value, const Prefixis& p)
{
    QString v;
    v.reserve(value.size());
    for (const QChar c : value)
        if (c >= u'0' && c <= u'9')
            v += c;
    v = methods::removePrefixWhenLongEnough(v, p.internationalCountry());
    return methods::removePrefixWhenLongEnough(v, p.country);
}

int AddressBookIndex::firstSingleMatch(const QString& a, const QString& b) const
{
    int best = -1;
    const auto consider = [&best](const QHash<QString, int>& table, const QString& key) {
        const auto it = table.constFind(key);
        if (it != table.constEnd() && (best < 0 || *it < best))
            best = *it;
    };
    consider(m_singleFirst, a);
    consider(m_singleFirst, b);
    consider(m_singleSecond, a);
    consider(m_singleSecond, b);
    return best;
}

std::shared_ptr<const AddressBookIndex>
AddressBookIndex::forSnapshot(std::shared_ptr<const AddressBookSnapshot> snapshot, const Prefixis& prefixis)
{
    // One index is enough: the snapshot changes only when the files do, the context only when
    // the location does.
    static QMutex mutex;
    static std::weak_ptr<const AddressBookSnapshot> cachedSnapshot;
    static QStringList cachedContext;
    static std::shared_ptr<const AddressBookIndex> cached;
    QMutexLocker lock(&mutex);
    if (cached && cachedSnapshot.lock() == snapshot && cachedContext == prefixis.toList())
        return cached;
    cached = std::make_shared<AddressBookIndex>(snapshot, prefixis);
    cachedSnapshot = snapshot;
    cachedContext = prefixis.toList();
    return cached;
}

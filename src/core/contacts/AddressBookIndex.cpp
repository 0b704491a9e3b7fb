#include "contacts/AddressBookIndex.h"

#include <QMutex>

namespace {
bool isSeparator(QChar c)
{
    return c == u'(' || c == u')' || c == u'.' || c == u'/' || c == u'-' || c == u' ';
}

void removeLeading(QString& text, const QString& prefix)
{
    if (!prefix.isEmpty() && text.startsWith(prefix))
        text.remove(0, prefix.size());
}
} // namespace

AddressBookIndex::AddressBookIndex(std::shared_ptr<const AddressBookSnapshot> snapshot, const Prefixis& p)
    : m_snapshot(std::move(snapshot)), m_context{p.international, p.country, p.area, p.internationalCountry(),
                                                 p.trunkArea()}
{
    const auto& people = m_snapshot->people;
    for (int i = 0; i < people.size(); ++i)
        for (int j = 0; j < people.at(i).phones.size(); ++j)
            m_entries.append({i, j});
}

const QString& AddressBookIndex::valueAt(int position) const
{
    const Entry& e = m_entries.at(position);
    return m_snapshot->people.at(e.person).phones.at(e.phone).value;
}

// Separators removed, a leading "+" made P0, P0P1 at the start removed: in one pass.
QString AddressBookIndex::singleFirstForm(const QString& value, const Context& c)
{
    QString v;
    v.reserve(value.size() + c.international.size());
    bool firstKept = true;
    for (const QChar ch : value) {
        if (isSeparator(ch))
            continue;
        if (firstKept && ch == u'+')
            v += c.international;
        else
            v += ch;
        firstKept = false;
    }
    removeLeading(v, c.internationalCountry);
    return v;
}

// Digits only, then P0P1 and P1 removed at the start.
QString AddressBookIndex::batchFirstForm(const QString& value, const Context& c)
{
    QString v;
    v.reserve(value.size());
    for (const QChar ch : value)
        if (ch >= u'0' && ch <= u'9')
            v += ch;
    removeLeading(v, c.internationalCountry);
    removeLeading(v, c.country);
    return v;
}

// P2P3 removed at the start when long enough, and only then P3 as well.
QString AddressBookIndex::areaStripped(QString value, const Context& c)
{
    if (value.size() < c.trunkArea.size())
        return value;
    removeLeading(value, c.trunkArea);
    removeLeading(value, c.area);
    return value;
}

void AddressBookIndex::buildSingle() const
{
    const int count = int(m_entries.size());
    m_singleFirst.reserve(count);
    m_singleSecond.reserve(count);
    // Backwards, so that the entry left in a table for a value is the first in book order.
    for (int position = count - 1; position >= 0; --position) {
        QString first = singleFirstForm(valueAt(position), m_context);
        QString second = areaStripped(first, m_context);
        if (second != first)
            m_singleSecond.insert(std::move(second), position);
        m_singleFirst.insert(std::move(first), position);
    }
}

void AddressBookIndex::buildBatch() const
{
    const int count = int(m_entries.size());
    m_batchFirst.resize(count);
    m_batchSecond.resize(count);
    for (int position = 0; position < count; ++position) {
        QString batch = batchFirstForm(valueAt(position), m_context);
        QString batchArea = areaStripped(batch, m_context);
        if (batchArea != batch)
            m_batchSecond[position] = std::move(batchArea);
        m_batchFirst[position] = std::move(batch);
    }
}

const QVector<QString>& AddressBookIndex::batchFirst() const
{
    std::call_once(m_batchOnce, [this] { buildBatch(); });
    return m_batchFirst;
}

const QVector<QString>& AddressBookIndex::batchSecond() const
{
    std::call_once(m_batchOnce, [this] { buildBatch(); });
    return m_batchSecond;
}

int AddressBookIndex::firstSingleMatch(const QString& a, const QString& b) const
{
    std::call_once(m_singleOnce, [this] { buildSingle(); });
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

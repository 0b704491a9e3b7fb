#include "CallListModel.h"

#include "calllist/TNCallinglist.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

#include <algorithm>

namespace {
int countCalls(const QList<CallListEntry>& entries)
{
    return int(
        std::count_if(entries.begin(), entries.end(), [](const CallListEntry& e) { return !e.isDayHeader; }));
}

QString directionText(bool ascending)
{
    return ascending ? QStringLiteral("ASC") : QStringLiteral("DESC");
}
} // namespace

CallListModel::CallListModel(TNCallinglist& calls, QObject* parent)
    : QAbstractTableModel(parent), m_calls(calls)
{
}

const QStringList& CallListModel::columnIdentifiers()
{
    static const QStringList ids = {QStringLiteral("callstateimg"), QStringLiteral("date"),
                                    QStringLiteral("name"),         QStringLiteral("number"),
                                    QStringLiteral("extension"),    QStringLiteral("line"),
                                    QStringLiteral("duration")};
    return ids;
}

int CallListModel::columnForIdentifier(const QString& identifier)
{
    return int(columnIdentifiers().indexOf(identifier));
}

QIcon CallListModel::stateIcon(int callstate)
{
    switch (callstate) {
    case 1:
        return QIcon(QStringLiteral(":/icons/call-incoming.svg"));
    case 2:
        return QIcon(QStringLiteral(":/icons/call-missed.svg"));
    case 3:
        return QIcon(QStringLiteral(":/icons/call-outgoing.svg"));
    default:
        return {};
    }
}

QString CallListModel::stateText(int callstate)
{
    switch (callstate) {
    case 1:
        return tr("Incoming");
    case 2:
        return tr("Missed");
    case 3:
        return tr("Outgoing");
    default:
        return QString();
    }
}

void CallListModel::setQuery(const Query& query)
{
    m_query = query;
    m_fromDatabase = true;
    m_fixedCalls.clear();
    m_limit = m_pageSize;
    replaceEntries(readDatabase(m_limit));
}

void CallListModel::reload()
{
    if (!m_fromDatabase) {
        sortFixedCalls();
        replaceEntries(buildCallListEntries(m_fixedCalls, m_calls.dateFormatForProfile(m_query.profile),
                                            dayHeaderFormat()));
        return;
    }
    replaceEntries(readDatabase(std::max(m_limit, m_pageSize)));
}

void CallListModel::showCalls(int profile, const QList<CallRow>& calls)
{
    m_query.profile = profile;
    m_fromDatabase = false;
    m_fixedCalls = calls;
    reload();
}

QList<CallListEntry> CallListModel::readDatabase(int limit) const
{
    const auto [column, ascending] = m_calls.sortDescriptor();
    return m_calls.callListEntriesForProfile(m_query.profile, m_query.selector, m_query.search,
                                             m_query.searchColumn, column, directionText(ascending), limit);
}

void CallListModel::replaceEntries(QList<CallListEntry> entries)
{
    beginResetModel();
    m_entries = std::move(entries);
    m_callCount = countCalls(m_entries);
    // A full page means there may be more behind it.
    m_more = m_fromDatabase && m_callCount >= m_limit;
    endResetModel();
    emit loaded();
}

bool CallListModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && m_more;
}

void CallListModel::fetchMore(const QModelIndex& parent)
{
    if (parent.isValid() || !m_more)
        return;
    const int oldCalls = m_callCount;
    m_limit = oldCalls + m_pageSize;
    // The longer read repeats the rows already shown (the order is total), so only the tail is
    // new; the last day shown may have grown.
    QList<CallListEntry> entries = readDatabase(m_limit);
    const qsizetype oldRows = m_entries.size();
    auto sameCall = [](const CallListEntry& a, const CallListEntry& b) {
        return a.isDayHeader == b.isDayHeader &&
               (a.isDayHeader ? a.dayText == b.dayText : a.call.rowid == b.call.rowid);
    };
    if (entries.size() < oldRows ||
        (oldRows > 0 && !sameCall(entries[oldRows - 1], m_entries[oldRows - 1]))) {
        replaceEntries(std::move(entries)); // the list changed underneath
        return;
    }
    const int newCalls = countCalls(entries);
    m_more = newCalls >= m_limit;
    if (entries.size() > oldRows) {
        beginInsertRows({}, int(oldRows), int(entries.size() - 1));
        for (qsizetype i = oldRows; i < entries.size(); ++i)
            m_entries.append(entries[i]);
        m_callCount = newCalls;
        endInsertRows();
    }
    for (qsizetype i = oldRows - 1; i >= 0; --i) {
        if (!m_entries[i].isDayHeader)
            continue;
        if (m_entries[i].dayCount != entries[i].dayCount) {
            m_entries[i].dayCount = entries[i].dayCount;
            emit dataChanged(index(int(i), 0), index(int(i), ColumnCount - 1));
        }
        break;
    }
    emit loaded();
}

void CallListModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= ColumnCount)
        return;
    const bool ascending = order == Qt::AscendingOrder;
    // Turning sorting on in the view repeats the stored choice: nothing to read again then.
    if (m_calls.sortDescriptor() == std::pair{columnIdentifiers()[column], ascending})
        return;
    m_calls.setSortDescriptor(columnIdentifiers()[column], ascending);
    reload();
}

void CallListModel::sortFixedCalls()
{
    const auto [identifier, ascending] = m_calls.sortDescriptor();
    const int column = columnForIdentifier(identifier);
    auto key = [column](const CallRow& r) -> QVariant {
        switch (column) {
        case State:
            return r.callstate;
        case Name:
            return r.name;
        case Number:
            return r.phonenumber;
        case Extension:
            return r.extension;
        case Line:
            return r.line;
        case Duration:
            return r.duration;
        default:
            return r.calldate;
        }
    };
    std::stable_sort(m_fixedCalls.begin(), m_fixedCalls.end(), [&](const CallRow& a, const CallRow& b) {
        const QPartialOrdering order = QVariant::compare(key(a), key(b));
        return ascending ? order == QPartialOrdering::Less : order == QPartialOrdering::Greater;
    });
}

const CallListEntry* CallListModel::entryAt(int row) const
{
    return row >= 0 && row < m_entries.size() ? &m_entries[row] : nullptr;
}

QString CallListModel::callDetails(int row) const
{
    const CallListEntry* e = entryAt(row);
    if (!e || e->isDayHeader)
        return QString();
    return QStringList{e->dateText,       e->call.name, e->call.phonenumber,
                       e->call.extension, e->call.line, e->call.duration}
        .join(u'\n');
}

int CallListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

int CallListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CallListModel::data(const QModelIndex& index, int role) const
{
    const CallListEntry* e = index.isValid() ? entryAt(index.row()) : nullptr;
    if (!e)
        return {};
    if (role == DayHeaderRole)
        return e->isDayHeader;
    if (!e->isDayHeader)
        return callData(*e, index.column(), role);
    switch (role) {
    case DayCountRole:
        return e->dayCount;
    case Qt::DisplayRole:
        if (index.column() == Date)
            return e->dayText;
        if (index.column() == Name)
            return e->dayCount == 1 ? tr("1 call") : tr("%1 calls").arg(e->dayCount);
        return {};
    case Qt::FontRole: {
        QFont font = QApplication::font();
        font.setBold(true);
        return font;
    }
    case Qt::BackgroundRole:
        return QApplication::palette().brush(QPalette::Button);
    case Qt::ForegroundRole:
        return QApplication::palette().brush(QPalette::ButtonText);
    default:
        return {};
    }
}

QVariant CallListModel::callData(const CallListEntry& e, int column, int role) const
{
    const CallRow& c = e.call;
    switch (role) {
    case RowidRole:
        return c.rowid;
    case NumberRole:
        return c.phonenumber;
    case ContactRole:
        return QStringList{c.abid, c.name, c.label};
    case CallStateRole:
        return c.callstate;
    case CallDateRole:
        return c.calldate;
    case Qt::DecorationRole:
        return column == State ? QVariant(stateIcon(c.callstate)) : QVariant();
    case Qt::ToolTipRole:
        if (column == State)
            return stateText(c.callstate);
        if (column == Name && !c.label.isEmpty())
            return c.label;
        return {};
    case Qt::TextAlignmentRole:
        return column == Duration ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::DisplayRole:
        break;
    default:
        return {};
    }
    switch (column) {
    case Date:
        return e.dateText;
    case Name:
        return c.name;
    case Number:
        return c.phonenumber.isEmpty() ? tr("withheld") : c.phonenumber;
    case Extension:
        return c.extension;
    case Line:
        return c.line;
    case Duration:
        return c.duration;
    default:
        return {};
    }
}

QVariant CallListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Date:
        return tr("Date");
    case Name:
        return tr("Name");
    case Number:
        return tr("Number");
    case Extension:
        return tr("Extension");
    case Line:
        return tr("Line");
    case Duration:
        return tr("Duration");
    default:
        return QString();
    }
}

Qt::ItemFlags CallListModel::flags(const QModelIndex& index) const
{
    const CallListEntry* e = index.isValid() ? entryAt(index.row()) : nullptr;
    if (!e)
        return Qt::NoItemFlags;
    // Day headers are labels, not calls: they cannot be selected.
    return e->isDayHeader ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

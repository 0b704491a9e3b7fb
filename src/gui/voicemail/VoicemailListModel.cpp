#include "VoicemailListModel.h"

#include <QApplication>
#include <QFont>
#include <QLocale>

namespace {

QString dateText(const QDateTime& stamp, const QString& time)
{
    if (!stamp.isValid())
        return time;
    return QLocale().toString(stamp.date(), QLocale::ShortFormat) + u' ' + time;
}

// The number of the answering machine ("meta0" is the first).
QString machineOf(const QString& indexFile)
{
    const QChar last = indexFile.isEmpty() ? QChar() : indexFile.back();
    return last.isDigit() ? QString::number(last.digitValue() + 1) : indexFile;
}

} // namespace

VoicemailListModel::VoicemailListModel(Kind kind, QObject* parent) : QAbstractTableModel(parent), m_kind(kind)
{
}

void VoicemailListModel::setVoicemails(const QList<VoicemailEntry>& entries,
                                       const std::function<bool(const VoicemailEntry&)>& isNew)
{
    beginResetModel();
    m_voicemails = entries;
    m_rows.clear();
    for (const VoicemailEntry& e : entries) {
        Row r;
        const QDateTime recorded = e.recordedAt();
        r.date = recorded.isValid() ? dateText(recorded, e.CallTime) : e.CallDate + u' ' + e.CallTime;
        r.number = e.PhoneNumber;
        r.name = e.Contact.value(1);
        r.line = e.CalledLine.isEmpty() ? tr("Machine %1").arg(machineOf(e.FILE))
                                        : tr("Machine %1 (%2)").arg(machineOf(e.FILE), e.CalledLine);
        r.duration = e.CallDuration;
        r.isNew = isNew(e);
        m_rows.append(r);
    }
    endResetModel();
}

void VoicemailListModel::setFaxes(const QList<FaxEntry>& entries,
                                  const std::function<bool(const FaxEntry&)>& isNew)
{
    beginResetModel();
    m_faxes = entries;
    m_rows.clear();
    for (const FaxEntry& e : entries) {
        Row r;
        r.date = dateText(e.CallTimestamp, e.CallTime);
        r.number = e.PhoneNumber;
        r.name = e.Contact.value(1);
        r.line = e.fileName();
        r.isNew = isNew(e);
        m_rows.append(r);
    }
    endResetModel();
}

void VoicemailListModel::updateNew(const std::function<bool(int row)>& isNew)
{
    for (int i = 0; i < m_rows.size(); ++i)
        m_rows[i].isNew = isNew(i);
    if (!m_rows.isEmpty())
        emit dataChanged(index(0, 0), index(int(m_rows.size()) - 1, columnCount() - 1));
}

void VoicemailListModel::clear()
{
    beginResetModel();
    m_rows.clear();
    m_voicemails.clear();
    m_faxes.clear();
    endResetModel();
}

const VoicemailEntry* VoicemailListModel::voicemailAt(int row) const
{
    return row >= 0 && row < m_voicemails.size() ? &m_voicemails[row] : nullptr;
}

const FaxEntry* VoicemailListModel::faxAt(int row) const
{
    return row >= 0 && row < m_faxes.size() ? &m_faxes[row] : nullptr;
}

int VoicemailListModel::newCount() const
{
    return int(std::count_if(m_rows.cbegin(), m_rows.cend(), [](const Row& r) { return r.isNew; }));
}

int VoicemailListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int VoicemailListModel::columnCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    return m_kind == Voicemails ? Duration + 1 : File + 1;
}

QVariant VoicemailListModel::display(const Row& row, int column) const
{
    switch (column) {
    case New:
        return row.isNew ? QStringLiteral("●") : QString();
    case Date:
        return row.date;
    case Number:
        return row.number.isEmpty() ? tr("Number withheld") : row.number;
    case Name:
        return row.name;
    case Line:
        return row.line;
    case Duration:
        return row.duration;
    default:
        return {};
    }
}

QVariant VoicemailListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return display(row, index.column());
    case Qt::ToolTipRole:
        return index.column() == New && row.isNew ? tr("New") : QVariant();
    case Qt::FontRole: {
        if (!row.isNew)
            return {};
        QFont font = QApplication::font();
        font.setBold(true);
        return font;
    }
    case Qt::TextAlignmentRole:
        return index.column() == New || (m_kind == Voicemails && index.column() == Duration)
                   ? QVariant(int(Qt::AlignCenter))
                   : QVariant();
    case NewRole:
        return row.isNew;
    case NumberRole:
        return row.number;
    case NameRole:
        return row.name;
    default:
        return {};
    }
}

QVariant VoicemailListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case New:
        return QString();
    case Date:
        return tr("Date");
    case Number:
        return m_kind == Voicemails ? tr("Caller") : tr("Sender");
    case Name:
        return tr("Name");
    case Line:
        return m_kind == Voicemails ? tr("Answering machine") : tr("File");
    case Duration:
        return tr("Duration");
    default:
        return {};
    }
}

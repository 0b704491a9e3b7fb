#pragma once

#include "voicemail/VoicemailEntry.h"

#include <QAbstractTableModel>
#include <QList>

#include <functional>

// The messages of the answering machines or the received faxes, in the order the list was read
// (newest first per answering machine); entries not yet seen are bold with a dot.
class VoicemailListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Kind { Voicemails, Faxes };
    // Faxes use New, Date, Number, Name and File.
    enum Column { New, Date, Number, Name, Line, Duration, File = Line };
    enum Role { NewRole = Qt::UserRole + 1, NumberRole, NameRole };

    explicit VoicemailListModel(Kind kind, QObject* parent = nullptr);

    Kind kind() const { return m_kind; }
    void setVoicemails(const QList<VoicemailEntry>& entries,
                       const std::function<bool(const VoicemailEntry&)>& isNew);
    void setFaxes(const QList<FaxEntry>& entries, const std::function<bool(const FaxEntry&)>& isNew);
    // After a check: which rows are still new.
    void updateNew(const std::function<bool(int row)>& isNew);
    void clear();

    const VoicemailEntry* voicemailAt(int row) const;
    const FaxEntry* faxAt(int row) const;
    int newCount() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        QString date;
        QString number;
        QString name;
        QString line; // faxes: the file name
        QString duration;
        bool isNew = false;
    };
    QVariant display(const Row& row, int column) const;

    Kind m_kind;
    QList<Row> m_rows;
    QList<VoicemailEntry> m_voicemails;
    QList<FaxEntry> m_faxes;
};

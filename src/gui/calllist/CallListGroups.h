#pragma once

#include <QTreeWidget>

// The side list of the call list window: incoming, outgoing, missed, all, current and new calls,
// then the profile's smart lists (newest first), each with its counter. Every entry carries the
// list selector the call database takes; the calls in progress have their own value.
class CallListGroups : public QTreeWidget
{
    Q_OBJECT
public:
    // Not a database selector: the calls the call monitor shows now.
    static constexpr int CurrentCalls = -1;
    enum Column { Title, Counter };

    explicit CallListGroups(QWidget* parent = nullptr);

    // Rebuilds the entries from the counters (positions as the call database keeps them) and
    // the smart list names (newest first); the chosen entry stays chosen where it still exists.
    void setGroups(const QList<qint64>& counters, const QStringList& smartListNames, int currentCalls);
    void setCurrentCallsCount(int count);

    int selectorAt(int row) const;
    int currentSelector() const;
    int currentRow() const;
    // False when no entry has that selector.
    bool selectSelector(int selector);
    void selectRow(int row);
    QString counterText(int selector) const;

signals:
    void selectorChosen(int selector);

private:
    QTreeWidgetItem* itemForSelector(int selector) const;
};

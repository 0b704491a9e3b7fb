#include "CallListGroups.h"

#include "CallListModel.h"

#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"

#include <QHeaderView>
#include <QPixmap>

namespace {
constexpr int SelectorRole = Qt::UserRole + 1;
} // namespace

CallListGroups::CallListGroups(QWidget* parent) : QTreeWidget(parent)
{
    setColumnCount(2);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(Title, QHeaderView::Stretch);
    header()->setSectionResizeMode(Counter, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item)
            emit selectorChosen(item->data(Title, SelectorRole).toInt());
    });
}

void CallListGroups::setGroups(const QList<qint64>& counters, const QStringList& smartListNames,
                               int currentCalls)
{
    const bool hadChoice = currentItem() != nullptr;
    const int chosen = currentSelector();
    struct Entry
    {
        QString title;
        int selector;
        int counterPosition;
        QIcon icon;
    };
    QList<Entry> entries = {
        {tr("Incoming"), ListQuery::SelectorIncoming, TNCallinglist::CounterIncoming,
         CallListModel::stateIcon(1)},
        {tr("Outgoing"), ListQuery::SelectorOutgoing, TNCallinglist::CounterOutgoing,
         CallListModel::stateIcon(3)},
        {tr("Missed"), ListQuery::SelectorMissed, TNCallinglist::CounterMissed, CallListModel::stateIcon(2)},
        {tr("All calls"), ListQuery::SelectorAll, TNCallinglist::CounterAll, {}},
        {tr("Current calls"), CurrentCalls, TNCallinglist::CounterCurrent, {}},
        {tr("New calls"), ListQuery::SelectorNew, TNCallinglist::CounterNew, {}},
    };
    // Names come newest first, the selector counts from the oldest list.
    const int smartCount = int(smartListNames.size());
    for (int i = 0; i < smartCount; ++i)
        entries.append({smartListNames[i],
                        ListQuery::SelectorFirstSmartList + smartCount - 1 - i,
                        TNCallinglist::CounterFirstSmartList + i,
                        {}});

    // Entries without a picture keep their titles in line with the others.
    static const QIcon blank = [] {
        QPixmap empty(16, 16);
        empty.fill(Qt::transparent);
        return QIcon(empty);
    }();
    const QSignalBlocker block(this);
    clear();
    for (const Entry& e : entries) {
        auto* item = new QTreeWidgetItem(this);
        item->setText(Title, e.title);
        item->setIcon(Title, e.icon.isNull() ? blank : e.icon);
        item->setData(Title, SelectorRole, e.selector);
        if (e.selector == CurrentCalls)
            item->setText(Counter, QString::number(currentCalls));
        else if (e.counterPosition < counters.size())
            item->setText(Counter, QString::number(counters[e.counterPosition]));
        item->setTextAlignment(Counter, Qt::AlignRight | Qt::AlignVCenter);
    }
    if (QTreeWidgetItem* item = hadChoice ? itemForSelector(chosen) : nullptr)
        setCurrentItem(item);
}

void CallListGroups::setCurrentCallsCount(int count)
{
    if (QTreeWidgetItem* item = itemForSelector(CurrentCalls))
        item->setText(Counter, QString::number(count));
}

int CallListGroups::selectorAt(int row) const
{
    const QTreeWidgetItem* item = topLevelItem(row);
    return item ? item->data(Title, SelectorRole).toInt() : ListQuery::SelectorAll;
}

int CallListGroups::currentSelector() const
{
    return currentItem() ? currentItem()->data(Title, SelectorRole).toInt() : ListQuery::SelectorAll;
}

int CallListGroups::currentRow() const
{
    return currentItem() ? indexOfTopLevelItem(currentItem()) : -1;
}

bool CallListGroups::selectSelector(int selector)
{
    QTreeWidgetItem* item = itemForSelector(selector);
    if (item)
        setCurrentItem(item);
    return item;
}

void CallListGroups::selectRow(int row)
{
    if (QTreeWidgetItem* item = topLevelItem(row))
        setCurrentItem(item);
}

QString CallListGroups::counterText(int selector) const
{
    const QTreeWidgetItem* item = itemForSelector(selector);
    return item ? item->text(Counter) : QString();
}

QTreeWidgetItem* CallListGroups::itemForSelector(int selector) const
{
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (topLevelItem(i)->data(Title, SelectorRole).toInt() == selector)
            return topLevelItem(i);
    return nullptr;
}

// The call list window's actions on smart lists: new, edit and delete from the side list.
#include "CallListWindow.h"

#include "CallListGroups.h"
#include "SmartListEditor.h"

#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"

#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>

qint64 CallListWindow::smartListIDForSelector(int selector) const
{
    if (m_profile <= 0 || selector < ListQuery::SelectorFirstSmartList)
        return 0;
    const auto list =
        m_calls.smartLists().getSmartListForProfile(m_profile, selector - ListQuery::SelectorFirstSmartList);
    return list ? list->rowid : 0;
}

SmartListEditor* CallListWindow::openSmartListEditor(qint64 id)
{
    if (m_profile <= 0)
        return nullptr;
    auto* editor = new SmartListEditor(m_calls, m_profile, id, this);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    editor->open();
    return editor;
}

bool CallListWindow::deleteSmartList(int selector)
{
    const qint64 id = smartListIDForSelector(selector);
    const auto list = id ? m_calls.smartLists().smartListForID(id) : std::nullopt;
    if (!list)
        return false;
    const bool confirmed =
        m_confirmSmartListDelete
            ? m_confirmSmartListDelete(list->name)
            : QMessageBox::question(
                  this, tr("Delete smart list"),
                  tr("Delete the smart list “%1”? The calls stay in the call list.").arg(list->name)) ==
                  QMessageBox::Yes;
    if (!confirmed)
        return false;
    if (!m_calls.deleteSmartListForID(id)) {
        statusBar()->showMessage(tr("The smart list could not be deleted: the call database refused it."),
                                 8000);
        return false;
    }
    // The selectors of the lists after it move up by one: show all calls rather than a neighbour.
    if (m_groups->currentSelector() >= ListQuery::SelectorFirstSmartList) {
        const QSignalBlocker block(m_groups);
        m_groups->selectSelector(ListQuery::SelectorAll);
    }
    reloadCounters(true);
    reloadList();
    return true;
}

void CallListWindow::showGroupsContextMenu(const QPoint& pos)
{
    if (m_profile <= 0)
        return;
    QTreeWidgetItem* item = m_groups->itemAt(pos);
    const int selector = item ? m_groups->selectorAt(m_groups->indexOfTopLevelItem(item)) : 0;
    const qint64 id = item ? smartListIDForSelector(selector) : 0;
    QMenu menu(this);
    if (id) {
        menu.addAction(tr("Edit…"), this, [this, id] { openSmartListEditor(id); });
        menu.addAction(tr("Delete…"), this, [this, selector] { deleteSmartList(selector); });
        menu.addSeparator();
    }
    menu.addAction(m_newSmartList);
    menu.exec(m_groups->viewport()->mapToGlobal(pos));
}

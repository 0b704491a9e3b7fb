// The call list window's actions on calls (dial, copy, memo, delete) and on the list (router
// reload, file import, export, statistics).
#include "CallListWindow.h"

#include "CallListModel.h"
#include "CallMemoDialog.h"
#include "CallStatisticsDialog.h"

#include "app/CallListSync.h"
#include "base/SettingsStore.h"
#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyle>
#include <QTableView>
#include <QToolBar>

namespace {
// How long a passing message stays in the status bar.
constexpr int MessageMs = 8000;
} // namespace

void CallListWindow::buildActions()
{
    auto action = [this](const QString& text) { return new QAction(text, this); };
    auto iconAction = [this](const QString& text, QStyle::StandardPixmap icon) {
        return new QAction(style()->standardIcon(icon), text, this);
    };
    m_call = action(tr("Call number"));
    m_copyNumber = action(tr("Copy number"));
    m_copyDetails = action(tr("Copy call details"));
    m_copyDetails->setShortcut(QKeySequence::Copy);
    m_memo = iconAction(tr("Memo…"), QStyle::SP_FileDialogDetailedView);
    m_delete = iconAction(tr("Delete"), QStyle::SP_TrashIcon);
    m_delete->setShortcut(QKeySequence::Delete);
    m_reload = iconAction(tr("Reload"), QStyle::SP_BrowserReload);
    m_reload->setToolTip(tr("Read the new calls from the router"));
    m_reload->setShortcut(QKeySequence::Refresh);
    m_import = iconAction(tr("Import file…"), QStyle::SP_DialogOpenButton);
    m_export = iconAction(tr("Export…"), QStyle::SP_DialogSaveButton);
    m_statistics = iconAction(tr("Statistics"), QStyle::SP_FileDialogInfoView);
    m_newCall = iconAction(tr("New call"), QStyle::SP_ArrowForward);
    m_newSmartList = iconAction(tr("New smart list…"), QStyle::SP_FileDialogNewFolder);
    m_newSmartList->setToolTip(tr("A saved filter of the calls, shown in the side list"));
    m_lookUp = iconAction(tr("Look up online"), QStyle::SP_FileDialogContentsView);
    m_lookUp->setToolTip(tr("Ask the web directories for the name of this number"));
    m_addContact = iconAction(tr("Add to address book…"), QStyle::SP_DirHomeIcon);
    for (QAction* a : {m_copyDetails, m_delete, m_reload})
        a->setShortcutContext(Qt::WindowShortcut);
    addActions({m_copyDetails, m_delete, m_reload});

    connect(m_call, &QAction::triggered, this, [this] {
        const QList<int> rows = selectedCallRows();
        if (rows.isEmpty())
            return;
        const QModelIndex index = m_model->index(rows.first(), 0);
        const QString number = index.data(CallListModel::NumberRole).toString();
        if (!number.isEmpty())
            emit callRequested(number, index.data(CallListModel::ContactRole).toStringList());
    });
    connect(m_copyNumber, &QAction::triggered, this, &CallListWindow::copySelectedNumber);
    connect(m_copyDetails, &QAction::triggered, this, &CallListWindow::copySelectedDetails);
    connect(m_memo, &QAction::triggered, this, &CallListWindow::openMemo);
    connect(m_delete, &QAction::triggered, this, &CallListWindow::deleteSelectedCalls);
    connect(m_reload, &QAction::triggered, this, &CallListWindow::startRouterImport);
    connect(m_import, &QAction::triggered, this, &CallListWindow::chooseImportFile);
    connect(m_export, &QAction::triggered, this, &CallListWindow::chooseExportFile);
    connect(m_statistics, &QAction::triggered, this, &CallListWindow::openStatistics);
    connect(m_newCall, &QAction::triggered, this, [this] { emit callRequested(QString(), {}); });
    connect(m_newSmartList, &QAction::triggered, this, [this] { openSmartListEditor(0); });
    connect(m_lookUp, &QAction::triggered, this, &CallListWindow::lookUpSelectedNumber);
    connect(m_addContact, &QAction::triggered, this, &CallListWindow::openAddContact);

    QToolBar* bar = addToolBar(tr("Call list"));
    bar->setObjectName(QStringLiteral("CallListToolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->addActions({m_reload, m_import, m_export});
    bar->addSeparator();
    bar->addActions({m_statistics, m_newCall, m_addContact, m_memo, m_lookUp, m_delete});
    bar->addSeparator();
    bar->addAction(m_newSmartList);
}

void CallListWindow::showContextMenu(const QPoint& pos)
{
    const QModelIndex index = m_table->indexAt(pos);
    if (!index.isValid() || index.data(CallListModel::DayHeaderRole).toBool())
        return;
    // A right click on a call outside the selection acts on that call.
    if (!m_table->selectionModel()->isRowSelected(index.row(), {}))
        m_table->selectionModel()->select(index,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QMenu menu(this);
    menu.addActions({m_call, m_copyNumber, m_copyDetails});
    menu.addSeparator();
    menu.addActions({m_lookUp, m_addContact});
    menu.addSeparator();
    menu.addAction(m_memo);
    menu.addSeparator();
    menu.addAction(m_delete);
    menu.exec(m_table->viewport()->mapToGlobal(pos));
}

void CallListWindow::copySelectedNumber()
{
    const QList<int> rows = selectedCallRows();
    if (!rows.isEmpty())
        QApplication::clipboard()->setText(
            m_model->index(rows.first(), 0).data(CallListModel::NumberRole).toString());
}

void CallListWindow::copySelectedDetails()
{
    QStringList calls;
    for (int row : selectedCallRows())
        calls.append(m_model->callDetails(row));
    if (!calls.isEmpty())
        QApplication::clipboard()->setText(calls.join(QStringLiteral("\n\n")));
}

int CallListWindow::deleteSelectedCalls()
{
    QList<qint64> rowids;
    if (m_model->showsDatabase())
        for (int row : selectedCallRows())
            if (const qint64 rowid = m_model->index(row, 0).data(CallListModel::RowidRole).toLongLong();
                rowid > 0)
                rowids.append(rowid);
    if (rowids.isEmpty() || m_profile <= 0)
        return 0;
    const int count = int(rowids.size());
    const bool confirmed =
        m_confirmDelete
            ? m_confirmDelete(count)
            : QMessageBox::question(
                  this, tr("Delete calls"),
                  count == 1 ? tr("Delete the selected call from the call list?")
                             : tr("Delete the %1 selected calls from the call list?").arg(count)) ==
                  QMessageBox::Yes;
    if (!confirmed)
        return 0;
    const int deleted = m_actions.deleteCalls(m_profile, rowids).deleted;
    if (deleted < 0)
        statusBar()->showMessage(tr("The calls could not be deleted: the call database refused it."),
                                 MessageMs);
    // The counters were counted again by the deletion.
    reloadCounters(false);
    reloadList();
    return std::max(deleted, 0);
}

void CallListWindow::openMemo()
{
    const QList<int> rows = selectedCallRows();
    const CallListEntry* entry = rows.isEmpty() ? nullptr : m_model->entryAt(rows.first());
    if (!entry || m_profile <= 0)
        return;
    auto* dialog = new CallMemoDialog(m_calls, m_profile, entry->call, entry->dateText, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void CallListWindow::openStatistics()
{
    if (m_profile <= 0)
        return;
    auto* dialog = new CallStatisticsDialog(m_calls, m_profile, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

void CallListWindow::startRouterImport()
{
    // The same background import the tray runs after a call; its end posts "RELOADCALLINGLIST".
    m_sync.importFromRouter();
    statusBar()->showMessage(tr("Reading the call list from the router…"), MessageMs);
}

void CallListWindow::chooseImportFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Import a call journal"), QDir::homePath(),
                                                      tr("Call journals (*.csv *.txt);;All files (*)"));
    if (!path.isEmpty())
        importFile(path);
}

bool CallListWindow::importFile(const QString& path)
{
    if (m_importing || m_profile <= 0)
        return false;
    m_importing = true;
    m_importPath = path;
    m_progress->setRange(0, 0);
    m_progress->show();
    statusBar()->showMessage(tr("Importing %1…").arg(QFileInfo(path).fileName()));
    updateActions();

    m_sync.importFile(path, m_calls.prefsForProfile(m_profile));
    return true;
}

void CallListWindow::importProgressed(qint64 done, qint64 total)
{
    if (total <= 0)
        return;
    m_progress->setRange(0, 100);
    m_progress->setValue(int(done * 100 / total));
}

void CallListWindow::importDone(int result)
{
    m_importing = false;
    m_progress->hide();
    const QString name = QFileInfo(m_importPath).fileName();
    if (result < 0)
        statusBar()->showMessage(tr("%1 is not a call journal.").arg(name), MessageMs);
    else if (result == 0)
        statusBar()->showMessage(tr("No new calls in %1.").arg(name), MessageMs);
    else
        statusBar()->showMessage(result == 1 ? tr("1 call imported from %1.").arg(name)
                                             : tr("%1 calls imported from %2.").arg(result).arg(name),
                                 MessageMs);
    reloadAll();
    emit importFinished(result);
}

void CallListWindow::chooseExportFile()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Export calls"),
                                                      QDir::home().filePath(QStringLiteral("calls.csv")),
                                                      tr("Delimited text (*.csv *.txt)"));
    if (!path.isEmpty())
        exportToFile(path);
}

bool CallListWindow::exportToFile(const QString& path)
{
    if (m_profile <= 0)
        return false;
    // Current calls (from the monitor) are not in the database: they export all calls.
    const int chosen = m_model->showsDatabase() ? m_model->query().selector : ListQuery::SelectorAll;
    QString error;
    if (!m_actions.exportToFile(m_profile, chosen, path, &error)) {
        statusBar()->showMessage(tr("%1 could not be written: %2").arg(path, error), MessageMs);
        return false;
    }
    statusBar()->showMessage(tr("Calls exported to %1.").arg(QFileInfo(path).fileName()), MessageMs);
    return true;
}

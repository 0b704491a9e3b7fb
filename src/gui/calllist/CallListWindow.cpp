#include "CallListWindow.h"

#include "app/CallListSync.h"

#include "CallListGroups.h"
#include "CallListModel.h"
#include "MenuRebuild.h"

#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"
#include "contacts/AddressBook.h"
#include "contacts/ReverseLookup.h"
#include "monitor/StreamListener.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <QTimer>
#include <QToolBar>

namespace {
// Typing pauses this long before the list is read again.
constexpr int SearchDelayMs = 250;
} // namespace

CallListWindow::CallListWindow(TNPreferencesManager& manager, TNCallinglist& calls, CallListSync& sync,
                               ContactsServices& contacts, StreamListener& listener, SettingsStore& settings,
                               QWidget* parent)
    : QMainWindow(parent), m_manager(manager), m_calls(calls), m_sync(sync), m_actions(calls, contacts),
      m_listener(listener), m_settings(settings)
{
    setObjectName(QStringLiteral("CallListWindow"));
    m_model = new CallListModel(calls, this);
    buildActions();
    buildLayout();
    observeNotifications();
    restoreSort();
    connect(m_model, &CallListModel::loaded, this, &CallListWindow::updateActions);
    // Imports run in the core, one at a time; the window follows the file import it started.
    connect(&m_sync, &CallListSync::progress, this, [this](qint64 done, qint64 total) {
        if (m_importing)
            importProgressed(done, total);
    });
    connect(&m_sync, &CallListSync::finished, this, [this](const CallListSyncResult& result) {
        if (m_importing && !result.download)
            importDone(result.imported);
    });
    resize(920, 560);
}

CallListWindow::~CallListWindow() = default;

void CallListWindow::buildLayout()
{
    m_groups = new CallListGroups(this);
    m_groups->setMinimumWidth(170);

    m_table = new QTableView(this);
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setWordWrap(false);
    m_table->setShowGrid(false);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    m_table->verticalHeader()->hide();
    // Fixed row heights keep long lists cheap to lay out.
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    QHeaderView* header = m_table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setSectionResizeMode(CallListModel::State, QHeaderView::Fixed);
    header->resizeSection(CallListModel::State, 30);
    // The name takes what the other columns leave.
    header->setSectionResizeMode(CallListModel::Name, QHeaderView::Stretch);
    header->resizeSection(CallListModel::Date, 130);
    header->resizeSection(CallListModel::Number, 130);
    header->resizeSection(CallListModel::Extension, 110);
    header->resizeSection(CallListModel::Line, 100);
    header->resizeSection(CallListModel::Duration, 70);
    header->setSortIndicatorShown(true);

    m_search = new QLineEdit(this);
    m_search->setPlaceholderText(tr("Search calls"));
    m_search->setClearButtonEnabled(true);
    m_searchColumn = new QComboBox(this);
    m_searchColumn->addItem(tr("All columns"), QString());
    m_searchColumn->addItem(tr("Date"), QStringLiteral("date"));
    m_searchColumn->addItem(tr("Name"), QStringLiteral("name"));
    m_searchColumn->addItem(tr("Number"), QStringLiteral("number"));
    m_searchColumn->addItem(tr("Extension"), QStringLiteral("extension"));
    m_searchColumn->addItem(tr("Line"), QStringLiteral("line"));
    m_searchColumn->addItem(tr("Duration"), QStringLiteral("duration"));
    m_searchTimer = new QTimer(this);
    m_searchTimer->setSingleShot(true);
    m_searchTimer->setInterval(SearchDelayMs);
    connect(m_search, &QLineEdit::textChanged, m_searchTimer, qOverload<>(&QTimer::start));
    connect(m_searchTimer, &QTimer::timeout, this, &CallListWindow::applySearch);
    connect(m_searchColumn, &QComboBox::currentIndexChanged, this, &CallListWindow::applySearch);
    auto* find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, m_search, [this] { m_search->setFocus(Qt::ShortcutFocusReason); });
    addAction(find);

    auto* right = new QWidget(this);
    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(m_search, 1);
    searchRow->addWidget(m_searchColumn);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addLayout(searchRow);
    rightLayout->addWidget(m_table, 1);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(m_groups);
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({190, 730});
    setCentralWidget(splitter);

    m_progress = new QProgressBar(this);
    m_progress->setMaximumWidth(160);
    m_progress->hide();
    statusBar()->addPermanentWidget(m_progress);
    m_countLabel = new QLabel(this);
    statusBar()->addPermanentWidget(m_countLabel);

    connect(m_groups, &CallListGroups::selectorChosen, this, &CallListWindow::groupChosen);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CallListWindow::updateActions);
    connect(m_table, &QTableView::customContextMenuRequested, this, &CallListWindow::showContextMenu);
    m_groups->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_groups, &CallListGroups::customContextMenuRequested, this,
            &CallListWindow::showGroupsContextMenu);
    connect(m_groups, &CallListGroups::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        if (const qint64 id =
                smartListIDForSelector(m_groups->selectorAt(m_groups->indexOfTopLevelItem(item))))
            openSmartListEditor(id);
    });
    connect(m_table, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.isValid() && !index.data(CallListModel::DayHeaderRole).toBool())
            m_call->trigger();
    });
}

void CallListWindow::observeNotifications()
{
    rebuildOn(
        m_calls.notificationCenter(), this,
        {Notifications::RELOADCALLINGLIST, Notifications::GETNEWCALLERLIST, Notifications::ACTIVATESETTINGS},
        [this] { whenShown([this] { reloadAll(); }); });
    // Posted after the counters were counted again.
    rebuildOn(m_calls.notificationCenter(), this,
              {Notifications::UPDATESIDETABLE, Notifications::RELOADCOUNTER},
              [this] { whenShown([this] { reloadCounters(false); }); });
    rebuildOn(m_calls.notificationCenter(), this, {Notifications::RELOADCURRENTCALLS}, [this] {
        whenShown([this] {
            m_groups->setCurrentCallsCount(currentCallsCount());
            if (m_groups->currentSelector() == CallListGroups::CurrentCalls)
                reloadList();
        });
    });
}

void CallListWindow::restoreSort()
{
    const auto [identifier, ascending] = m_calls.sortDescriptor();
    const int column = std::max(0, CallListModel::columnForIdentifier(identifier));
    m_table->horizontalHeader()->setSortIndicator(column,
                                                  ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    // From here a click on a header sorts (and stores the choice); the stored one is kept.
    m_table->setSortingEnabled(true);
}

void CallListWindow::whenShown(const std::function<void()>& work)
{
    if (isVisible())
        work();
    else
        m_stale = true;
}

void CallListWindow::openCallList()
{
    if (m_stale || !isVisible())
        reloadAll();
    show();
    raise();
    activateWindow();
}

void CallListWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_stale)
        reloadAll();
}

void CallListWindow::reloadAll()
{
    m_stale = false;
    const auto prefs = m_manager.currentPreferences();
    m_profile = prefs && !prefs->isDummy() ? prefs->activeProfileInt : 0;
    const QString location = prefs && !prefs->isDummy() ? prefs->locationName : QString();
    setWindowTitle(location.isEmpty() ? tr("Call list") : tr("Call list – %1").arg(location));
    const bool firstTime = m_groups->topLevelItemCount() == 0;
    reloadCounters(true);
    if (firstTime) {
        // The list chosen last time ("SelCLGrp" holds its row).
        const QSignalBlocker block(m_groups);
        m_groups->selectRow(m_settings.value(keys::SelCLGrp, 3).toInt());
    }
    if (!m_groups->currentItem()) {
        const QSignalBlocker block(m_groups);
        m_groups->selectSelector(ListQuery::SelectorAll);
    }
    reloadList();
}

void CallListWindow::reloadCounters(bool recount)
{
    if (m_profile > 0 && recount)
        m_calls.refreshCallsCounterForProfile(m_profile);
    const QList<qint64> counters = m_profile > 0 ? m_calls.callsCounter() : QList<qint64>();
    const QStringList smart =
        m_profile > 0 ? m_calls.smartLists().getAllSmartListNamesForProfile(m_profile) : QStringList();
    const bool hadChoice = m_groups->currentItem();
    m_groups->setGroups(counters, smart, currentCallsCount());
    if (hadChoice && !m_groups->currentItem())
        m_groups->selectSelector(ListQuery::SelectorAll); // the smart list shown is gone
}

void CallListWindow::reloadList()
{
    const int selector = m_groups->currentSelector();
    if (selector == CallListGroups::CurrentCalls) {
        m_model->showCalls(m_profile, currentCalls());
    } else {
        CallListModel::Query query;
        query.profile = m_profile;
        query.selector = selector;
        query.search = m_search->text();
        query.searchColumn = m_searchColumn->currentData().toString();
        const CallListModel::Query& shown = m_model->query();
        const bool same = m_model->showsDatabase() && shown.profile == query.profile &&
                          shown.selector == query.selector && shown.search == query.search &&
                          shown.searchColumn == query.searchColumn;
        // The same list keeps what was read of it; another one starts at its first page.
        if (same)
            m_model->reload();
        else
            m_model->setQuery(query);
    }
    updateActions();
}

void CallListWindow::applySearch()
{
    m_searchTimer->stop();
    reloadList();
}

void CallListWindow::groupChosen(int selector)
{
    Q_UNUSED(selector);
    m_settings.setValue(keys::SelCLGrp, m_groups->currentRow());
    reloadList();
}

int CallListWindow::currentCallsCount() const
{
    const QList<CallRecord>& calls = m_listener.monitorCalls();
    return int(std::count_if(calls.begin(), calls.end(), [](const CallRecord& c) { return c.showCall; }));
}

QList<CallRow> CallListWindow::currentCalls() const
{
    const QString text = m_search->text();
    QList<CallRow> rows;
    for (const CallRecord& c : m_listener.monitorCalls()) {
        if (!c.showCall)
            continue;
        CallRow row;
        row.profile = m_profile;
        row.callstate = c.calltype;
        row.calldate = c.dateStart.isValid() ? c.dateStart.toSecsSinceEpoch() : 0;
        row.phonenumber = c.number;
        row.extension = c.extensionTitle.isEmpty() ? c.extension : c.extensionTitle;
        row.line = c.line;
        row.duration = c.duration;
        row.name = c.contactName();
        row.abid = c.contactABID();
        row.label = c.contactLabel();
        const bool matches =
            text.isEmpty() ||
            QStringList{row.name, row.phonenumber, row.extension, row.line}.join(u'\n').contains(
                text, Qt::CaseInsensitive);
        if (matches)
            rows.append(row);
    }
    return rows;
}

QList<int> CallListWindow::selectedCallRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        if (!index.data(CallListModel::DayHeaderRole).toBool())
            rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool CallListWindow::selectGroup(int selector)
{
    return m_groups->selectSelector(selector);
}

void CallListWindow::updateActions()
{
    const QList<int> rows = selectedCallRows();
    const QModelIndex first = rows.isEmpty() ? QModelIndex() : m_model->index(rows.first(), 0);
    const bool hasNumber = first.isValid() && !first.data(CallListModel::NumberRole).toString().isEmpty();
    const bool stored = std::any_of(rows.begin(), rows.end(), [this](int row) {
        return m_model->index(row, 0).data(CallListModel::RowidRole).toLongLong() > 0;
    });
    const auto prefs = m_manager.currentPreferences();
    const bool router = prefs && !prefs->isDummy() && !prefs->hostName.isEmpty();
    m_call->setEnabled(rows.size() == 1 && hasNumber);
    m_copyNumber->setEnabled(hasNumber);
    m_copyDetails->setEnabled(!rows.isEmpty());
    m_memo->setEnabled(rows.size() == 1 && m_profile > 0);
    m_delete->setEnabled(stored && m_model->showsDatabase());
    m_reload->setEnabled(router && !m_importing);
    m_import->setEnabled(m_profile > 0 && !m_importing);
    m_export->setEnabled(m_profile > 0);
    m_statistics->setEnabled(m_profile > 0);
    m_newSmartList->setEnabled(m_profile > 0);
    const QString name =
        first.isValid() ? first.data(CallListModel::ContactRole).toStringList().value(1) : QString();
    m_lookUp->setEnabled(rows.size() == 1 && hasNumber && name.isEmpty() && !m_lookingUp);
    const bool book = m_actions.hasAddressBook();
    m_addContact->setEnabled(rows.size() == 1 && hasNumber && book);
    m_addContact->setToolTip(
        book ? tr("Add this number to the address book as a new contact")
             : tr("No address book is configured: choose a vCard file under Settings, General."));
    const int count = m_model->callCount();
    const QString shown = m_model->canFetchMore({}) ? tr("%1+ calls").arg(count)
                          : count == 1              ? tr("1 call")
                                                    : tr("%1 calls").arg(count);
    m_countLabel->setText(shown);
}

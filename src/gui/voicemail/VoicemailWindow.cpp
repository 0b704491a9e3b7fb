#include "VoicemailWindow.h"

#include "MenuRebuild.h"
#include "VoicemailListModel.h"

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "voicemail/TNFTPDatasource.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QItemSelectionModel>
#include <QLabel>
#include <QProgressBar>
#include <QStandardPaths>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

VoicemailWindow::VoicemailWindow(NotificationCenter& center, TNPreferencesManager& manager,
                                 VoicemailMarkerStore* markers, CallerNameLookup* names, QWidget* parent)
    : QMainWindow(parent), m_center(center), m_manager(manager),
      m_datasource(std::make_unique<TNFTPDatasource>(center, markers, names)), m_clock(&Clock::system()),
      m_cacheDir(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                 QStringLiteral("/voicemail"))
{
    setObjectName(QStringLiteral("VoicemailWindow"));
    setWindowTitle(tr("Answering machine and fax"));
    m_voicemailModel = new VoicemailListModel(VoicemailListModel::Voicemails, this);
    m_faxModel = new VoicemailListModel(VoicemailListModel::Faxes, this);
    buildActions();
    buildLayout();
    observeNotifications();
    connect(m_datasource.get(), &TNFTPDatasource::voicemailsLoaded, this, &VoicemailWindow::voicemailsLoaded);
    connect(m_datasource.get(), &TNFTPDatasource::faxLoaded, this, &VoicemailWindow::faxLoaded);
    connect(m_datasource.get(), &TNFTPDatasource::loadingFailed, this,
            [this](const QString&, const QString& message) { loadingFailed(message); });
    updateActions();
    updateCounts();
    resize(760, 460);
}

VoicemailWindow::~VoicemailWindow()
{
    // Runs still going end on their own; their results find the window gone.
    if (m_loading || m_transferring)
        m_center.post(Notifications::STOPFTPTRANSFER);
}

void VoicemailWindow::setClock(const Clock* clock)
{
    m_clock = clock ? clock : &Clock::system();
}

void VoicemailWindow::buildActions()
{
    m_reload = new QAction(QIcon::fromTheme(QStringLiteral("view-refresh")), tr("Reload"), this);
    m_reload->setShortcut(QKeySequence::Refresh);
    connect(m_reload, &QAction::triggered, this, &VoicemailWindow::reload);
    m_cancel = new QAction(QIcon::fromTheme(QStringLiteral("process-stop")), tr("Cancel"), this);
    m_cancel->setShortcut(QKeySequence::Cancel);
    connect(m_cancel, &QAction::triggered, this, &VoicemailWindow::cancel);
    m_play = new QAction(QIcon::fromTheme(QStringLiteral("media-playback-start")), tr("Play"), this);
    connect(m_play, &QAction::triggered, this, &VoicemailWindow::playSelected);
    m_save = new QAction(QIcon::fromTheme(QStringLiteral("document-save-as")), tr("Save as…"), this);
    m_save->setShortcut(QKeySequence::SaveAs);
    connect(m_save, &QAction::triggered, this, &VoicemailWindow::saveSelectedAs);
    m_delete = new QAction(QIcon::fromTheme(QStringLiteral("edit-delete")), tr("Delete…"), this);
    m_delete->setShortcut(QKeySequence::Delete);
    connect(m_delete, &QAction::triggered, this, &VoicemailWindow::deleteSelected);
    addActions({m_reload, m_cancel, m_play, m_save, m_delete});
    m_reload->setObjectName(QStringLiteral("reload"));
    m_cancel->setObjectName(QStringLiteral("cancel"));
    m_play->setObjectName(QStringLiteral("play"));
    m_save->setObjectName(QStringLiteral("save"));
    m_delete->setObjectName(QStringLiteral("delete"));

    QToolBar* bar = addToolBar(tr("Messages"));
    bar->setObjectName(QStringLiteral("VoicemailToolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(m_play);
    bar->addAction(m_save);
    bar->addAction(m_delete);
    bar->addSeparator();
    bar->addAction(m_reload);
    bar->addAction(m_cancel);
}

QTableView* VoicemailWindow::makeTable(VoicemailListModel* model)
{
    auto* table = new QTableView(this);
    table->setModel(model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setWordWrap(false);
    table->setShowGrid(false);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    table->verticalHeader()->hide();
    QHeaderView* header = table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setSectionResizeMode(VoicemailListModel::New, QHeaderView::Fixed);
    header->resizeSection(VoicemailListModel::New, 26);
    // Dates in the locale's format, bold when new: they take what they need.
    header->setSectionResizeMode(VoicemailListModel::Date, QHeaderView::ResizeToContents);
    header->resizeSection(VoicemailListModel::Number, 130);
    header->setSectionResizeMode(VoicemailListModel::Name, QHeaderView::Stretch);
    header->resizeSection(VoicemailListModel::Line, 150);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &VoicemailWindow::updateActions);
    connect(table, &QTableView::customContextMenuRequested, this, &VoicemailWindow::showContextMenu);
    connect(table, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.isValid() && m_play->isEnabled())
            playSelected();
    });
    return table;
}

void VoicemailWindow::buildLayout()
{
    m_voicemailTable = makeTable(m_voicemailModel);
    m_faxTable = makeTable(m_faxModel);
    m_tabs = new QTabWidget(this);
    m_tabs->addTab(m_voicemailTable, tr("Answering machine"));
    m_tabs->addTab(m_faxTable, tr("Fax"));
    connect(m_tabs, &QTabWidget::currentChanged, this, &VoicemailWindow::updateActions);

    // One line above the lists says what went wrong.
    m_errorRow = new QWidget(this);
    auto* errorLayout = new QHBoxLayout(m_errorRow);
    errorLayout->setContentsMargins(4, 4, 4, 4);
    auto* icon = new QLabel(m_errorRow);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));
    m_errorText = new QLabel(m_errorRow);
    m_errorText->setObjectName(QStringLiteral("errorLine"));
    m_errorText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    errorLayout->addWidget(icon);
    errorLayout->addWidget(m_errorText, 1);
    m_errorRow->hide();

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_errorRow);
    layout->addWidget(m_tabs, 1);
    setCentralWidget(central);

    m_statusText = new QLabel(this);
    statusBar()->addWidget(m_statusText, 1);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setRange(0, 0); // how long the router takes is not known
    m_progress->setMaximumWidth(140);
    m_progress->hide();
    statusBar()->addPermanentWidget(m_progress);
    m_countLabel = new QLabel(this);
    m_countLabel->setObjectName(QStringLiteral("countLabel"));
    statusBar()->addPermanentWidget(m_countLabel);
}

void VoicemailWindow::observeNotifications()
{
    rebuildOn(m_center, this, {Notifications::UPDATEABFAXLIST, Notifications::RELOADABFAXLIST},
              [this] { whenShown([this] { reload(); }); });
    rebuildOn(m_center, this, {Notifications::UPDATEABFAXLISTCLEAN}, [this] {
        // Another location's lists must not stay on show, not even while hidden.
        clearLists();
        whenShown([this] { reload(); });
    });
}

void VoicemailWindow::whenShown(const std::function<void()>& work)
{
    if (isVisible())
        work();
    else
        m_stale = true;
}

void VoicemailWindow::openVoicemail()
{
    show();
    raise();
    activateWindow();
    // Read afresh each time it is asked for (showEvent has started that for a stale window).
    if (!m_loading)
        reload();
}

void VoicemailWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_stale)
        reload();
}

void VoicemailWindow::clearLists()
{
    if (m_loading) {
        // The running run reads the old location: whatever it brings (its cancel too) is dropped.
        m_datasource->newConnID();
        m_loading = false;
        m_statusText->clear();
        emit loadFinished(false);
    }
    m_datasource->resetVoicemails(true);
    m_voicemailModel->clear();
    m_faxModel->clear();
    m_stale = true;
    updateCounts();
    updateActions();
}

bool VoicemailWindow::storageSettings(VBFTPConnection::Settings* settings)
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || prefs->isDummy()) {
        showError(tr("No router is set up yet."));
        return false;
    }
    *settings = VBFTPConnection::settingsUsePreferences(*prefs);
    if (settings->host.isEmpty()) {
        showError(tr("The location has no router address."));
        return false;
    }
    return true;
}

void VoicemailWindow::reload()
{
    m_stale = false;
    if (m_transferring) {
        m_reloadPending = true;
        return;
    }
    const auto prefs = m_manager.currentPreferences();
    setWindowTitle(prefs && !prefs->isDummy() && !prefs->locationName.isEmpty()
                       ? tr("Answering machine and fax – %1").arg(prefs->locationName)
                       : tr("Answering machine and fax"));
    VBFTPConnection::Settings settings;
    if (!storageSettings(&settings))
        return;
    // The newer run wins; the older one is stopped rather than left to finish unseen.
    if (m_loading)
        m_center.post(Notifications::STOPFTPTRANSFER);
    m_cancelled = false;
    m_reloadPending = false;
    clearError();
    m_loading = true;
    m_statusText->setText(tr("Reading the router's storage…"));
    updateActions();
    m_datasource->reloadVoicemails(prefs);
}

void VoicemailWindow::cancel()
{
    if (!m_loading && !m_transferring)
        return;
    m_cancelled = true;
    m_center.post(Notifications::STOPFTPTRANSFER);
}

void VoicemailWindow::voicemailsLoaded()
{
    const TNFTPDatasource& ds = *m_datasource;
    m_voicemailModel->setVoicemails(ds.allVoicemailsEntriesList(),
                                    [&ds](const VoicemailEntry& e) { return ds.isNewVoicemail(e); });
}

// Faxes come last in a run.
void VoicemailWindow::faxLoaded()
{
    const TNFTPDatasource& ds = *m_datasource;
    m_faxModel->setFaxes(ds.allFaxEntriesList(), [&ds](const FaxEntry& e) { return ds.isNewFax(e); });
    m_loading = false;
    m_statusText->clear();
    updateCounts();
    updateActions();
    emit loadFinished(true);
}

void VoicemailWindow::loadingFailed(const QString& message)
{
    m_loading = false;
    m_statusText->clear();
    showError(m_cancelled ? tr("Reading the router's storage was cancelled.") : message);
    updateCounts();
    updateActions();
    emit loadFinished(false);
}

void VoicemailWindow::refreshNewMarkers()
{
    const TNFTPDatasource& ds = *m_datasource;
    m_voicemailModel->updateNew(
        [&](int row) { return ds.isNewVoicemail(*m_voicemailModel->voicemailAt(row)); });
    m_faxModel->updateNew([&](int row) { return ds.isNewFax(*m_faxModel->faxAt(row)); });
    updateCounts();
}

void VoicemailWindow::showError(const QString& text)
{
    // One line: the router's own message may run on.
    m_errorText->setText(text.section(u'\n', 0, 0).trimmed());
    m_errorText->setToolTip(text);
    m_errorRow->show();
}

void VoicemailWindow::clearError()
{
    m_errorText->clear();
    m_errorText->setToolTip(QString());
    m_errorRow->hide();
}

void VoicemailWindow::updateCounts()
{
    const int messages = m_voicemailModel->rowCount();
    const int faxes = m_faxModel->rowCount();
    const QString messageText = messages == 1 ? tr("1 message") : tr("%1 messages").arg(messages);
    const QString faxText = faxes == 1 ? tr("1 fax") : tr("%1 faxes").arg(faxes);
    m_countLabel->setText(tr("%1 (%2 new), %3 (%4 new)")
                              .arg(messageText)
                              .arg(m_voicemailModel->newCount())
                              .arg(faxText)
                              .arg(m_faxModel->newCount()));
}

VoicemailWindow::Tab VoicemailWindow::currentTab() const
{
    return m_tabs->currentIndex() == FaxTab ? FaxTab : VoicemailTab;
}

QTableView* VoicemailWindow::table(Tab tab) const
{
    return tab == FaxTab ? m_faxTable : m_voicemailTable;
}

QList<int> VoicemailWindow::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : table(currentTab())->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool VoicemailWindow::selectRow(Tab tab, int row)
{
    QTableView* view = table(tab);
    if (row < 0 || row >= view->model()->rowCount())
        return false;
    m_tabs->setCurrentIndex(tab);
    view->selectRow(row);
    return true;
}

void VoicemailWindow::updateActions()
{
    const bool busy = m_loading || m_transferring;
    const int selected = int(selectedRows().size());
    const bool fax = currentTab() == FaxTab;
    m_play->setText(fax ? tr("Open") : tr("Play"));
    m_play->setIcon(
        QIcon::fromTheme(fax ? QStringLiteral("document-open") : QStringLiteral("media-playback-start")));
    m_play->setEnabled(!busy && selected == 1);
    m_save->setEnabled(!busy && selected == 1);
    m_delete->setEnabled(!busy && selected >= 1);
    m_reload->setEnabled(!busy);
    m_cancel->setEnabled(busy);
    m_progress->setVisible(busy);
}

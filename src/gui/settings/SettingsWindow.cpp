#include "SettingsWindow.h"

#include "GlobalPages.h"
#include "LocationPages.h"

#include "app/SettingsChanges.h"
#include "base/Localization.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SecretStore.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
constexpr int UidRole = Qt::UserRole;

QStringList passwordsOf(const TNPreferences& prefs)
{
    return {prefs.passWord, prefs.remotePassWord, prefs.FTPPassWord};
}

} // namespace

SettingsWindow::SettingsWindow(NotificationCenter& center, TNPreferencesManager& manager, QWidget* parent)
    : QDialog(parent), m_center(center), m_manager(manager)
{
    setWindowTitle(tr("Tondrel Settings"));
    buildLayout();
    resize(900, 560);

    for (GlobalPage* page : m_globalPages) {
        page->load(m_manager.store());
        const QVariantMap values = page->values();
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            m_globalsLoaded.insert(it.key(), it.value());
    }
    m_chosenCurrent = m_manager.isConfigured() ? m_manager.currentUID() : QString();
    reloadList(m_chosenCurrent);

    // The router refuses logins for a while after wrong passwords: say so here.
    m_center.addObserver(this, Notifications::ADDSTATUSBAR, [this](const Notification& n) {
        setStatus(Localization::localizedFormat(QStringLiteral("errorBlockTime"),
                                                n.userInfo.value(QStringLiteral("BlockTime")).toString()),
                  true);
    });
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::buildLayout()
{
    auto* left = new QVBoxLayout;
    left->addWidget(new QLabel(tr("Locations:")));
    m_list = new QListWidget;
    m_list->setMinimumWidth(170);
    m_list->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    left->addWidget(m_list);
    auto* listButtons = new QHBoxLayout;
    m_add = new QPushButton(tr("Add"));
    m_remove = new QPushButton(tr("Remove…"));
    listButtons->addWidget(m_add);
    listButtons->addWidget(m_remove);
    left->addLayout(listButtons);
    m_makeCurrent = new QPushButton(tr("Make current"));
    m_makeCurrent->setToolTip(tr("The current location (in bold) is the router Tondrel works with."));
    left->addWidget(m_makeCurrent);

    m_tabs = new QTabWidget;
    // Every tab visible: the window grows instead.
    m_tabs->setUsesScrollButtons(false);
    m_router = new RouterSettingsPage;
    m_telephony = new TelephonySettingsPage;
    m_monitor = new MonitorSettingsPage;
    m_remote = new RemoteSettingsPage;
    m_ftp = new FtpSettingsPage;
    m_callList = new CallListSettingsPage;
    m_general = new GeneralSettingsPage;
    m_tabs->addTab(m_router, tr("Router"));
    m_tabs->addTab(m_telephony, tr("Telephony"));
    m_tabs->addTab(m_monitor, tr("Call monitor"));
    m_tabs->addTab(m_remote, tr("Remote access"));
    m_tabs->addTab(m_ftp, tr("Voicemail and fax"));
    m_tabs->addTab(m_callList, tr("Call list"));
    m_tabs->addTab(m_general, tr("General"));
    m_locationPages = {m_router, m_telephony, m_monitor, m_remote, m_ftp};
    m_globalPages = {m_callList, m_general};

    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addWidget(m_tabs, 1);

    m_status = new QLabel;
    m_status->setWordWrap(true);
    m_status->setHidden(true);
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);

    auto* main = new QVBoxLayout(this);
    main->addLayout(columns, 1);
    main->addWidget(m_status);
    main->addWidget(m_buttons);

    connect(m_buttons, &QDialogButtonBox::accepted, this, &SettingsWindow::save);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_add, &QPushButton::clicked, this, &SettingsWindow::addLocation);
    connect(m_remove, &QPushButton::clicked, this, &SettingsWindow::removeSelectedLocation);
    connect(m_makeCurrent, &QPushButton::clicked, this, &SettingsWindow::makeSelectedCurrent);
    connect(m_list, &QListWidget::currentItemChanged, this, &SettingsWindow::selectionChanged);
    connect(m_list, &QListWidget::itemChanged, this, &SettingsWindow::itemRenamed);
    connect(m_router, &RouterSettingsPage::nameEdited, this, &SettingsWindow::nameEdited);
}

QPushButton* SettingsWindow::saveButton() const
{
    return m_buttons->button(QDialogButtonBox::Save);
}

QPushButton* SettingsWindow::cancelButton() const
{
    return m_buttons->button(QDialogButtonBox::Cancel);
}

void SettingsWindow::setRemovalConfirmation(std::function<bool(const QString& name)> confirm)
{
    m_confirmRemoval = std::move(confirm);
}

SettingsWindow::Working& SettingsWindow::working(const QString& uid)
{
    auto it = m_working.find(uid);
    if (it == m_working.end()) {
        Working w;
        w.copy = TNPreferences::initWithLocationUID(uid, m_manager.store(), m_manager.secrets());
        w.stored = w.copy->toLocationDictionary();
        w.passwords = passwordsOf(*w.copy);
        it = m_working.emplace(uid, std::move(w)).first;
    }
    return it->second;
}

QListWidgetItem* SettingsWindow::itemFor(const QString& uid) const
{
    for (int i = 0; i < m_list->count(); ++i)
        if (m_list->item(i)->data(UidRole).toString() == uid)
            return m_list->item(i);
    return nullptr;
}

void SettingsWindow::reloadList(const QString& select)
{
    m_switching = true;
    m_list->clear();
    for (const auto& prefs : m_manager.locations()) {
        // A name edited but not saved yet stays as edited.
        const auto it = m_working.find(prefs->uid);
        const QString name = it != m_working.end() ? it->second.copy->locationName : prefs->locationName;
        auto* item = new QListWidgetItem(name, m_list);
        item->setData(UidRole, prefs->uid);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
    QListWidgetItem* chosen = itemFor(select);
    if (!chosen && m_list->count() > 0)
        chosen = m_list->item(0);
    if (chosen)
        m_list->setCurrentItem(chosen);
    m_switching = false;
    showLocation(chosen ? chosen->data(UidRole).toString() : QString());
}

void SettingsWindow::markCurrent()
{
    const QSignalBlocker block(m_list);
    for (int i = 0; i < m_list->count(); ++i) {
        QListWidgetItem* item = m_list->item(i);
        QFont font = item->font();
        font.setBold(item->data(UidRole).toString() == m_chosenCurrent);
        item->setFont(font);
    }
    m_makeCurrent->setEnabled(!m_shownUID.isEmpty() && m_shownUID != m_chosenCurrent);
}

void SettingsWindow::selectLocation(const QString& uid)
{
    if (QListWidgetItem* item = itemFor(uid))
        m_list->setCurrentItem(item);
}

void SettingsWindow::selectionChanged(QListWidgetItem* item, QListWidgetItem* previous)
{
    if (m_switching)
        return;
    if (!leaveLocation()) {
        // Back to the location with the refused field.
        m_switching = true;
        m_list->setCurrentItem(previous);
        m_switching = false;
        return;
    }
    showLocation(item ? item->data(UidRole).toString() : QString());
}

bool SettingsWindow::leaveLocation()
{
    if (m_shownUID.isEmpty())
        return true;
    for (LocationPage* page : m_locationPages) {
        if (!page->validate()) {
            m_tabs->setCurrentWidget(page);
            setStatus(tr("Please correct the marked fields."), true);
            m_correcting = true;
            return false;
        }
    }
    clearCorrectionRequest();
    TNPreferences& copy = *working(m_shownUID).copy;
    for (LocationPage* page : m_locationPages)
        page->store(copy);
    return true;
}

void SettingsWindow::showLocation(const QString& uid)
{
    m_shownUID = uid;
    for (LocationPage* page : m_locationPages)
        page->setEnabled(!uid.isEmpty());
    if (!uid.isEmpty()) {
        const TNPreferences& copy = *working(uid).copy;
        for (LocationPage* page : m_locationPages)
            page->load(copy);
    }
    m_remove->setEnabled(!uid.isEmpty());
    markCurrent();
}

void SettingsWindow::itemRenamed(QListWidgetItem* item)
{
    if (m_switching)
        return;
    const QString uid = item->data(UidRole).toString();
    const QString name = item->text().trimmed();
    working(uid).copy->locationName = name;
    if (uid == m_shownUID)
        m_router->nameField()->setText(name);
}

void SettingsWindow::nameEdited(const QString& name)
{
    if (QListWidgetItem* item = itemFor(m_shownUID)) {
        const QSignalBlocker block(m_list);
        item->setText(name);
    }
}

void SettingsWindow::setStatus(const QString& text, bool problem)
{
    m_correcting = false;
    m_status->setText(text);
    m_status->setStyleSheet(problem ? QStringLiteral("color: #c0392b;") : QString());
    m_status->setHidden(text.isEmpty());
}

void SettingsWindow::clearCorrectionRequest()
{
    if (m_correcting)
        setStatus(QString(), false);
    m_correcting = false;
}

void SettingsWindow::addLocation()
{
    if (!leaveLocation())
        return;
    const QString uid = m_manager.addNewLocation();
    // The first location becomes current at once: the program has something to work with.
    if (m_manager.currentUID().isEmpty()) {
        m_manager.activateCurrentLocation();
        m_chosenCurrent = m_manager.currentUID();
    }
    m_center.post(Notifications::REFRESHLOCATIONSMENU, this);
    reloadList(uid);
    m_tabs->setCurrentWidget(m_router);
    m_router->nameField()->setFocus();
    m_router->nameField()->selectAll();
    setStatus(tr("Location added. Enter its router's details and save."), false);
}

void SettingsWindow::removeSelectedLocation()
{
    const QString uid = m_shownUID;
    if (uid.isEmpty())
        return;
    const QString name = working(uid).copy->locationName;
    bool confirmed = false;
    if (m_confirmRemoval) {
        confirmed = m_confirmRemoval(name);
    } else {
        QMessageBox box(
            QMessageBox::Warning, tr("Remove location"),
            tr("Remove the location \"%1\"? Its passwords and its calls in the call list are deleted "
               "as well. This cannot be undone.")
                .arg(name),
            QMessageBox::Yes | QMessageBox::Cancel, this);
        box.setDefaultButton(QMessageBox::Cancel);
        confirmed = box.exec() == QMessageBox::Yes;
    }
    if (!confirmed)
        return;
    m_manager.removeLocationForID(uid);
    m_working.erase(uid);
    if (m_chosenCurrent == uid || m_chosenCurrent.isEmpty())
        m_chosenCurrent = m_manager.currentUID();
    m_shownUID.clear();
    m_center.post(Notifications::REFRESHLOCATIONSMENU, this);
    m_center.post(Notifications::ACTIVATESETTINGS, this);
    reloadList(m_chosenCurrent);
    setStatus(tr("Location \"%1\" removed.").arg(name), false);
}

void SettingsWindow::makeSelectedCurrent()
{
    if (m_shownUID.isEmpty())
        return;
    m_chosenCurrent = m_shownUID;
    markCurrent();
}

bool SettingsWindow::saveLocation(const QString& uid, Working& w, QStringList* changedKeys,
                                  bool* passwordsChanged)
{
    const QVariantMap dict = w.copy->toLocationDictionary();
    QVariantMap changed;
    for (auto it = dict.cbegin(); it != dict.cend(); ++it)
        if (!w.stored.contains(it.key()) || w.stored.value(it.key()) != it.value())
            changed.insert(it.key(), it.value());
    const QStringList passwords = passwordsOf(*w.copy);
    *passwordsChanged = passwords != w.passwords;
    *changedKeys = changed.keys();
    if (changed.isEmpty() && !*passwordsChanged)
        return true;
    if (!changed.isEmpty()) {
        // Only what was edited: keys written meanwhile by the tray (call monitor switch, remote
        // access) keep their values.
        changed.insert(keys::SaveDate, QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
        if (!m_manager.saveLocationValues(changed, uid)) {
            setStatus(tr("The settings of \"%1\" could not be written.").arg(w.copy->locationName), true);
            return false;
        }
        w.stored = w.copy->toLocationDictionary();
    }
    if (*passwordsChanged) {
        if (!w.copy->storePasswords()) {
            setStatus(tr("The passwords of \"%1\" could not be stored: %2")
                          .arg(w.copy->locationName, m_manager.secrets().lastError()),
                      true);
            return false;
        }
        w.passwords = passwords;
    }
    // The program's own settings object of the location follows.
    if (auto live = m_manager.locationPreferencesForUID(uid))
        live->loadPreferencesWithLocationUID(uid);
    return true;
}

bool SettingsWindow::save()
{
    if (!leaveLocation())
        return false;
    for (GlobalPage* page : m_globalPages) {
        if (!page->validate()) {
            m_tabs->setCurrentWidget(page);
            setStatus(tr("Please correct the marked fields."), true);
            m_correcting = true;
            return false;
        }
    }
    clearCorrectionRequest();

    bool ok = true;
    SettingsChanges changes;
    for (auto& [uid, w] : m_working) {
        QStringList changed;
        bool passwordsChanged = false;
        if (!saveLocation(uid, w, &changed, &passwordsChanged)) {
            ok = false;
            continue;
        }
        changes.addLocation(changed, passwordsChanged);
    }

    QStringList globalsChanged;
    for (GlobalPage* page : m_globalPages) {
        const QVariantMap values = page->values();
        for (auto it = values.cbegin(); it != values.cend(); ++it) {
            if (m_globalsLoaded.value(it.key()) == it.value())
                continue;
            m_manager.store().setValue(it.key(), it.value());
            globalsChanged << it.key();
        }
    }
    if (!globalsChanged.isEmpty()) {
        if (m_manager.store().sync()) {
            for (GlobalPage* page : m_globalPages) {
                const QVariantMap values = page->values();
                for (auto it = values.cbegin(); it != values.cend(); ++it)
                    m_globalsLoaded.insert(it.key(), it.value());
            }
        } else {
            setStatus(tr("The settings file could not be written."), true);
            ok = false;
        }
    }
    changes.addGlobals(globalsChanged);

    if (!m_chosenCurrent.isEmpty() && m_chosenCurrent != m_manager.currentUID()) {
        m_manager.activateCurrentLocationForID(m_chosenCurrent);
        changes.setCurrentLocationChanged();
    }
    changes.post(m_center, this);
    if (ok)
        accept();
    return ok;
}

#pragma once

#include <QDialog>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <map>
#include <memory>

class CallListSettingsPage;
class NotificationCenter;
class FtpSettingsPage;
class GeneralSettingsPage;
class GlobalPage;
class LocationPage;
class MonitorSettingsPage;
class QDialogButtonBox;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTabWidget;
class RemoteSettingsPage;
class RouterSettingsPage;
class TelephonySettingsPage;
class TNPreferences;
class TNPreferencesManager;

// The settings window: the locations on the left, their settings and the shared ones in tabs on
// the right. Edits go into working copies of the locations; Save writes the keys that changed
// (passwords to the password store) and tells the rest of the program. Adding and removing a
// location act at once, as the locations menu does.
class SettingsWindow : public QDialog
{
    Q_OBJECT
public:
    enum Tab { RouterTab, TelephonyTab, MonitorTab, RemoteTab, FtpTab, CallListTab, GeneralTab };

    SettingsWindow(NotificationCenter& center, TNPreferencesManager& manager, QWidget* parent = nullptr);
    ~SettingsWindow() override;

    // Asked before a location goes, with its name; a question box unless set.
    void setRemovalConfirmation(std::function<bool(const QString& name)> confirm);

    QListWidget* locationList() const { return m_list; }
    QTabWidget* tabs() const { return m_tabs; }
    QPushButton* addButton() const { return m_add; }
    QPushButton* removeButton() const { return m_remove; }
    QPushButton* makeCurrentButton() const { return m_makeCurrent; }
    QPushButton* saveButton() const;
    QPushButton* cancelButton() const;
    QLabel* statusLine() const { return m_status; }
    RouterSettingsPage* routerPage() const { return m_router; }
    TelephonySettingsPage* telephonyPage() const { return m_telephony; }
    MonitorSettingsPage* monitorPage() const { return m_monitor; }
    RemoteSettingsPage* remotePage() const { return m_remote; }
    FtpSettingsPage* ftpPage() const { return m_ftp; }
    CallListSettingsPage* callListPage() const { return m_callList; }
    GeneralSettingsPage* generalPage() const { return m_general; }

    // The location shown in the pages, "" when there is none.
    QString shownUID() const { return m_shownUID; }
    // The location that becomes current on Save.
    QString chosenCurrentUID() const { return m_chosenCurrent; }
    void selectLocation(const QString& uid);

    // Checks every field, writes what changed and closes; false (window stays open, the refused
    // fields marked) when something is refused or cannot be written.
    bool save();
    void addLocation();
    void removeSelectedLocation();
    void makeSelectedCurrent();

private:
    struct Working
    {
        std::shared_ptr<TNPreferences> copy;
        QVariantMap stored;    // the dictionary when loaded or last saved
        QStringList passwords; // likewise
    };

    void buildLayout();
    void reloadList(const QString& select);
    void markCurrent();
    void selectionChanged(QListWidgetItem* item, QListWidgetItem* previous);
    void itemRenamed(QListWidgetItem* item);
    void nameEdited(const QString& name);
    // Checks the shown location's pages and keeps their values in its copy.
    bool leaveLocation();
    void showLocation(const QString& uid);
    Working& working(const QString& uid);
    QListWidgetItem* itemFor(const QString& uid) const;
    void setStatus(const QString& text, bool problem);
    // Takes back "correct the marked fields" once they are.
    void clearCorrectionRequest();
    // Writes one location's changes; false with the reason in the status line.
    bool saveLocation(const QString& uid, Working& w, QStringList* changedKeys, bool* passwordsChanged);

    NotificationCenter& m_center;
    TNPreferencesManager& m_manager;
    std::function<bool(const QString&)> m_confirmRemoval;
    QListWidget* m_list = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_makeCurrent = nullptr;
    QTabWidget* m_tabs = nullptr;
    QLabel* m_status = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
    RouterSettingsPage* m_router = nullptr;
    TelephonySettingsPage* m_telephony = nullptr;
    MonitorSettingsPage* m_monitor = nullptr;
    RemoteSettingsPage* m_remote = nullptr;
    FtpSettingsPage* m_ftp = nullptr;
    CallListSettingsPage* m_callList = nullptr;
    GeneralSettingsPage* m_general = nullptr;
    QList<LocationPage*> m_locationPages;
    QList<GlobalPage*> m_globalPages;

    std::map<QString, Working> m_working;
    QVariantMap m_globalsLoaded;
    QString m_shownUID;
    QString m_chosenCurrent;
    bool m_switching = false;
    bool m_correcting = false;
};

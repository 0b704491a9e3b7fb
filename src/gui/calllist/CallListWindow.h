#pragma once

#include "calllist/CallListActions.h"

#include <QMainWindow>

#include <functional>

class CallListGroups;
class AddContactDialog;
class CallListModel;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QTableView;
class QTimer;
class SettingsStore;
class SmartListEditor;
class StreamListener;
class TNCallinglist;
class TNPreferencesManager;
struct CallRow;

// The call list of the active profile: the lists with their counters on the left, the calls
// grouped by day on the right, a search over the calls, and the actions on calls (dial, copy,
// memo, delete, look up online, add to the address book), on the list (reload from the router,
// file import, export, statistics) and on the smart lists (new, edit, delete).
// Follows the call database's notifications; while hidden it only notes that it is stale.
class CallListSync;
class ContactsServices;

class CallListWindow : public QMainWindow
{
    Q_OBJECT
public:
    CallListWindow(TNPreferencesManager& manager, TNCallinglist& calls, CallListSync& sync,
                   ContactsServices& contacts, StreamListener& listener, SettingsStore& settings,
                   QWidget* parent = nullptr);
    ~CallListWindow() override;

    // Shows the window in front, read afresh.
    void openCallList();

    CallListModel* model() const { return m_model; }
    QTableView* table() const { return m_table; }
    CallListGroups* groups() const { return m_groups; }
    QLineEdit* searchField() const { return m_search; }
    QComboBox* searchColumnBox() const { return m_searchColumn; }
    QProgressBar* importProgress() const { return m_progress; }
    QLabel* countLabel() const { return m_countLabel; }

    QAction* callAction() const { return m_call; }
    QAction* copyNumberAction() const { return m_copyNumber; }
    QAction* copyDetailsAction() const { return m_copyDetails; }
    QAction* memoAction() const { return m_memo; }
    QAction* deleteAction() const { return m_delete; }
    QAction* reloadAction() const { return m_reload; }
    QAction* importAction() const { return m_import; }
    QAction* exportAction() const { return m_export; }
    QAction* statisticsAction() const { return m_statistics; }
    QAction* newCallAction() const { return m_newCall; }
    QAction* newSmartListAction() const { return m_newSmartList; }
    QAction* lookUpAction() const { return m_lookUp; }
    QAction* addContactAction() const { return m_addContact; }

    // The profile shown (the current location's active profile).
    int profile() const { return m_profile; }
    // Table rows of the selected calls, in table order.
    QList<int> selectedCallRows() const;
    bool selectGroup(int selector);

    // Asks before deleting that many calls; a question box unless set (tests).
    void setConfirmDelete(std::function<bool(int count)> confirm) { m_confirmDelete = std::move(confirm); }
    // Deletes the selected calls (after the question); the number deleted.
    int deleteSelectedCalls();
    void copySelectedNumber();
    void copySelectedDetails();
    // Writes the shown list as delimited text; false (with the reason in the status bar) on failure.
    bool exportToFile(const QString& path);
    // Imports a journal file on a background thread; false when an import already runs.
    bool importFile(const QString& path);
    bool isImporting() const { return m_importing; }

    // The id of the smart list behind a side-list selector, 0 when it is none.
    qint64 smartListIDForSelector(int selector) const;
    // Opens the editor (non-modal) on that list, a new one for id 0.
    SmartListEditor* openSmartListEditor(qint64 id);
    // Asks before deleting the named smart list; a question box unless set (tests).
    void setConfirmSmartListDelete(std::function<bool(const QString& name)> confirm)
    {
        m_confirmSmartListDelete = std::move(confirm);
    }
    // Deletes the smart list behind the selector (after the question).
    bool deleteSmartList(int selector);

    // Asks the web directories for the selected number's name on a pool thread; false when no
    // lookup can start. lookUpFinished reports the outcome.
    bool lookUpSelectedNumber();
    bool isLookingUp() const { return m_lookingUp; }
    // The dialog adding the selected call's number to the address book; null without one.
    AddContactDialog* openAddContact();

    // Read the profile, counters and list again.
    void reloadAll();
    void reloadCounters(bool recount);
    void reloadList();

signals:
    // Dial this number (empty: open the new-call window) for the contact [abid, name, label].
    void callRequested(const QString& number, const QStringList& contact);
    void importFinished(int imported);
    // The name a lookup found, "" when no directory knew the number.
    void lookUpFinished(const QString& number, const QString& name);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildActions();
    void buildLayout();
    void observeNotifications();
    void restoreSort();
    void applySearch();
    void groupChosen(int selector);
    void updateActions();
    void showContextMenu(const QPoint& pos);
    void openMemo();
    void openStatistics();
    void showGroupsContextMenu(const QPoint& pos);
    void lookUpDone(const QString& number, const QString& name);
    void contactAdded(const QString& number);
    void chooseImportFile();
    void chooseExportFile();
    void startRouterImport();
    void importProgressed(qint64 done, qint64 total);
    void importDone(int result);
    QList<CallRow> currentCalls() const;
    int currentCallsCount() const;
    // Runs now when shown, when next shown otherwise.
    void whenShown(const std::function<void()>& work);

    TNPreferencesManager& m_manager;
    TNCallinglist& m_calls;
    CallListSync& m_sync;
    CallListActions m_actions;
    StreamListener& m_listener;
    SettingsStore& m_settings;
    int m_profile = 0;
    bool m_stale = true;
    bool m_importing = false;
    bool m_lookingUp = false;
    std::function<bool(int)> m_confirmDelete;
    std::function<bool(const QString&)> m_confirmSmartListDelete;

    CallListModel* m_model = nullptr;
    CallListGroups* m_groups = nullptr;
    QTableView* m_table = nullptr;
    QLineEdit* m_search = nullptr;
    QComboBox* m_searchColumn = nullptr;
    QTimer* m_searchTimer = nullptr;
    QProgressBar* m_progress = nullptr;
    QLabel* m_countLabel = nullptr;
    QString m_importPath;

    QAction* m_call = nullptr;
    QAction* m_copyNumber = nullptr;
    QAction* m_copyDetails = nullptr;
    QAction* m_memo = nullptr;
    QAction* m_delete = nullptr;
    QAction* m_reload = nullptr;
    QAction* m_import = nullptr;
    QAction* m_export = nullptr;
    QAction* m_statistics = nullptr;
    QAction* m_newCall = nullptr;
    QAction* m_newSmartList = nullptr;
    QAction* m_lookUp = nullptr;
    QAction* m_addContact = nullptr;
};

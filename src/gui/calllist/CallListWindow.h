#pragma once

#include <QMainWindow>

#include <functional>

class CallListGroups;
class CallListModel;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QTableView;
class QTimer;
class SettingsStore;
class StreamListener;
class TNCallinglist;
class TNPreferencesManager;
struct CallRow;

// The call list of the active profile: the lists with their counters on the left, the calls
// grouped by day on the right, a search over the calls, and the actions on calls (dial, copy,
// memo, delete) and on the list (reload from the router, file import, export, statistics).
// Follows the call database's notifications; while hidden it only notes that it is stale.
class CallListWindow : public QMainWindow
{
    Q_OBJECT
public:
    CallListWindow(TNPreferencesManager& manager, TNCallinglist& calls, StreamListener& listener,
                   SettingsStore& settings, QWidget* parent = nullptr);
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

    // Read the profile, counters and list again.
    void reloadAll();
    void reloadCounters(bool recount);
    void reloadList();

signals:
    // Dial this number (empty: open the new-call window) for the contact [abid, name, label].
    void callRequested(const QString& number, const QStringList& contact);
    void importFinished(int imported);

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
    StreamListener& m_listener;
    SettingsStore& m_settings;
    int m_profile = 0;
    bool m_stale = true;
    bool m_importing = false;
    std::function<bool(int)> m_confirmDelete;

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
};

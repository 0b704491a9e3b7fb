#pragma once

#include "voicemail/VBFTPConnection.h"
#include "voicemail/VoicemailTransfers.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class CallerNameLookup;
class NotificationCenter;
class Clock;
class QLabel;
class QProgressBar;
class QTabWidget;
class QTableView;
class TNFTPDatasource;
class TNPreferencesManager;
class VoicemailListModel;
class VoicemailMarkerStore;

// The answering machine messages and received faxes of the current location, read from the
// router's storage on a worker thread: play a message or open a fax with the desktop's
// programs, save either elsewhere, delete them. Playing marks the list as checked, so the new
// count drops. Follows "UPDATEABFAXLIST", "RELOADABFAXLIST" and "UPDATEABFAXLISTCLEAN" while shown.
class VoicemailWindow : public QMainWindow
{
    Q_OBJECT
public:
    enum Tab { VoicemailTab, FaxTab };

    VoicemailWindow(NotificationCenter& center, TNPreferencesManager& manager, VoicemailMarkerStore* markers,
                    CallerNameLookup* names, QWidget* parent = nullptr);
    ~VoicemailWindow() override;

    // Shows the window in front, read afresh when it is stale.
    void openVoicemail();
    // A new loading run (a running one is stopped); waits for a running transfer.
    void reload();
    // Stops what runs ("STOPFTPTRANSFER").
    void cancel();

    // Play the selected message or open the selected fax.
    void playSelected();
    void saveSelectedAs();
    void deleteSelected();
    bool selectRow(Tab tab, int row);

    // Where fetched files go; the user's cache folder unless set.
    void setCacheDir(const QString& dir) { m_cacheDir = dir; }
    QString cacheDir() const { return m_cacheDir; }
    // Hands a fetched file to the desktop's player or viewer unless set (tests).
    void setOpenFile(std::function<void(const QString& path)> open) { m_openFile = std::move(open); }
    // Asks before deleting that many entries; a question box unless set (tests).
    void setConfirmDelete(std::function<bool(int count)> confirm) { m_confirmDelete = std::move(confirm); }
    // The file to save to (suggested name, file filter); a file dialog unless set (tests).
    void setChooseSavePath(std::function<QString(const QString& name, const QString& filter)> choose)
    {
        m_chooseSavePath = std::move(choose);
    }
    void setClock(const Clock* clock);

    TNFTPDatasource& datasource() const { return *m_datasource; }
    VoicemailListModel* voicemailModel() const { return m_voicemailModel; }
    VoicemailListModel* faxModel() const { return m_faxModel; }
    QTableView* table(Tab tab) const;
    bool isLoading() const { return m_loading; }
    bool isTransferring() const { return m_transferring; }

signals:
    // A loading run ended (false: failed or cancelled; the error line says why).
    void loadFinished(bool ok);
    // A fetch, save or deletion ended.
    void transferFinished(bool ok);

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Work =
        std::function<VoicemailTransfers::Outcome(VBFTPConnection&, const VBFTPConnection::Settings&)>;
    using Done = std::function<void(const VoicemailTransfers::Outcome&)>;

    void buildActions();
    void buildLayout();
    QTableView* makeTable(VoicemailListModel* model);
    void observeNotifications();
    void whenShown(const std::function<void()>& work);
    void clearLists();
    void voicemailsLoaded();
    void faxLoaded();
    void loadingFailed(const QString& message);
    void refreshNewMarkers();
    void updateActions();
    void updateCounts();
    void showError(const QString& text);
    void clearError();
    void showContextMenu(const QPoint& pos);
    Tab currentTab() const;
    QList<int> selectedRows() const;
    // The settings of the current location's storage; false (with the error shown) without one.
    bool storageSettings(VBFTPConnection::Settings* settings);
    void runTransfer(const QString& what, Work work, Done done);
    void transferDone(const VoicemailTransfers::Outcome& outcome, const Done& done);
    void saveFetched(const QString& fetched, const QString& target);
    QString suggestedName(int row) const;

    NotificationCenter& m_center;
    TNPreferencesManager& m_manager;
    std::unique_ptr<TNFTPDatasource> m_datasource;
    const Clock* m_clock;
    QString m_cacheDir;
    std::function<void(const QString&)> m_openFile;
    std::function<bool(int)> m_confirmDelete;
    std::function<QString(const QString&, const QString&)> m_chooseSavePath;
    bool m_stale = true;
    bool m_loading = false;
    bool m_transferring = false;
    bool m_reloadPending = false;
    bool m_cancelled = false;

    VoicemailListModel* m_voicemailModel = nullptr;
    VoicemailListModel* m_faxModel = nullptr;
    QTabWidget* m_tabs = nullptr;
    QTableView* m_voicemailTable = nullptr;
    QTableView* m_faxTable = nullptr;
    QWidget* m_errorRow = nullptr;
    QLabel* m_errorText = nullptr;
    QLabel* m_statusText = nullptr;
    QLabel* m_countLabel = nullptr;
    QProgressBar* m_progress = nullptr;

    QAction* m_reload = nullptr;
    QAction* m_cancel = nullptr;
    QAction* m_play = nullptr;
    QAction* m_save = nullptr;
    QAction* m_delete = nullptr;
};

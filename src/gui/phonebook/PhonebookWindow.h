#pragma once

#include "contacts/BoxPhonebookReader.h"

#include <QWidget>

#include <functional>

class NotificationCenter;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class RouterSessions;
class SettingsStore;
class TNPreferencesManager;
struct BoxContactEntry;

// The router's phone book (the one its telephones show): listed, a contact added, or replaced
// by a group of the address book. Every exchange runs on a worker thread.
class PhonebookWindow : public QWidget
{
    Q_OBJECT
public:
    PhonebookWindow(NotificationCenter& center, TNPreferencesManager& manager, RouterSessions& sessions,
                    SettingsStore& settings, QWidget* parent = nullptr);

    void reload();
    void addContact(const BoxContactEntry& entry);
    void sendGroup(const QString& group);

    QTreeWidget* contactList() const { return m_list; }
    QString statusText() const;
    bool isBusy() const { return m_busy; }
    // Tests answer the question before the router's book is replaced.
    void setConfirmReplace(std::function<bool(const QString& group, int contacts)> confirm);

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Work = std::function<bool(QVector<BoxPhonebook>* books, QString* error)>;
    void run(const QString& what, Work work, const QString& done);
    void finished(bool ok, const QVector<BoxPhonebook>& books, const QString& error, const QString& done);
    // Lists the contacts; their number.
    int showBooks(const QVector<BoxPhonebook>& books);
    void reloadGroups();
    void askForContact();
    void setBusy(bool busy);

    TNPreferencesManager& m_manager;
    RouterSessions& m_sessions;
    SettingsStore& m_settings;
    QTreeWidget* m_list;
    QComboBox* m_groups;
    QPushButton* m_reload;
    QPushButton* m_add;
    QPushButton* m_send;
    QProgressBar* m_progress;
    QLabel* m_status;
    bool m_busy = false;
    bool m_loadedOnce = false;
    std::function<bool(const QString&, int)> m_confirmReplace;
};

#pragma once

#include "box/RouterCommand.h"
#include "calllist/DialCompletion.h"

#include <QStringList>
#include <QWidget>

#include <functional>

class ContactsServices;
class QComboBox;
class QCompleter;
class QLabel;
class QLineEdit;
class QPushButton;
class QStringListModel;
class StreamListener;
class TNCallinglist;
class TNPreferencesManager;

// The new-call window: a number (typed, pasted or from a URL) with its unified form and the
// name it belongs to, completion from the address book and the caller cache, the extension that
// rings first, and dial / hang up through the router on a background thread.
class DialWindow : public QWidget
{
    Q_OBJECT
public:
    // Runs one router command (action, number, port) on a pool thread.
    using RouterCommand =
        std::function<RouterCommandResult(const QString& action, const QString& number, const QString& port)>;
    // Asks before dialling when the location wants it ("ConfirmDial"); a dialog unless set.
    using Confirm = std::function<bool(const QString& number, const QString& name)>;

    DialWindow(TNPreferencesManager& manager, StreamListener& listener, TNCallinglist* calls,
               ContactsServices& contacts, RouterCommand command, QWidget* parent = nullptr);

    void setConfirm(Confirm confirm) { m_confirm = std::move(confirm); }

    // The new-call window with a number and its contact ["abid", "name", "label"] (may be empty).
    void openWithNumber(const QString& number, const QStringList& contact);
    // The location's extensions and the completions, after settings or the book changed.
    void reloadSources();

    QLineEdit* numberField() const { return m_number; }
    QLabel* nameLabel() const { return m_name; }
    bool isBusy() const { return m_busy; }

    void dial();
    void hangUp();

signals:
    // A command finished: its action and whether the router took it.
    void commandFinished(const QString& action, bool ok);

private:
    void onTextChanged(const QString& text);
    void runCommand(const QString& action, const QString& number, const QString& port);
    void commandDone(const QString& action, const RouterCommandResult& result);
    void setStatus(const QString& text, bool error);
    QString currentPort() const;

    TNPreferencesManager& m_manager;
    StreamListener& m_listener;
    TNCallinglist* m_calls;
    ContactsServices& m_contacts;
    RouterCommand m_command;
    Confirm m_confirm;
    QLineEdit* m_number = nullptr;
    QLabel* m_unified = nullptr;
    QLabel* m_name = nullptr;
    QComboBox* m_extension = nullptr;
    QLabel* m_status = nullptr;
    QPushButton* m_dial = nullptr;
    QPushButton* m_hangUp = nullptr;
    QCompleter* m_completer = nullptr;
    QStringListModel* m_model = nullptr;
    QList<DialCompletion> m_completions;
    QStringList m_contact;
    QString m_callUID;
    bool m_busy = false;
    bool m_settingText = false;
};

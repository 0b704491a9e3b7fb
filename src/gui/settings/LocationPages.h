#pragma once

#include <QVariantList>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class TNPreferences;

// A page of one location's settings. The window loads a working copy of the location into it,
// asks it to check its fields, and has it write them back into the copy.
class LocationPage : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    virtual void load(const TNPreferences& prefs) = 0;
    virtual void store(TNPreferences& prefs) const = 0;
    // Shows a message next to every refused field; true when all are fine.
    virtual bool validate() { return true; }
};

class RouterSettingsPage final : public LocationPage
{
    Q_OBJECT
public:
    explicit RouterSettingsPage(QWidget* parent = nullptr);
    void load(const TNPreferences& prefs) override;
    void store(TNPreferences& prefs) const override;
    bool validate() override;

    QLineEdit* nameField() const { return m_name; }
    QLineEdit* hostField() const { return m_host; }
    QLineEdit* webPortField() const { return m_webPort; }
    QLineEdit* userField() const { return m_user; }
    QLineEdit* passwordField() const { return m_password; }
    QLineEdit* tr064PortField() const { return m_tr064Port; }
    QLineEdit* monitorPortField() const { return m_monitorPort; }
    QLabel* hostMessage() const { return m_hostMessage; }
    QLabel* webPortMessage() const { return m_webPortMessage; }

signals:
    void nameEdited(const QString& name);

private:
    QLineEdit* m_name;
    QLineEdit* m_host;
    QLineEdit* m_webPort;
    QLineEdit* m_user;
    QLineEdit* m_password;
    QLineEdit* m_tr064Port;
    QLineEdit* m_monitorPort;
    QLabel* m_hostMessage;
    QLabel* m_webPortMessage;
    QLabel* m_tr064PortMessage;
    QLabel* m_monitorPortMessage;
};

// Dialling context, dialling and the router's extensions and own numbers.
class TelephonySettingsPage final : public LocationPage
{
    Q_OBJECT
public:
    explicit TelephonySettingsPage(QWidget* parent = nullptr);
    void load(const TNPreferences& prefs) override;
    void store(TNPreferences& prefs) const override;
    bool validate() override;

    // International prefix, country code, trunk prefix, area code.
    QLineEdit* prefixField(int part) const { return m_prefix[part]; }
    QLabel* prefixMessage() const { return m_prefixMessage; }
    QComboBox* dialPortBox() const { return m_dialPort; }
    QCheckBox* confirmDialBox() const { return m_confirmDial; }
    QCheckBox* hideOwnNumberBox() const { return m_hideOwnNumber; }
    QTableWidget* extensionTable() const { return m_extensions; }
    QTableWidget* lineTable() const { return m_lines; }

    // Columns of the tables.
    enum { ExtNumber, ExtTitle, ExtShow };
    enum { LineNumber, LineTitle, LineHideMonitor, LineHideList };

private:
    QLineEdit* m_prefix[4];
    QLabel* m_prefixMessage;
    QComboBox* m_dialPort;
    QCheckBox* m_confirmDial;
    QCheckBox* m_hideOwnNumber;
    QTableWidget* m_extensions;
    QTableWidget* m_lines;
    // As loaded: entries keep the keys the page does not show.
    QVariantList m_loadedExtensions;
    QVariantList m_loadedLines;
    bool m_loadedWithoutPrefixes = false;
};

// The call monitor, how calls are announced, and reverse lookup.
class MonitorSettingsPage final : public LocationPage
{
    Q_OBJECT
public:
    explicit MonitorSettingsPage(QWidget* parent = nullptr);
    void load(const TNPreferences& prefs) override;
    void store(TNPreferences& prefs) const override;

    QCheckBox* callMonitorBox() const { return m_callMonitor; }
    QCheckBox* notificationsBox() const { return m_notifications; }
    QCheckBox* reverseSearchBox() const { return m_reverseSearch; }

private:
    QCheckBox* m_callMonitor;
    QCheckBox* m_notifications;
    QCheckBox* m_callOptions;
    QCheckBox* m_autoClose;
    QCheckBox* m_reverseSearch;
};

class RemoteSettingsPage final : public LocationPage
{
    Q_OBJECT
public:
    explicit RemoteSettingsPage(QWidget* parent = nullptr);
    void load(const TNPreferences& prefs) override;
    void store(TNPreferences& prefs) const override;
    bool validate() override;

    QCheckBox* remoteAccessBox() const { return m_remoteAccess; }
    QLineEdit* hostField() const { return m_host; }
    QLineEdit* portField() const { return m_port; }
    QLineEdit* userField() const { return m_user; }
    QLineEdit* passwordField() const { return m_password; }
    QPushButton* forgetCertificateButton() const { return m_forget; }
    QLabel* certificateLabel() const { return m_certificateState; }
    QLabel* hostMessage() const { return m_hostMessage; }

private:
    void showCertificate();

    QCheckBox* m_remoteAccess;
    QLineEdit* m_host;
    QLineEdit* m_port;
    QLineEdit* m_user;
    QLineEdit* m_password;
    QLabel* m_hostMessage;
    QLabel* m_portMessage;
    QLabel* m_certificateState;
    QPushButton* m_forget;
    QString m_certificate;
};

// Storage of voicemail and fax files on the router.
class FtpSettingsPage final : public LocationPage
{
    Q_OBJECT
public:
    explicit FtpSettingsPage(QWidget* parent = nullptr);
    void load(const TNPreferences& prefs) override;
    void store(TNPreferences& prefs) const override;
    bool validate() override;

    QLineEdit* userField() const { return m_user; }
    QLineEdit* passwordField() const { return m_password; }
    QLineEdit* portField() const { return m_port; }
    QCheckBox* sslBox() const { return m_ssl; }

private:
    QLineEdit* m_user;
    QLineEdit* m_password;
    QLineEdit* m_port;
    QCheckBox* m_ssl;
    QLabel* m_portMessage;
};

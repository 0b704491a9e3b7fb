#pragma once

#include <QWizardPage>

class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QSpinBox;
class SetupWizard;

// Choose a router found on the network, or type its address.
class RouterChoicePage : public QWizardPage
{
    Q_OBJECT
public:
    explicit RouterChoicePage(SetupWizard* wizard);
    void initializePage() override;
    bool isComplete() const override;
    bool validatePage() override;

    QListWidget* routerList() const { return m_list; }
    QLineEdit* addressField() const { return m_address; }
    QLabel* statusLabel() const { return m_status; }
    void search();

private:
    void showDevices(const QVariantList& devices);

    SetupWizard* m_wizard;
    QListWidget* m_list;
    QLineEdit* m_address;
    QPushButton* m_searchButton;
    QLabel* m_status;
    bool m_searched = false;
};

// The router user and password.
class LoginPage : public QWizardPage
{
    Q_OBJECT
public:
    explicit LoginPage(SetupWizard* wizard);
    void initializePage() override;
    bool validatePage() override;

    QLineEdit* userField() const { return m_user; }
    QLineEdit* passwordField() const { return m_password; }

private:
    SetupWizard* m_wizard;
    QLineEdit* m_user;
    QLineEdit* m_password;
};

// Reads the router in the background and shows what was learnt; complete only on success.
class ReadPage : public QWizardPage
{
    Q_OBJECT
public:
    explicit ReadPage(SetupWizard* wizard);
    void initializePage() override;
    void cleanupPage() override;
    bool isComplete() const override;
    bool validatePage() override;

    QLabel* statusLabel() const { return m_status; }
    QLineEdit* nameField() const { return m_name; }
    QLabel* summaryLabel() const { return m_summary; }

private:
    void finished(int generation, bool ok, const QString& error);

    SetupWizard* m_wizard;
    QLabel* m_status;
    QProgressBar* m_busy;
    QWidget* m_details;
    QLineEdit* m_name;
    QLabel* m_summary;
    int m_generation = 0;
    bool m_ok = false;
};

// Remote access: host, port, user and password, all optional.
class RemotePage : public QWizardPage
{
    Q_OBJECT
public:
    explicit RemotePage(SetupWizard* wizard);
    void initializePage() override;
    bool validatePage() override;

    QLineEdit* hostField() const { return m_host; }
    QLineEdit* passwordField() const { return m_password; }

private:
    SetupWizard* m_wizard;
    QLabel* m_help;
    QFormLayout* m_form;
    QLineEdit* m_host;
    QSpinBox* m_port;
    QLineEdit* m_user;
    QLineEdit* m_password;
};

// Saves the new location; the wizard closes when it is written.
class SavePage : public QWizardPage
{
    Q_OBJECT
public:
    explicit SavePage(SetupWizard* wizard);
    void initializePage() override;
    bool validatePage() override;

private:
    SetupWizard* m_wizard;
    QLabel* m_summary;
    QProgressBar* m_progress;
    QLabel* m_error;
};

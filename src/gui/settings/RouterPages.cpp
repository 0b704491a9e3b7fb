#include "LocationPages.h"

#include "SettingsForm.h"

#include "base/TNPreferences.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using SettingsForm::addField;
using SettingsForm::showMessage;

namespace {
QLineEdit* newPortField()
{
    auto* field = new QLineEdit;
    field->setMaximumWidth(100);
    return field;
}

QLineEdit* newPasswordField()
{
    auto* field = new QLineEdit;
    field->setEchoMode(QLineEdit::Password);
    return field;
}

// A field that passed validation holds a number.
int portOf(const QLineEdit* field)
{
    return field->text().trimmed().toInt();
}
} // namespace

// --- router -----------------------------------------------------------------------------------

RouterSettingsPage::RouterSettingsPage(QWidget* parent) : LocationPage(parent)
{
    auto* form = new QFormLayout(this);
    m_name = new QLineEdit;
    addField(form, tr("Name:"), m_name);
    connect(m_name, &QLineEdit::textChanged, this, &RouterSettingsPage::nameEdited);
    m_host = new QLineEdit;
    m_host->setPlaceholderText(QStringLiteral("fritz.box"));
    m_hostMessage = addField(form, tr("Host name or address:"), m_host);
    m_webPort = newPortField();
    m_webPortMessage = addField(form, tr("Web interface port:"), m_webPort);
    m_user = new QLineEdit;
    m_user->setPlaceholderText(tr("none (password only)"));
    addField(form, tr("User name:"), m_user);
    m_password = newPasswordField();
    addField(form, tr("Password:"), m_password);
    auto* note = new QLabel(tr("Kept in the desktop's password store, not in the settings file."));
    note->setWordWrap(true);
    form->addRow(QString(), note);
    m_tr064Port = newPortField();
    m_tr064PortMessage = addField(form, tr("TR-064 port:"), m_tr064Port);
    m_monitorPort = newPortField();
    m_monitorPortMessage = addField(form, tr("Call monitor port:"), m_monitorPort);
}

void RouterSettingsPage::load(const TNPreferences& prefs)
{
    m_name->setText(prefs.locationName);
    m_host->setText(prefs.hostName);
    m_webPort->setText(QString::number(prefs.webPort));
    m_user->setText(prefs.userName);
    m_password->setText(prefs.passWord);
    m_tr064Port->setText(QString::number(prefs.tr064Port));
    m_monitorPort->setText(QString::number(prefs.callMonitorPort));
    for (QLabel* line : {m_hostMessage, m_webPortMessage, m_tr064PortMessage, m_monitorPortMessage})
        showMessage(line, QString());
}

bool RouterSettingsPage::validate()
{
    bool ok = showMessage(m_hostMessage, SettingsForm::hostProblem(m_host->text()));
    ok = showMessage(m_webPortMessage, SettingsForm::portProblem(m_webPort->text())) && ok;
    ok = showMessage(m_tr064PortMessage, SettingsForm::portProblem(m_tr064Port->text())) && ok;
    ok = showMessage(m_monitorPortMessage, SettingsForm::portProblem(m_monitorPort->text())) && ok;
    return ok;
}

void RouterSettingsPage::store(TNPreferences& prefs) const
{
    prefs.locationName = m_name->text().trimmed();
    prefs.hostName = m_host->text().trimmed();
    prefs.webPort = portOf(m_webPort);
    prefs.userName = m_user->text().trimmed();
    prefs.passWord = m_password->text();
    prefs.tr064Port = portOf(m_tr064Port);
    prefs.callMonitorPort = portOf(m_monitorPort);
}

// --- call monitor and notifications -----------------------------------------------------------

MonitorSettingsPage::MonitorSettingsPage(QWidget* parent) : LocationPage(parent)
{
    auto* box = new QVBoxLayout(this);
    m_callMonitor = new QCheckBox(tr("Watch calls through the router's call monitor"));
    m_notifications = new QCheckBox(tr("Show a desktop notification for each call"));
    m_callOptions = new QCheckBox(tr("Offer call options in the call monitor window"));
    m_autoClose = new QCheckBox(tr("Close the call monitor window when the call has ended"));
    m_reverseSearch = new QCheckBox(tr("Look up unknown callers in online directories"));
    for (QCheckBox* b : {m_callMonitor, m_notifications, m_callOptions, m_autoClose, m_reverseSearch})
        box->addWidget(b);
    auto* hint = new QLabel(tr("Without any notification the call monitor window opens for each call."));
    hint->setWordWrap(true);
    box->addWidget(hint);
    box->addStretch();
}

void MonitorSettingsPage::load(const TNPreferences& prefs)
{
    m_callMonitor->setChecked(prefs.useCallmonitor);
    m_notifications->setChecked(prefs.useNotifications);
    m_callOptions->setChecked(prefs.showCallOptions);
    m_autoClose->setChecked(prefs.callAutoClose);
    m_reverseSearch->setChecked(prefs.useReverseSearch);
}

void MonitorSettingsPage::store(TNPreferences& prefs) const
{
    prefs.useCallmonitor = m_callMonitor->isChecked();
    prefs.useNotifications = m_notifications->isChecked();
    prefs.showCallOptions = m_callOptions->isChecked();
    prefs.callAutoClose = m_autoClose->isChecked();
    prefs.useReverseSearch = m_reverseSearch->isChecked();
}

// --- remote access ----------------------------------------------------------------------------

RemoteSettingsPage::RemoteSettingsPage(QWidget* parent) : LocationPage(parent)
{
    auto* form = new QFormLayout(this);
    m_remoteAccess = new QCheckBox(tr("Reach the router from outside over HTTPS"));
    form->addRow(m_remoteAccess);
    m_host = new QLineEdit;
    m_host->setPlaceholderText(tr("e.g. myname.myfritz.net"));
    m_hostMessage = addField(form, tr("Remote host:"), m_host);
    m_port = newPortField();
    m_portMessage = addField(form, tr("HTTPS port:"), m_port);
    m_user = new QLineEdit;
    addField(form, tr("Remote user:"), m_user);
    m_password = newPasswordField();
    addField(form, tr("Remote password:"), m_password);

    m_certificateState = new QLabel;
    m_certificateState->setWordWrap(true);
    m_certificateState->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(tr("Certificate:"), m_certificateState);
    auto* explanation = new QLabel(
        tr("Tondrel remembers the router's certificate the first time it connects from outside and refuses a "
           "different one afterwards, so nobody can pose as your router. If the router really got a new "
           "certificate (after a reset or a firmware update), forget the stored one: the next connection "
           "remembers the new certificate."));
    explanation->setWordWrap(true);
    form->addRow(explanation);
    m_forget = new QPushButton(tr("Forget the stored certificate"));
    form->addRow(QString(), m_forget);
    connect(m_forget, &QPushButton::clicked, this, [this] {
        m_certificate.clear();
        showCertificate();
    });
}

void RemoteSettingsPage::showCertificate()
{
    m_certificateState->setText(m_certificate.isEmpty() ? tr("None stored; the next connection stores it.")
                                                        : tr("Stored: %1").arg(m_certificate));
    m_forget->setEnabled(!m_certificate.isEmpty());
}

void RemoteSettingsPage::load(const TNPreferences& prefs)
{
    m_remoteAccess->setChecked(prefs.remoteAccess);
    m_host->setText(prefs.remoteHostName);
    m_port->setText(QString::number(prefs.remotesslPort));
    m_user->setText(prefs.remoteUserName);
    m_password->setText(prefs.remotePassWord);
    m_certificate = prefs.remoteCertificateKey;
    showCertificate();
    showMessage(m_hostMessage, QString());
    showMessage(m_portMessage, QString());
}

bool RemoteSettingsPage::validate()
{
    // Remote access switched on needs somewhere to go.
    const QString hostProblem = m_remoteAccess->isChecked()
                                    ? SettingsForm::hostProblem(m_host->text())
                                    : SettingsForm::optionalHostProblem(m_host->text());
    bool ok = showMessage(m_hostMessage, hostProblem);
    ok = showMessage(m_portMessage, SettingsForm::portProblem(m_port->text())) && ok;
    return ok;
}

void RemoteSettingsPage::store(TNPreferences& prefs) const
{
    prefs.remoteAccess = m_remoteAccess->isChecked();
    prefs.remoteHostName = m_host->text().trimmed();
    prefs.remotesslPort = portOf(m_port);
    prefs.remoteUserName = m_user->text().trimmed();
    prefs.remotePassWord = m_password->text();
    prefs.remoteCertificateKey = m_certificate;
}

// --- FTP --------------------------------------------------------------------------------------

FtpSettingsPage::FtpSettingsPage(QWidget* parent) : LocationPage(parent)
{
    auto* form = new QFormLayout(this);
    auto* intro =
        new QLabel(tr("Voicemail messages and faxes are fetched from the router's storage over FTP."));
    intro->setWordWrap(true);
    form->addRow(intro);
    m_user = new QLineEdit;
    m_user->setPlaceholderText(QStringLiteral("ftpuser"));
    addField(form, tr("FTP user:"), m_user);
    m_password = newPasswordField();
    addField(form, tr("FTP password:"), m_password);
    m_port = newPortField();
    m_portMessage = addField(form, tr("FTP port:"), m_port);
    m_ssl = new QCheckBox(tr("Encrypt the connection (FTP over TLS)"));
    form->addRow(m_ssl);
}

void FtpSettingsPage::load(const TNPreferences& prefs)
{
    m_user->setText(prefs.FTPUsername);
    m_password->setText(prefs.FTPPassWord);
    m_port->setText(QString::number(prefs.ftpPort));
    m_ssl->setChecked(prefs.FTPSSL);
    showMessage(m_portMessage, QString());
}

bool FtpSettingsPage::validate()
{
    return showMessage(m_portMessage, SettingsForm::portProblem(m_port->text()));
}

void FtpSettingsPage::store(TNPreferences& prefs) const
{
    prefs.FTPUsername = m_user->text().trimmed();
    prefs.FTPPassWord = m_password->text();
    prefs.ftpPort = portOf(m_port);
    prefs.FTPSSL = m_ssl->isChecked();
}

#include "setup/SetupPages.h"

#include "setup/SetupWizard.h"

#include "RouterFailureAlert.h"
#include "app/AppEnvironment.h"
#include "assistant/SsdpDiscovery.h"
#include "assistant/TNAssistantDatasource.h"
#include "assistant/TNAssistantSaver.h"
#include "base/Localization.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "box/RouterSessions.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QThreadPool>
#include <QVBoxLayout>

namespace {
QLabel* helpLabel(const QString& key, QWidget* parent)
{
    auto* label = new QLabel(Localization::localized(key), parent);
    label->setWordWrap(true);
    return label;
}

QLabel* newErrorLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setWordWrap(true);
    label->setStyleSheet(QStringLiteral("color: #c0392b;"));
    label->hide();
    return label;
}

// "+49 30" from [LKZPrefix, LKZ, OKZPrefix, OKZ].
QString diallingCode(const QStringList& prefixis)
{
    if (prefixis.size() != 4)
        return {};
    return QStringLiteral("+%1 %2").arg(prefixis.at(1), prefixis.at(3)).trimmed();
}
} // namespace

// --- router choice ---------------------------------------------------------------------------

RouterChoicePage::RouterChoicePage(SetupWizard* wizard) : QWizardPage(wizard), m_wizard(wizard)
{
    setTitle(tr("Router"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(helpLabel(QStringLiteral("assistantHelp0"), this));
    m_list = new QListWidget(this);
    layout->addWidget(m_list, 1);
    auto* row = new QHBoxLayout;
    m_status = new QLabel(this);
    m_status->setWordWrap(true);
    row->addWidget(m_status, 1);
    m_searchButton = new QPushButton(tr("Search again"), this);
    row->addWidget(m_searchButton);
    layout->addLayout(row);
    auto* form = new QFormLayout;
    m_address = new QLineEdit(this);
    m_address->setPlaceholderText(QStringLiteral("fritz.box"));
    form->addRow(tr("Address:"), m_address);
    layout->addLayout(form);

    connect(m_searchButton, &QPushButton::clicked, this, &RouterChoicePage::search);
    connect(&wizard->discovery(), &SsdpDiscovery::searchCompleted, this, &RouterChoicePage::showDevices);
    connect(m_list, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item)
            m_address->setText(item->data(Qt::UserRole).toString());
    });
    connect(m_list, &QListWidget::itemDoubleClicked, m_wizard, &QWizard::next);
    connect(m_address, &QLineEdit::textChanged, this, &QWizardPage::completeChanged);
}

void RouterChoicePage::initializePage()
{
    if (!m_searched)
        search();
}

void RouterChoicePage::search()
{
    m_searched = true;
    m_list->clear();
    m_searchButton->setEnabled(false);
    m_status->setText(tr("Searching for routers on the network…"));
    m_wizard->discovery().lookupDevices();
}

void RouterChoicePage::showDevices(const QVariantList& devices)
{
    m_searchButton->setEnabled(true);
    m_list->clear();
    for (const QVariant& device : devices) {
        const QVariantMap map = device.toMap();
        const QString host = map.value(QStringLiteral("Host")).toString();
        const QString model = map.value(QStringLiteral("Server")).toString().trimmed();
        auto* item = new QListWidgetItem(QStringLiteral("%1 (%2)").arg(model, host), m_list);
        item->setData(Qt::UserRole, host);
        item->setData(Qt::UserRole + 1, SetupWizard::locationNameFromModel(model));
    }
    if (devices.isEmpty()) {
        m_status->setText(tr("No router answered. Enter its address below."));
    } else {
        m_status->setText(devices.size() == 1 ? tr("One router found.")
                                              : tr("%1 routers found.").arg(devices.size()));
        if (m_address->text().isEmpty())
            m_list->setCurrentRow(0);
    }
}

bool RouterChoicePage::isComplete() const
{
    QString host;
    int port = 0;
    return SetupWizard::parseAddress(m_address->text(), &host, &port);
}

bool RouterChoicePage::validatePage()
{
    AssistantRouterData& data = m_wizard->routerData();
    if (!SetupWizard::parseAddress(m_address->text(), &data.host, &data.webPort))
        return false;
    // The model is a good first name for the location.
    const QListWidgetItem* item = m_list->currentItem();
    if (item && item->data(Qt::UserRole).toString() == data.host)
        data.name = item->data(Qt::UserRole + 1).toString();
    return true;
}

// --- login -----------------------------------------------------------------------------------

LoginPage::LoginPage(SetupWizard* wizard) : QWizardPage(wizard), m_wizard(wizard)
{
    setTitle(tr("Login"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(helpLabel(QStringLiteral("assistantHelp1"), this));
    auto* form = new QFormLayout;
    m_user = new QLineEdit(this);
    form->addRow(tr("User name:"), m_user);
    m_password = new QLineEdit(this);
    m_password->setEchoMode(QLineEdit::Password);
    form->addRow(tr("Password:"), m_password);
    layout->addLayout(form);
    layout->addStretch(1);
}

void LoginPage::initializePage()
{
    m_password->setFocus();
}

bool LoginPage::validatePage()
{
    AssistantRouterData& data = m_wizard->routerData();
    data.userName = m_user->text().trimmed();
    data.pass = m_password->text();
    return true;
}

// --- reading ---------------------------------------------------------------------------------

ReadPage::ReadPage(SetupWizard* wizard) : QWizardPage(wizard), m_wizard(wizard)
{
    setTitle(tr("Router settings"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(helpLabel(QStringLiteral("assistantHelp2"), this));
    m_status = new QLabel(this);
    m_status->setWordWrap(true);
    layout->addWidget(m_status);
    m_busy = new QProgressBar(this);
    m_busy->setRange(0, 0);
    layout->addWidget(m_busy);
    m_details = new QWidget(this);
    auto* form = new QFormLayout(m_details);
    form->setContentsMargins(0, 0, 0, 0);
    m_name = new QLineEdit(m_details);
    form->addRow(Localization::localized(QStringLiteral("Location")) + u':', m_name);
    m_summary = new QLabel(m_details);
    m_summary->setWordWrap(true);
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(m_summary);
    layout->addWidget(m_details);
    layout->addStretch(1);
}

void ReadPage::initializePage()
{
    m_ok = false;
    m_details->hide();
    m_busy->show();
    m_status->setStyleSheet(QString());
    m_status->setText(tr("Reading the router's settings…"));
    const int generation = ++m_generation;

    AssistantRouterData request;
    const AssistantRouterData& entered = m_wizard->routerData();
    request.host = entered.host;
    request.webPort = entered.webPort;
    request.userName = entered.userName;
    request.pass = entered.pass;
    request.name = entered.name;
    AppEnvironment* env = &m_wizard->environment();
    QPointer<ReadPage> self(this);
    // The environment outlives every window; the page may not, hence the guard.
    QThreadPool::globalInstance()->start([env, request, self, generation]() mutable {
        TNAssistantDatasource source(env->settings(), env->secrets(), env->routerSessions());
        const bool ok = source.assistantDataForHost(&request) == AssistantRules::ReadOutcome::Ok;
        const QString error = source.errorMessage();
        // The wrong password or the missing right, beyond the page's own line.
        RouterFailureAlert::show(source.failure());
        QMetaObject::invokeMethod(
            qApp,
            [self, generation, ok, error, request] {
                if (!self)
                    return;
                if (ok && generation == self->m_generation)
                    self->m_wizard->routerData() = request;
                self->finished(generation, ok, error);
            },
            Qt::QueuedConnection);
    });
    emit completeChanged();
}

void ReadPage::cleanupPage()
{
    // Going back makes a running read stale.
    ++m_generation;
    m_ok = false;
}

void ReadPage::finished(int generation, bool ok, const QString& error)
{
    if (generation != m_generation)
        return;
    m_busy->hide();
    m_ok = ok;
    if (!ok) {
        m_status->setStyleSheet(QStringLiteral("color: #c0392b;"));
        m_status->setText(error);
        emit completeChanged();
        return;
    }
    const AssistantRouterData& data = m_wizard->routerData();
    m_status->setText(tr("The router's settings were read."));
    m_name->setText(data.name.isEmpty() ? QStringLiteral("FRITZ!Box") : data.name);
    QStringList lines;
    lines << tr("Dialling code: %1").arg(diallingCode(data.prefixis));
    if (!data.dialPort.isEmpty())
        lines << tr("Dial port: %1").arg(data.dialPort);
    lines << tr("Own numbers: %1").arg(data.lines.size());
    if (!data.remoteHost.isEmpty())
        lines << tr("Remote access: %1").arg(data.remoteHost);
    QStringList users;
    for (const auto& user : data.users)
        users << user.name;
    if (!users.isEmpty())
        lines << tr("Router users: %1").arg(users.join(QStringLiteral(", ")));
    m_summary->setText(lines.join(u'\n'));
    m_details->show();
    emit completeChanged();
}

bool ReadPage::isComplete() const
{
    return m_ok;
}

bool ReadPage::validatePage()
{
    const QString name = m_name->text().trimmed();
    m_wizard->routerData().name = name.isEmpty() ? QStringLiteral("FRITZ!Box") : name;
    return m_ok;
}

// --- remote access ---------------------------------------------------------------------------

RemotePage::RemotePage(SetupWizard* wizard) : QWizardPage(wizard), m_wizard(wizard)
{
    setTitle(tr("Remote access"));
    auto* layout = new QVBoxLayout(this);
    m_help = helpLabel(QStringLiteral("assistantHelp3"), this);
    layout->addWidget(m_help);
    m_form = new QFormLayout;
    m_host = new QLineEdit(this);
    m_host->setPlaceholderText(tr("optional, e.g. abc123.myfritz.net"));
    m_form->addRow(tr("Internet address:"), m_host);
    m_port = new QSpinBox(this);
    m_port->setRange(1, 65535);
    m_form->addRow(tr("HTTPS port:"), m_port);
    m_user = new QLineEdit(this);
    m_form->addRow(tr("User name:"), m_user);
    m_password = new QLineEdit(this);
    m_password->setEchoMode(QLineEdit::Password);
    m_form->addRow(Localization::localized(QStringLiteral("remotePassTitle")) + u':', m_password);
    layout->addLayout(m_form);
    layout->addStretch(1);
}

void RemotePage::initializePage()
{
    const AssistantRouterData& data = m_wizard->routerData();
    m_help->setText(Localization::localized(data.myFritzHost ? QStringLiteral("assistantHelp3_1")
                                                             : QStringLiteral("assistantHelp3")));
    if (auto* label = qobject_cast<QLabel*>(m_form->labelForField(m_password)))
        label->setText(Localization::localized(data.myFritzHost ? QStringLiteral("myfritzPassTitle")
                                                                : QStringLiteral("remotePassTitle")) +
                       u':');
    m_host->setText(data.remoteHost);
    bool ok = false;
    const int port = data.remoteSSLPort.toInt(&ok);
    m_port->setValue(ok && port > 0 ? port : 443);
    // Without a remote user of its own the router takes the local one.
    m_user->setText(data.remoteUser.isEmpty() ? data.userName : data.remoteUser);
    m_password->clear();
}

bool RemotePage::validatePage()
{
    AssistantRouterData& data = m_wizard->routerData();
    data.remoteHost = m_host->text().trimmed();
    data.remoteSSLPort = QString::number(m_port->value());
    data.remoteUser = m_user->text().trimmed();
    data.remotePass = m_password->text();
    data.needsRemoteHost = data.remoteHost.isEmpty();
    return true;
}

// --- saving ----------------------------------------------------------------------------------

SavePage::SavePage(SetupWizard* wizard) : QWizardPage(wizard), m_wizard(wizard)
{
    setTitle(Localization::localized(QStringLiteral("saveTitle")));
    setFinalPage(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(helpLabel(QStringLiteral("assistantHelp4"), this));
    m_summary = new QLabel(this);
    m_summary->setWordWrap(true);
    layout->addWidget(m_summary);
    m_progress = new QProgressBar(this);
    m_progress->setRange(0, 100);
    m_progress->hide();
    layout->addWidget(m_progress);
    m_error = newErrorLabel(this);
    layout->addWidget(m_error);
    layout->addStretch(1);
    m_wizard->environment().notifications().addObserver(
        this, Notifications::UPDATESAVEPROGRESS, [this](const Notification& note) {
            m_progress->setValue(note.userInfo.value(QStringLiteral("progress")).toInt());
        });
}

void SavePage::initializePage()
{
    const AssistantRouterData& data = m_wizard->routerData();
    QString where = data.host;
    if (data.webPort != 80)
        where += u':' + QString::number(data.webPort);
    m_summary->setText(tr("“%1” on %2").arg(data.name, where));
    m_error->hide();
    m_progress->hide();
}

bool SavePage::validatePage()
{
    if (!m_wizard->savedUID().isEmpty())
        return true;
    m_progress->setValue(0);
    m_progress->show();
    TNAssistantSaver saver(m_wizard->environment().manager(), m_wizard->environment().notifications());
    const QString uid = saver.savePreferences(m_wizard->routerData());
    if (uid.isEmpty()) {
        m_error->setText(saver.errorMessage());
        m_error->show();
        return false;
    }
    m_wizard->setSavedUID(uid);
    return true;
}

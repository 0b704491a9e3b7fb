#include "phonebook/PhonebookWindow.h"

#include "phonebook/PhonebookContactDialog.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/NumberForms.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "box/RouterSessions.h"
#include "contacts/AddressBookSearch.h"
#include "contacts/BoxPhonebookXML.h"
#include "contacts/FBPhonebookBox.h"
#include "contacts/VCardAddressBook.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QThreadPool>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
QString numberType(const QString& type)
{
    if (type == u"home")
        return QCoreApplication::translate("PhonebookWindow", "home");
    if (type == u"mobile")
        return QCoreApplication::translate("PhonebookWindow", "mobile");
    if (type == u"work")
        return QCoreApplication::translate("PhonebookWindow", "work");
    return type;
}
} // namespace

PhonebookWindow::PhonebookWindow(NotificationCenter& center, TNPreferencesManager& manager,
                                 RouterSessions& sessions, SettingsStore& settings, QWidget* parent)
    : QWidget(parent, Qt::Window), m_manager(manager), m_sessions(sessions), m_settings(settings)
{
    setWindowTitle(tr("Router phone book – Tondrel"));
    auto* layout = new QVBoxLayout(this);
    m_list = new QTreeWidget(this);
    m_list->setHeaderLabels({tr("Name"), tr("Numbers")});
    m_list->setRootIsDecorated(false);
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    layout->addWidget(m_list, 1);

    auto* buttons = new QHBoxLayout;
    m_reload = new QPushButton(tr("Reload"), this);
    m_add = new QPushButton(tr("Add contact…"), this);
    buttons->addWidget(m_reload);
    buttons->addWidget(m_add);
    buttons->addStretch(1);
    buttons->addWidget(new QLabel(tr("Address book group:"), this));
    m_groups = new QComboBox(this);
    m_groups->setObjectName(QStringLiteral("groups"));
    buttons->addWidget(m_groups);
    m_send = new QPushButton(tr("Send to the router…"), this);
    m_send->setToolTip(tr("Replaces the router's phone book with the contacts of the group."));
    buttons->addWidget(m_send);
    layout->addLayout(buttons);

    auto* statusRow = new QHBoxLayout;
    m_status = new QLabel(this);
    m_status->setWordWrap(true);
    statusRow->addWidget(m_status, 1);
    m_progress = new QProgressBar(this);
    m_progress->setRange(0, 0);
    m_progress->setMaximumWidth(120);
    m_progress->hide();
    statusRow->addWidget(m_progress);
    layout->addLayout(statusRow);

    connect(m_reload, &QPushButton::clicked, this, &PhonebookWindow::reload);
    connect(m_add, &QPushButton::clicked, this, &PhonebookWindow::askForContact);
    connect(m_send, &QPushButton::clicked, this, [this] { sendGroup(m_groups->currentText()); });
    m_confirmReplace = [this](const QString& group, int contacts) {
        return QMessageBox::question(this, windowTitle(),
                                     tr("Replace the router's phone book with the %1 contacts of \"%2\"? "
                                        "Entries on the router that are not in the group are lost.")
                                         .arg(contacts)
                                         .arg(group)) == QMessageBox::Yes;
    };
    reloadGroups();
    // Another location, or changed credentials: the list is read again.
    center.addObserver(this, Notifications::ACTIVATESETTINGS, [this](const Notification&) {
        m_loadedOnce = false;
        if (isVisible() && !m_busy)
            reload();
    });
    resize(620, 420);
}

void PhonebookWindow::setConfirmReplace(std::function<bool(const QString&, int)> confirm)
{
    m_confirmReplace = std::move(confirm);
}

QString PhonebookWindow::statusText() const
{
    return m_status->text();
}

void PhonebookWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    reloadGroups();
    if (!m_loadedOnce)
        reload();
}

void PhonebookWindow::reloadGroups()
{
    const QString chosen = m_groups->currentText();
    m_groups->clear();
    const auto book = VCardAddressBook::fromSettings(m_settings);
    if (book && book->isAvailable())
        m_groups->addItems(adressbooksearch::addressbookGroups(book.get()));
    m_groups->setCurrentText(chosen);
    const bool any = m_groups->count() > 0;
    m_send->setEnabled(any && !m_busy);
    m_groups->setToolTip(any ? QString() : tr("The address book has no groups (vCard categories)."));
}

void PhonebookWindow::setBusy(bool busy)
{
    m_busy = busy;
    m_progress->setVisible(busy);
    m_reload->setEnabled(!busy);
    m_add->setEnabled(!busy);
    m_send->setEnabled(!busy && m_groups->count() > 0);
}

void PhonebookWindow::run(const QString& what, Work work, const QString& done)
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || prefs->isDummy()) {
        m_status->setText(tr("No router is set up yet."));
        return;
    }
    setBusy(true);
    m_status->setText(what);
    // The work holds the location's settings until the exchange ends.
    QPointer<PhonebookWindow> self(this);
    QThreadPool::globalInstance()->start([self, work = std::move(work), done] {
        QVector<BoxPhonebook> books;
        QString error;
        const bool ok = work(&books, &error);
        QMetaObject::invokeMethod(
            qApp,
            [self, ok, books, error, done] {
                if (self)
                    self->finished(ok, books, error, done);
            },
            Qt::QueuedConnection);
    });
}

void PhonebookWindow::finished(bool ok, const QVector<BoxPhonebook>& books, const QString& error,
                               const QString& done)
{
    setBusy(false);
    if (!ok) {
        m_status->setText(error);
        return;
    }
    m_loadedOnce = true;
    const int count = showBooks(books);
    const QString counted =
        count == 1 ? tr("1 contact on the router.") : tr("%1 contacts on the router.").arg(count);
    m_status->setText(done.isEmpty() ? counted : done + u' ' + counted);
}

void PhonebookWindow::reload()
{
    auto prefs = m_manager.currentPreferences();
    auto session = prefs ? m_sessions.forLocation(*prefs) : nullptr;
    run(
        tr("Reading the router's phone book…"),
        [prefs, session](QVector<BoxPhonebook>* books, QString* error) {
            return prefs && FBPhonebookBox::loadPhoneBook(*prefs, *session, books, error);
        },
        QString());
}

int PhonebookWindow::showBooks(const QVector<BoxPhonebook>& books)
{
    m_list->clear();
    int count = 0;
    for (const BoxPhonebook& book : books)
        for (const BoxPhonebookContact& c : book.contacts) {
            QStringList numbers;
            for (const BoxPhonebookNumber& n : c.numbers)
                if (!n.number.isEmpty())
                    numbers << QStringLiteral("%1 %2").arg(numberType(n.type), n.number);
            auto* item = new QTreeWidgetItem(m_list, {c.name, numbers.join(QStringLiteral(", "))});
            if (c.category == u"1") {
                QFont bold = item->font(0);
                bold.setBold(true);
                item->setFont(0, bold);
                item->setToolTip(0, tr("Important person"));
            }
            ++count;
        }
    return count;
}

void PhonebookWindow::askForContact()
{
    PhonebookContactDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        addContact(dialog.entry());
}

void PhonebookWindow::addContact(const BoxContactEntry& entry)
{
    auto prefs = m_manager.currentPreferences();
    auto session = prefs ? m_sessions.forLocation(*prefs) : nullptr;
    run(
        tr("Adding %1 to the router's phone book…").arg(entry.name),
        [prefs, session, entry](QVector<BoxPhonebook>* books, QString* error) {
            return prefs && FBPhonebookBox::addContact(*prefs, *session, entry, error) &&
                   FBPhonebookBox::loadPhoneBook(*prefs, *session, books, error);
        },
        tr("%1 was added to the router's phone book.").arg(entry.name));
}

void PhonebookWindow::sendGroup(const QString& group)
{
    auto prefs = m_manager.currentPreferences();
    const auto book = VCardAddressBook::fromSettings(m_settings);
    if (!prefs || group.isEmpty() || !book || !book->isAvailable())
        return;
    const int contacts = int(adressbooksearch::peoplesForGroup(group, book.get()).size());
    if (!m_confirmReplace(group, contacts))
        return;
    const QString xml = adressbooksearch::peoplesForGroupWithFormat(group, prefs->contactFormat, book.get(),
                                                                    Prefixis(prefs->prefixis));
    auto session = m_sessions.forLocation(*prefs);
    run(
        tr("Sending \"%1\" to the router…").arg(group),
        [prefs, session, xml](QVector<BoxPhonebook>* books, QString* error) {
            return prefs && FBPhonebookBox::replacePhoneBook(*prefs, *session, xml, error) &&
                   FBPhonebookBox::loadPhoneBook(*prefs, *session, books, error);
        },
        tr("The router's phone book now holds the contacts of \"%1\".").arg(group));
}

#include "DialWindow.h"

#include "base/DialURL.h"
#include "base/NumberForms.h"
#include "base/StringAdditions.h"
#include "base/TNPreferencesManager.h"
#include "calllist/DialCompletion.h"
#include "calllist/TNCallinglist.h"
#include "contacts/AddressBook.h"
#include "contacts/AddressBookSearch.h"
#include "contacts/CallerIdentification.h"
#include "contacts/ContactsServices.h"
#include "contacts/VCardAddressBook.h"
#include "monitor/StreamListener.h"

#include <QComboBox>
#include <QCompleter>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStringListModel>
#include <QThreadPool>

namespace {
const QStringList EmptyContact{QString(), QString(), QString()};

// A pasted "tel:", "callto:" or "dial:" URL gives its number; anything else stays as typed.
QString numberFromText(const QString& text)
{
    if (const auto tel = methods::numberFromTelURL(text))
        return *tel;
    if (const auto dial = methods::numberFromDialURL(text))
        return *dial;
    return text;
}
} // namespace

DialWindow::DialWindow(TNPreferencesManager& manager, StreamListener& listener, TNCallinglist* calls,
                       ContactsServices& contacts, RouterCommand command, QWidget* parent)
    : QWidget(parent), m_manager(manager), m_listener(listener), m_calls(calls), m_contacts(contacts),
      m_command(std::move(command))
{
    setWindowTitle(tr("New call – Tondrel"));
    setObjectName(QStringLiteral("DialWindow"));
    m_number = new QLineEdit(this);
    m_number->setPlaceholderText(tr("Number, name or tel: link"));
    m_number->setClearButtonEnabled(true);
    m_unified = new QLabel(this);
    m_unified->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_name = new QLabel(this);
    m_extension = new QComboBox(this);
    m_status = new QLabel(this);
    m_status->setWordWrap(true);
    m_dial = new QPushButton(tr("Dial"), this);
    m_dial->setDefault(true);
    m_hangUp = new QPushButton(tr("Hang up"), this);
    m_unified->setObjectName(QStringLiteral("unified"));
    m_extension->setObjectName(QStringLiteral("extension"));
    m_status->setObjectName(QStringLiteral("status"));
    m_dial->setObjectName(QStringLiteral("dial"));
    m_hangUp->setObjectName(QStringLiteral("hangUp"));

    m_model = new QStringListModel(this);
    m_completer = new QCompleter(m_model, this);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setFilterMode(Qt::MatchContains);
    m_number->setCompleter(m_completer);
    // Choosing "Name (label) – number" puts the number in the field and keeps the name.
    connect(m_completer, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& index) {
                const qsizetype row = m_model->stringList().indexOf(index.data().toString());
                if (row < 0 || row >= m_completions.size())
                    return;
                const DialCompletion& c = m_completions.at(row);
                QMetaObject::invokeMethod(
                    this,
                    [this, c] {
                        m_settingText = true;
                        m_number->setText(c.number);
                        m_settingText = false;
                        m_contact = {QString(), c.name, c.label};
                        onTextChanged(c.number);
                    },
                    Qt::QueuedConnection);
            });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_hangUp);
    buttons->addWidget(m_dial);
    auto* form = new QFormLayout(this);
    form->addRow(tr("Number:"), m_number);
    form->addRow(tr("Dials:"), m_unified);
    form->addRow(tr("Contact:"), m_name);
    form->addRow(tr("Ring first:"), m_extension);
    form->addRow(m_status);
    form->addRow(buttons);
    setMinimumWidth(420);

    connect(m_number, &QLineEdit::textChanged, this, &DialWindow::onTextChanged);
    connect(m_number, &QLineEdit::returnPressed, this, &DialWindow::dial);
    connect(m_dial, &QPushButton::clicked, this, &DialWindow::dial);
    connect(m_hangUp, &QPushButton::clicked, this, &DialWindow::hangUp);
    reloadSources();
    onTextChanged(QString());
}

void DialWindow::reloadSources()
{
    const auto prefs = m_manager.currentPreferences();
    const QString previous = currentPort();
    m_extension->clear();
    if (prefs) {
        for (const QVariant& entry : prefs->extensions) {
            const QVariantMap ext = entry.toMap();
            if (ext.contains(QStringLiteral("Show")) && !ext.value(QStringLiteral("Show")).toBool())
                continue;
            const QString intern = ext.value(QStringLiteral("Intern")).toString();
            const QString title = ext.value(QStringLiteral("Title")).toString();
            m_extension->addItem(title.isEmpty() ? intern : QStringLiteral("%1 (**%2)").arg(title, intern),
                                 intern);
        }
        const QString wanted = previous.isEmpty() ? prefs->dialPort : previous;
        if (const int i = m_extension->findData(wanted); i >= 0)
            m_extension->setCurrentIndex(i);
    }
    m_extension->setEnabled(m_extension->count() > 0);

    m_completions =
        methods::dialCompletions(m_contacts.addressBook(), m_calls ? &m_calls->database() : nullptr,
                                 prefs ? prefs->contactFormat : QVariantMap());
    QStringList texts;
    texts.reserve(m_completions.size());
    for (const DialCompletion& c : m_completions)
        texts.append(c.text());
    m_model->setStringList(texts);
}

QString DialWindow::currentPort() const
{
    return m_extension->currentData().toString();
}

void DialWindow::openWithNumber(const QString& number, const QStringList& contact)
{
    reloadSources();
    m_settingText = true;
    m_number->setText(number);
    m_settingText = false;
    m_contact = contact.size() == 3 ? contact : EmptyContact;
    onTextChanged(number);
    if (!m_busy)
        setStatus(QString(), false);
    show();
    raise();
    activateWindow();
    m_number->setFocus();
}

void DialWindow::onTextChanged(const QString& text)
{
    const QString number = numberFromText(text);
    if (number != text) {
        // A URL was pasted: show what it stands for.
        m_number->setText(number);
        return;
    }
    if (!m_settingText && !m_contact.value(1).isEmpty() && m_number->hasFocus())
        m_contact = EmptyContact; // typing over a chosen contact
    const auto prefs = m_manager.currentPreferences();
    const QString unified = SearchingAdditions::unifiedPhoneNumber(number);
    m_unified->setText(unified.isEmpty() ? tr("–") : unified);
    if (m_contact.value(1).isEmpty() && unified.size() >= 3) {
        // Lookups take the clean form, as the router sends numbers.
        const Prefixis prefixis(prefs ? prefs->prefixis : QStringList());
        const QStringList found = methods::searchNameForPhonenumber(
            methods::cleanNumber(unified, prefixis), m_contacts.callerCache(), m_contacts.addressBook(),
            prefixis, prefs ? prefs->contactFormat : QVariantMap());
        if (!found.value(1).isEmpty())
            m_contact = {found.value(0), found.value(1), found.value(2)};
    }
    const QString name = m_contact.value(1);
    const QString label = methods::phoneLabelText(m_contact.value(2));
    m_name->setText(name.isEmpty()    ? tr("unknown")
                    : label.isEmpty() ? name
                                      : QStringLiteral("%1 (%2)").arg(name, label));
    m_dial->setEnabled(!m_busy && !unified.isEmpty() && m_command && prefs && !prefs->isDummy());
    m_hangUp->setEnabled(!m_busy && m_command && prefs && !prefs->isDummy());
}

void DialWindow::dial()
{
    const auto prefs = m_manager.currentPreferences();
    const QString number = methods::dialableNumber(
        m_number->text(), Prefixis(prefs ? prefs->prefixis : QStringList()).international);
    if (m_busy || !m_command || !prefs || number.isEmpty())
        return;
    const QString name = m_contact.value(1);
    if (prefs->confirmDial) {
        const bool yes =
            m_confirm ? m_confirm(number, name)
                      : QMessageBox::question(this, tr("Dial"),
                                              name.isEmpty() ? tr("Dial %1?").arg(number)
                                                             : tr("Dial %1 (%2)?").arg(name, number)) ==
                            QMessageBox::Yes;
        if (!yes)
            return;
    }
    const QString port = currentPort();
    // The call shows in the monitor at once; the router's CALL line takes it over.
    m_listener.addNewCallForExtensionForContact(number, port,
                                                m_contact.size() == 3 ? m_contact : EmptyContact);
    m_callUID.clear();
    const auto& calls = m_listener.monitorCalls();
    for (auto it = calls.crbegin(); it != calls.crend(); ++it)
        if (it->cmd == u"DIAL" && it->number == number) {
            m_callUID = it->UID;
            break;
        }
    setStatus(tr("Dialling %1 …").arg(number), false);
    runCommand(QStringLiteral("call"), number, port);
}

void DialWindow::hangUp()
{
    if (m_busy || !m_command)
        return;
    setStatus(tr("Hanging up …"), false);
    runCommand(QStringLiteral("cancelCall"), QString(), currentPort());
}

void DialWindow::runCommand(const QString& action, const QString& number, const QString& port)
{
    m_busy = true;
    onTextChanged(m_number->text());
    QPointer<DialWindow> self(this);
    RouterCommand command = m_command;
    QThreadPool::globalInstance()->start([self, command, action, number, port] {
        const RouterCommandResult result = command(action, number, port);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, action, result] {
                if (self)
                    self->commandDone(action, result);
            },
            Qt::QueuedConnection);
    });
}

void DialWindow::commandDone(const QString& action, const RouterCommandResult& result)
{
    m_busy = false;
    const bool ok = result.ok;
    const bool dialling = action == u"call";
    if (ok) {
        setStatus(
            dialling
                ? tr("The router is calling: pick up the handset of “%1”.").arg(m_extension->currentText())
                : tr("Hung up."),
            false);
    } else {
        setStatus(result.error().isEmpty() ? tr("The router did not take the command.") : result.error(),
                  true);
    }
    // A call that did not start, or that was hung up, ends in the monitor too.
    if (!m_callUID.isEmpty() && (!ok || !dialling)) {
        m_listener.cancelCallForUID(m_callUID);
        m_callUID.clear();
    }
    onTextChanged(m_number->text());
    emit commandFinished(action, ok);
}

void DialWindow::setStatus(const QString& text, bool error)
{
    m_status->setText(text);
    m_status->setStyleSheet(error ? QStringLiteral("color: #c8372d") : QString());
}

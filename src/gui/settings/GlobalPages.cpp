#include "GlobalPages.h"

#include "SettingsForm.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

QVariant GlobalPage::storedValue(const SettingsStore& store, const QString& key)
{
    const GlobalKeyDef* def = findGlobalKey(key);
    return store.value(key, def ? def->missingValue : QVariant());
}

namespace {
QLabel* sharedNote()
{
    auto* note = new QLabel(GlobalPage::tr("These settings apply to all locations."));
    note->setStyleSheet(QStringLiteral("font-style: italic;"));
    return note;
}
} // namespace

// --- call list --------------------------------------------------------------------------------

CallListSettingsPage::CallListSettingsPage(QWidget* parent) : GlobalPage(parent)
{
    auto* form = new QFormLayout(this);
    form->addRow(sharedNote());
    m_afterCall = new QCheckBox(tr("Import the router's call list after every call"));
    form->addRow(m_afterCall);
    m_atStartup = new QCheckBox(tr("Import the call list when Tondrel starts"));
    form->addRow(m_atStartup);
    m_deleteInterval = new QSpinBox;
    m_deleteInterval->setRange(0, 3650);
    m_deleteInterval->setSuffix(tr(" days"));
    m_deleteInterval->setSpecialValueText(tr("never"));
    SettingsForm::addField(form, tr("Delete calls older than:"), m_deleteInterval);
    m_dateFormat = new QLineEdit;
    m_dateFormatMessage = SettingsForm::addField(form, tr("Date format:"), m_dateFormat);
    m_example = new QLabel;
    form->addRow(QString(), m_example);
    connect(m_dateFormat, &QLineEdit::textChanged, this, &CallListSettingsPage::showExample);
}

void CallListSettingsPage::showExample()
{
    m_example->setText(
        tr("Example: %1").arg(QLocale().toString(QDateTime::currentDateTime(), m_dateFormat->text())));
}

void CallListSettingsPage::load(const SettingsStore& store)
{
    m_afterCall->setChecked(storedValue(store, keys::ListAferCall).toBool());
    m_atStartup->setChecked(storedValue(store, keys::ListAtStartup).toBool());
    m_deleteInterval->setValue(storedValue(store, keys::ListDeleteInterval).toInt());
    m_dateFormat->setText(storedValue(store, keys::DateFormatString).toString());
    SettingsForm::showMessage(m_dateFormatMessage, QString());
}

QVariantMap CallListSettingsPage::values() const
{
    return {{keys::ListAferCall, m_afterCall->isChecked()},
            {keys::ListAtStartup, m_atStartup->isChecked()},
            {keys::ListDeleteInterval, m_deleteInterval->value()},
            {keys::DateFormatString, m_dateFormat->text().trimmed()}};
}

bool CallListSettingsPage::validate()
{
    return SettingsForm::showMessage(m_dateFormatMessage,
                                     SettingsForm::dateFormatProblem(m_dateFormat->text()));
}

// --- general ----------------------------------------------------------------------------------

GeneralSettingsPage::GeneralSettingsPage(QWidget* parent) : GlobalPage(parent)
{
    auto* form = new QFormLayout(this);
    form->addRow(sharedNote());

    auto* bookRow = new QWidget;
    auto* bookBox = new QHBoxLayout(bookRow);
    bookBox->setContentsMargins(0, 0, 0, 0);
    m_addressBook = new QLineEdit;
    m_addressBook->setPlaceholderText(tr("a vCard file (.vcf)"));
    bookBox->addWidget(m_addressBook);
    auto* choose = new QPushButton(tr("Choose…"));
    bookBox->addWidget(choose);
    connect(choose, &QPushButton::clicked, this, &GeneralSettingsPage::chooseAddressBook);
    m_addressBookMessage = SettingsForm::addField(form, tr("Address book:"), bookRow);

    m_dockState = new QComboBox;
    // Indexes are the stored values.
    m_dockState->addItem(tr("System tray only"));
    m_dockState->addItem(tr("Taskbar only"));
    m_dockState->addItem(tr("System tray and taskbar"));
    SettingsForm::addField(form, tr("Show Tondrel in:"), m_dockState);

    m_callListOnStart = new QCheckBox(tr("Open the call list window at start"));
    form->addRow(m_callListOnStart);
    m_alwaysOnTop = new QCheckBox(tr("Keep the call monitor window above other windows"));
    form->addRow(m_alwaysOnTop);
    m_updateReverseSearch = new QCheckBox(tr("Update the online directories for caller lookup at start"));
    form->addRow(m_updateReverseSearch);

    form->addRow(new QLabel(tr("Internet traffic:")));
    m_trafficInMenu = new QCheckBox(tr("Show the traffic in the tray"));
    m_trafficLabel = new QCheckBox(tr("as figures"));
    m_trafficGraph = new QCheckBox(tr("as a graph"));
    m_trafficWindow = new QCheckBox(tr("Open the traffic window at start"));
    form->addRow(m_trafficInMenu);
    auto* how = new QWidget;
    auto* howBox = new QHBoxLayout(how);
    howBox->setContentsMargins(20, 0, 0, 0);
    howBox->addWidget(m_trafficLabel);
    howBox->addWidget(m_trafficGraph);
    howBox->addStretch();
    form->addRow(how);
    form->addRow(m_trafficWindow);
    connect(m_trafficInMenu, &QCheckBox::toggled, how, &QWidget::setEnabled);
}

void GeneralSettingsPage::chooseAddressBook()
{
    const QString start =
        m_addressBook->text().isEmpty() ? QString() : QFileInfo(m_addressBook->text()).absolutePath();
    const QString file = QFileDialog::getOpenFileName(this, tr("Choose the address book"), start,
                                                      tr("vCard files (*.vcf);;All files (*)"));
    if (!file.isEmpty())
        m_addressBook->setText(file);
}

void GeneralSettingsPage::load(const SettingsStore& store)
{
    m_addressBook->setText(storedValue(store, keys::AddressBook).toString());
    SettingsForm::showMessage(m_addressBookMessage, QString());
    const int dock = storedValue(store, keys::MenuDockState).toInt();
    m_dockState->setCurrentIndex(dock >= 0 && dock <= 2 ? dock : 2);
    m_loadedCallListOnStart = storedValue(store, keys::ShowCallinglistOnStart).toInt();
    m_callListOnStart->setChecked(m_loadedCallListOnStart == 1);
    m_alwaysOnTop->setChecked(storedValue(store, keys::MonitorAlwaysOnTop).toBool());
    m_updateReverseSearch->setChecked(storedValue(store, keys::AutoUpdateReverseSearch).toBool());
    m_trafficInMenu->setChecked(storedValue(store, keys::ShowTrafficMonitorInMenu).toBool());
    m_trafficWindow->setChecked(storedValue(store, keys::ShowTrafficMonitorWindow).toBool());
    m_trafficLabel->setChecked(storedValue(store, keys::ShowTrafficMonitorMenuLabel).toBool());
    m_trafficGraph->setChecked(storedValue(store, keys::ShowTrafficMonitorMenuGraph).toBool());
    m_trafficLabel->parentWidget()->setEnabled(m_trafficInMenu->isChecked());
}

QVariantMap GeneralSettingsPage::values() const
{
    int callList = m_loadedCallListOnStart;
    if (m_callListOnStart->isChecked())
        callList = 1;
    else if (callList == 1)
        callList = 0;
    return {{keys::AddressBook, m_addressBook->text().trimmed()},
            {keys::MenuDockState, m_dockState->currentIndex()},
            {keys::ShowCallinglistOnStart, callList},
            {keys::MonitorAlwaysOnTop, m_alwaysOnTop->isChecked()},
            {keys::AutoUpdateReverseSearch, m_updateReverseSearch->isChecked()},
            {keys::ShowTrafficMonitorInMenu, m_trafficInMenu->isChecked()},
            {keys::ShowTrafficMonitorWindow, m_trafficWindow->isChecked()},
            {keys::ShowTrafficMonitorMenuLabel, m_trafficLabel->isChecked()},
            {keys::ShowTrafficMonitorMenuGraph, m_trafficGraph->isChecked()}};
}

bool GeneralSettingsPage::validate()
{
    const QString path = m_addressBook->text().trimmed();
    QString problem;
    if (!path.isEmpty() && !QFileInfo(path).isFile())
        problem = tr("There is no file %1.").arg(path);
    return SettingsForm::showMessage(m_addressBookMessage, problem);
}

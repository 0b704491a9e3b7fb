#include "LocationPages.h"

#include "SettingsForm.h"

#include "base/TNPreferences.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {
const QString kIntern = QStringLiteral("Intern");
const QString kTitle = QStringLiteral("Title");
const QString kShow = QStringLiteral("Show");
const QString kLine = QStringLiteral("Line");
const QString kHideMonitor = QStringLiteral("HideMonitor");
const QString kHideList = QStringLiteral("HideList");

QTableWidget* table(const QStringList& headers)
{
    auto* t = new QTableWidget(0, int(headers.size()));
    t->setHorizontalHeaderLabels(headers);
    t->verticalHeader()->setVisible(false);
    // The name takes the free width; numbers and check boxes keep theirs.
    t->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    t->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    t->setSelectionMode(QAbstractItemView::NoSelection);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    return t;
}

QTableWidgetItem* textItem(const QString& text)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled);
    return item;
}

QTableWidgetItem* checkItem(bool checked)
{
    auto* item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    return item;
}

bool isChecked(const QTableWidget* t, int row, int column)
{
    return t->item(row, column)->checkState() == Qt::Checked;
}

// Sets a flag of a stored entry only when it differs from what the entry means now, so an
// untouched entry stays exactly as the router's list left it.
void setFlag(QVariantList& list, int row, const QString& key, bool value, bool missingMeans)
{
    QVariantMap entry = list.at(row).toMap();
    const bool current = entry.contains(key) ? entry.value(key).toBool() : missingMeans;
    if (current == value)
        return;
    entry.insert(key, value);
    list[row] = entry;
}

QStringList prefixNames()
{
    return {TelephonySettingsPage::tr("International prefix"), TelephonySettingsPage::tr("Country code"),
            TelephonySettingsPage::tr("Trunk prefix"), TelephonySettingsPage::tr("Area code")};
}
} // namespace

TelephonySettingsPage::TelephonySettingsPage(QWidget* parent) : LocationPage(parent)
{
    auto* box = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    box->addLayout(form);

    auto* prefixes = new QWidget;
    auto* grid = new QGridLayout(prefixes);
    grid->setContentsMargins(0, 0, 0, 0);
    const QStringList labels = prefixNames();
    const QString examples[4] = {QStringLiteral("00"), QStringLiteral("49"), QStringLiteral("0"),
                                 QStringLiteral("30")};
    for (int i = 0; i < 4; ++i) {
        m_prefix[i] = new QLineEdit;
        m_prefix[i]->setPlaceholderText(examples[i]);
        m_prefix[i]->setMaximumWidth(80);
        grid->addWidget(new QLabel(labels[i]), 0, i);
        grid->addWidget(m_prefix[i], 1, i);
    }
    m_prefixMessage = SettingsForm::addField(form, tr("Dialling context:"), prefixes);

    m_dialPort = new QComboBox;
    SettingsForm::addField(form, tr("Dial from:"), m_dialPort);
    m_confirmDial = new QCheckBox(tr("Ask before dialling"));
    form->addRow(m_confirmDial);
    m_hideOwnNumber = new QCheckBox(tr("Withhold my number on outgoing calls"));
    form->addRow(m_hideOwnNumber);

    box->addWidget(new QLabel(tr("Telephones (shown ones appear in the menu and the dial window):")));
    m_extensions = table({tr("Number"), tr("Name"), tr("Show")});
    box->addWidget(m_extensions, 3);
    box->addWidget(new QLabel(tr("Own numbers:")));
    m_lines = table({tr("Number"), tr("Name"), tr("Hide in call monitor"), tr("Hide in call list")});
    box->addWidget(m_lines, 2);
}

void TelephonySettingsPage::load(const TNPreferences& prefs)
{
    m_loadedWithoutPrefixes = prefs.prefixis.isEmpty();
    for (int i = 0; i < 4; ++i)
        m_prefix[i]->setText(prefs.prefixis.value(i));
    SettingsForm::showMessage(m_prefixMessage, QString());
    m_confirmDial->setChecked(prefs.confirmDial);
    m_hideOwnNumber->setChecked(prefs.hideOwnNumber);

    m_loadedExtensions = prefs.extensions;
    m_extensions->setRowCount(int(m_loadedExtensions.size()));
    m_dialPort->clear();
    for (int row = 0; row < m_extensions->rowCount(); ++row) {
        const QVariantMap ext = m_loadedExtensions.at(row).toMap();
        const QString intern = ext.value(kIntern).toString();
        const QString title = ext.value(kTitle).toString();
        m_extensions->setItem(row, ExtNumber, textItem(QStringLiteral("**") + intern));
        m_extensions->setItem(row, ExtTitle, textItem(title));
        m_extensions->setItem(row, ExtShow, checkItem(ext.value(kShow, true).toBool()));
        bool isNumber = false;
        const int port = intern.toInt(&isNumber);
        if (isNumber)
            m_dialPort->addItem(title.isEmpty() ? intern : QStringLiteral("%1 (**%2)").arg(title, intern),
                                port);
    }
    // A port the list does not know stays what it is.
    if (m_dialPort->findData(prefs.dialPortInt) < 0)
        m_dialPort->addItem(prefs.dialPortInt == 0 ? tr("Not chosen") : tr("Port %1").arg(prefs.dialPortInt),
                            prefs.dialPortInt);
    m_dialPort->setCurrentIndex(m_dialPort->findData(prefs.dialPortInt));

    m_loadedLines = prefs.lines;
    m_lines->setRowCount(int(m_loadedLines.size()));
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        const QVariantMap line = m_loadedLines.at(row).toMap();
        m_lines->setItem(row, LineNumber, textItem(line.value(kLine).toString()));
        m_lines->setItem(row, LineTitle, textItem(line.value(kTitle).toString()));
        m_lines->setItem(row, LineHideMonitor, checkItem(line.value(kHideMonitor).toBool()));
        m_lines->setItem(row, LineHideList, checkItem(line.value(kHideList).toBool()));
    }
}

bool TelephonySettingsPage::validate()
{
    QString problem;
    for (int i = 0; i < 4 && problem.isEmpty(); ++i)
        if (const QString p = SettingsForm::digitsProblem(m_prefix[i]->text()); !p.isEmpty())
            problem = QStringLiteral("%1: %2").arg(prefixNames().at(i), p);
    return SettingsForm::showMessage(m_prefixMessage, problem);
}

void TelephonySettingsPage::store(TNPreferences& prefs) const
{
    QStringList prefixes;
    for (const QLineEdit* field : m_prefix)
        prefixes << field->text().trimmed();
    const bool allEmpty =
        std::all_of(prefixes.cbegin(), prefixes.cend(), [](const QString& p) { return p.isEmpty(); });
    prefs.prefixis = allEmpty && m_loadedWithoutPrefixes ? QStringList() : prefixes;
    prefs.confirmDial = m_confirmDial->isChecked();
    prefs.hideOwnNumber = m_hideOwnNumber->isChecked();
    prefs.dialPortInt = m_dialPort->currentData().toInt();
    prefs.dialPort = QString::number(prefs.dialPortInt);

    QVariantList extensions = m_loadedExtensions;
    for (int row = 0; row < m_extensions->rowCount(); ++row)
        setFlag(extensions, row, kShow, isChecked(m_extensions, row, ExtShow), true);
    prefs.extensions = extensions;

    QVariantList lines = m_loadedLines;
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        setFlag(lines, row, kHideMonitor, isChecked(m_lines, row, LineHideMonitor), false);
        setFlag(lines, row, kHideList, isChecked(m_lines, row, LineHideList), false);
    }
    prefs.lines = lines;
}

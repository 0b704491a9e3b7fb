#include "CallStatisticsDialog.h"

#include "calllist/TNCallinglist.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QTableWidget>
#include <QVBoxLayout>

CallStatisticsDialog::CallStatisticsDialog(TNCallinglist& calls, int profile, QWidget* parent)
    : QDialog(parent), m_calls(calls), m_profile(profile)
{
    setWindowTitle(tr("Call statistics"));
    m_years = new QComboBox(this);
    m_years->addItem(tr("All years"), 0);
    for (const QString& year : calls.getYearsStatisticForProfile(profile))
        m_years->addItem(year, year.toInt());

    m_table = new QTableWidget(TotalRow + 1, ColumnCount, this);
    m_table->setHorizontalHeaderLabels(
        {tr("Calls"), tr("Incoming"), tr("Outgoing"), tr("Missed"), tr("Talk time")});
    QStringList months;
    const QLocale locale;
    for (int m = 1; m <= 12; ++m)
        months << locale.standaloneMonthName(m);
    months << tr("Total");
    m_table->setVerticalHeaderLabels(months);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &CallStatisticsDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(tr("Year:"), this));
    row->addWidget(m_years);
    row->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(m_table);
    layout->addWidget(buttons);

    connect(m_years, &QComboBox::currentIndexChanged, this,
            [this] { showYear(m_years->currentData().toInt()); });
    // The newest year with calls first.
    m_years->setCurrentIndex(m_years->count() > 1 ? 1 : 0);
    showYear(m_years->currentData().toInt());
    resize(560, 440);
}

void CallStatisticsDialog::showYear(int year)
{
    auto cell = [this](int row, int column, const QString& text) {
        auto* item = new QTableWidgetItem(text);
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (row == TotalRow) {
            QFont bold = item->font();
            bold.setBold(true);
            item->setFont(bold);
        }
        m_table->setItem(row, column, item);
    };
    for (int row = 0; row <= TotalRow; ++row) {
        const int month = row == TotalRow ? 0 : row + 1;
        cell(row, Calls,
             QString::number(m_calls.getCallCounterStatisticForProfile(m_profile, month, year, 0)));
        cell(row, Incoming,
             QString::number(m_calls.getCallCounterStatisticForProfile(m_profile, month, year, 1)));
        cell(row, Outgoing,
             QString::number(m_calls.getCallCounterStatisticForProfile(m_profile, month, year, 3)));
        cell(row, Missed,
             QString::number(m_calls.getCallCounterStatisticForProfile(m_profile, month, year, 2)));
        const auto time = m_calls.getTimeCounterStatisticForProfile(m_profile, month, year, 0);
        cell(row, TalkTime,
             QStringLiteral("%1:%2").arg(time.hours()).arg(time.minutes(), 2, 10, QLatin1Char('0')));
    }
}

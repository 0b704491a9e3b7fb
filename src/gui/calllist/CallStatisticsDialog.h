#pragma once

#include <QDialog>

class QComboBox;
class QTableWidget;
class TNCallinglist;

// Calls and talk time of a profile by month for a chosen year (or all years), with the year's
// total in the last row.
class CallStatisticsDialog : public QDialog
{
    Q_OBJECT
public:
    enum Column { Calls, Incoming, Outgoing, Missed, TalkTime, ColumnCount };
    static constexpr int TotalRow = 12;

    CallStatisticsDialog(TNCallinglist& calls, int profile, QWidget* parent = nullptr);

    QComboBox* yearBox() const { return m_years; }
    QTableWidget* table() const { return m_table; }
    // Fills the table for the year chosen in the box (0: all years).
    void showYear(int year);

private:
    TNCallinglist& m_calls;
    int m_profile;
    QComboBox* m_years = nullptr;
    QTableWidget* m_table = nullptr;
};

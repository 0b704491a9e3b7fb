#pragma once

#include <QVariantMap>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class SettingsStore;

// A page of settings shared by all locations. It reads the global keys from the store and hands
// back the values of its keys; the window writes the ones that changed.
class GlobalPage : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    virtual void load(const SettingsStore& store) = 0;
    // Key -> value of every key on the page, as the widgets show it now.
    virtual QVariantMap values() const = 0;
    virtual bool validate() { return true; }

    // The stored value, or what a missing key reads as.
    static QVariant storedValue(const SettingsStore& store, const QString& key);
};

// Importing the router's call journal and how the list shows dates.
class CallListSettingsPage final : public GlobalPage
{
    Q_OBJECT
public:
    explicit CallListSettingsPage(QWidget* parent = nullptr);
    void load(const SettingsStore& store) override;
    QVariantMap values() const override;
    bool validate() override;

    QCheckBox* afterCallBox() const { return m_afterCall; }
    QCheckBox* atStartupBox() const { return m_atStartup; }
    QSpinBox* deleteIntervalBox() const { return m_deleteInterval; }
    QLineEdit* dateFormatField() const { return m_dateFormat; }
    QLabel* dateFormatMessage() const { return m_dateFormatMessage; }

private:
    void showExample();

    QCheckBox* m_afterCall;
    QCheckBox* m_atStartup;
    QSpinBox* m_deleteInterval;
    QLineEdit* m_dateFormat;
    QLabel* m_dateFormatMessage;
    QLabel* m_example;
};

// Address book, where the program shows itself, windows at start and the traffic display.
class GeneralSettingsPage final : public GlobalPage
{
    Q_OBJECT
public:
    explicit GeneralSettingsPage(QWidget* parent = nullptr);
    void load(const SettingsStore& store) override;
    QVariantMap values() const override;
    bool validate() override;

    QLineEdit* addressBookField() const { return m_addressBook; }
    QLabel* addressBookMessage() const { return m_addressBookMessage; }
    QComboBox* dockStateBox() const { return m_dockState; }
    QCheckBox* callListOnStartBox() const { return m_callListOnStart; }
    QCheckBox* alwaysOnTopBox() const { return m_alwaysOnTop; }
    QCheckBox* trafficInMenuBox() const { return m_trafficInMenu; }
    QCheckBox* trafficWindowBox() const { return m_trafficWindow; }
    QCheckBox* trafficLabelBox() const { return m_trafficLabel; }
    QCheckBox* trafficGraphBox() const { return m_trafficGraph; }
    QCheckBox* updateReverseSearchBox() const { return m_updateReverseSearch; }

private:
    void chooseAddressBook();

    QLineEdit* m_addressBook;
    QLabel* m_addressBookMessage;
    QComboBox* m_dockState;
    QCheckBox* m_callListOnStart;
    QCheckBox* m_alwaysOnTop;
    QCheckBox* m_trafficInMenu;
    QCheckBox* m_trafficWindow;
    QCheckBox* m_trafficLabel;
    QCheckBox* m_trafficGraph;
    QCheckBox* m_updateReverseSearch;
    // "showCallinglistOnStart" is a number: 1 opens the list; other values are kept when unticked.
    int m_loadedCallListOnStart = -1;
};

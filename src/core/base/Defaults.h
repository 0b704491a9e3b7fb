#pragma once

#include <QString>
#include <QVariantList>

class SettingsStore;

// Typed access to global keys of the user-defaults domain. Without a store argument the
// composition root's standard store is used.
namespace methods {

void setDefaultsForNumber(double number, const QString& key, SettingsStore* store = nullptr);
void setDefaultsForBool(bool value, const QString& key, SettingsStore* store = nullptr);
void setDefaultsForString(const QString& value, const QString& key, SettingsStore* store = nullptr);
QString getDefaultsStringForKey(const QString& key, SettingsStore* store = nullptr);
QVariantList getDefaultsArrayForKey(const QString& key, SettingsStore* store = nullptr);
double getDefaultsNumberForKey(const QString& key, SettingsStore* store = nullptr); // -1 when missing
bool getDefaultsBoolForKey(const QString& key, SettingsStore* store = nullptr);     // false when missing
void resetUserDefaults(SettingsStore* store = nullptr);

// What the first start writes besides the setup: "OutgoingCalls" empty, "monitorAlwaysOnTop"
// and "monitorOpenExternCalls" true, "SelCLGrp" 3 (keys already present are kept).
void writeFirstStartDefaults(SettingsStore& store);

} // namespace methods

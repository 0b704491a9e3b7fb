#pragma once

#include <QString>
#include <QVariantList>

class SettingsStore;

// Typed access to global keys of the user-defaults domain.
namespace methods {

void setDefaultsForNumber(double number, const QString& key, SettingsStore& store);
void setDefaultsForBool(bool value, const QString& key, SettingsStore& store);
void setDefaultsForString(const QString& value, const QString& key, SettingsStore& store);
QString getDefaultsStringForKey(const QString& key, SettingsStore& store);
QVariantList getDefaultsArrayForKey(const QString& key, SettingsStore& store);
double getDefaultsNumberForKey(const QString& key, SettingsStore& store); // -1 when missing
bool getDefaultsBoolForKey(const QString& key, SettingsStore& store);     // false when missing
void resetUserDefaults(SettingsStore& store);

// What the first start writes besides the setup: "OutgoingCalls" empty, "monitorAlwaysOnTop"
// and "monitorOpenExternCalls" true, "SelCLGrp" 3 (keys already present are kept).
void writeFirstStartDefaults(SettingsStore& store);

} // namespace methods

#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>

class TNPreferences;

// The router's extensions and lines, and the conversions of older stored forms.
namespace FBBoxPhoneHelper {

// The fixed order 1, 2, 3, 50, 51..58, 610..615; past the end gives "0".
QString extensionNumberForIndex(int index);
// A number not in the order gives the number itself.
int indexForExtensionNumber(int number);

// Turns a device list of [name, enabled] pairs (the older stored form) into extension
// dictionaries; entries that already are extension dictionaries are kept as they are.
QVariantList convertIntoNewExtensions(const QVariantList& devices);

// The same steps as methods::cleanNumber (one implementation); "" for a missing number.
QString cleanNumber(const QString& number);
// The names queried for extensions (23), lines (43) and fax lines (10), in order.
QStringList extensionVariables();
QStringList lineVariables();
QStringList faxLineVariables();

// The records the router's values describe (values in the order of the names above; an empty
// list when the answer was not valid).
QVariantList extensionsFromValues(const QStringList& values);
QVariantList linesFromValues(const QStringList& values);
QVariantList faxLinesFromValues(const QStringList& values);
// The user's choices survive: "Show" of extensions, "HideList"/"HideMonitor" of lines.
QVariantList mergeExtensions(const QVariantList& existing, const QVariantList& fromBox);
QVariantList mergeLines(const QVariantList& existing, const QVariantList& fromBox);
QVariantList mergeFaxLines(const QVariantList& existing, const QVariantList& fromBox);
QVariantList getExtensionsFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs);
QVariantList getLinesFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs);
QVariantList getFaxLinesFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs);

} // namespace FBBoxPhoneHelper

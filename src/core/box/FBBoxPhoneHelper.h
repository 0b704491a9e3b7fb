#pragma once

#include <QString>
#include <QVariantList>

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

} // namespace FBBoxPhoneHelper

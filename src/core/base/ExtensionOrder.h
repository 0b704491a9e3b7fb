#pragma once

#include <QString>
#include <QVariantList>

// The router's fixed order of extensions, which older stored device lists rely on.
namespace FBBoxPhoneHelper {

// The fixed order 1, 2, 3, 50, 51..58, 610..615; past the end gives "0".
QString extensionNumberForIndex(int index);
// A number not in the order gives the number itself.
int indexForExtensionNumber(int number);

// Turns a device list of [name, enabled] pairs (the older stored form) into extension
// dictionaries; entries that already are extension dictionaries are kept as they are.
QVariantList convertIntoNewExtensions(const QVariantList& devices);

} // namespace FBBoxPhoneHelper

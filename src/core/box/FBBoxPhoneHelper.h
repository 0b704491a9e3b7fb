#pragma once

#include "base/ExtensionOrder.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

class RouterSession;
class TNPreferences;

// The router's extensions and lines, and the conversions of older stored forms.
namespace FBBoxPhoneHelper {

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
QVariantList getExtensionsFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs,
                                          RouterSession& session);
QVariantList getLinesFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs,
                                     RouterSession& session);
QVariantList getFaxLinesFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs,
                                        RouterSession& session);

} // namespace FBBoxPhoneHelper

#pragma once

#include "base/SettingsKeys.h"
#include "base/TNPreferences.h"

#include <variant>
#include <vector>

// The per-location keys: type, the value a new location gets and the value a missing key reads
// as. Both tables of the settings are kept here and nowhere else.
struct LocationKeyDef
{
    using Field =
        std::variant<std::monostate, QString TNPreferences::*, bool TNPreferences::*, int TNPreferences::*,
                     QVariantList TNPreferences::*, QVariantMap TNPreferences::*,
                     QStringList TNPreferences::*, QVariant TNPreferences::*>;

    QString key;
    SettingType type;
    Field field;            // monostate: written but not loaded into a property
    QVariant newValue;      // invalid: not written for a new location
    QVariant missingValue;  // what a missing key reads as
    QString legacyKey = {}; // read when the key itself is missing
    bool zeroReadsAsMissing = false;
};

const std::vector<LocationKeyDef>& locationKeyTable();
const LocationKeyDef* findLocationKey(const QString& key);

// The dictionary of a new location; the caller fills in profile, name and extensions.
QVariantMap newLocationDictionary();

// Device list of a new location: pairs of name and enabled flag.
QVariantList defaultDeviceList();

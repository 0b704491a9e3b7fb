#include "base/Defaults.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"

namespace methods {

void setDefaultsForNumber(double number, const QString& key, SettingsStore& store)
{
    SettingsStore* s = &store;
    // Whole numbers stay integers in the file.
    if (number == static_cast<double>(static_cast<qint64>(number)))
        s->setValue(key, static_cast<qint64>(number));
    else
        s->setValue(key, number);
    s->sync();
}

void setDefaultsForBool(bool value, const QString& key, SettingsStore& store)
{
    SettingsStore* s = &store;
    s->setValue(key, value);
    s->sync();
}

void setDefaultsForString(const QString& value, const QString& key, SettingsStore& store)
{
    SettingsStore* s = &store;
    s->setValue(key, value);
    s->sync();
}

QString getDefaultsStringForKey(const QString& key, SettingsStore& store)
{
    return store.value(key).toString();
}

QVariantList getDefaultsArrayForKey(const QString& key, SettingsStore& store)
{
    return store.value(key).toList();
}

double getDefaultsNumberForKey(const QString& key, SettingsStore& store)
{
    const QVariant v = store.value(key);
    if (!v.isValid())
        return -1;
    bool ok = false;
    const double d = v.toDouble(&ok);
    return ok ? d : -1;
}

bool getDefaultsBoolForKey(const QString& key, SettingsStore& store)
{
    return store.value(key, false).toBool();
}

void resetUserDefaults(SettingsStore& store)
{
    SettingsStore* s = &store;
    s->clear();
    s->sync();
}

} // namespace methods

void methods::writeFirstStartDefaults(SettingsStore& store)
{
    const std::pair<QString, QVariant> defaults[] = {{keys::OutgoingCalls, QVariantList()},
                                                     {keys::MonitorAlwaysOnTop, true},
                                                     {keys::MonitorOpenExternCalls, true},
                                                     {keys::SelCLGrp, 3}};
    for (const auto& [key, value] : defaults)
        if (!store.contains(key))
            store.setValue(key, value);
    store.sync();
}

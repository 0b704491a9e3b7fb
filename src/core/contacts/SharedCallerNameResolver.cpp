#include "contacts/SharedCallerNameResolver.h"

#include "app/TNPreferencesManager.h"
#include "contacts/CallerIdentification.h"
#include "contacts/ReverseLookup.h"

QStringList SharedCallerNameResolver::searchNameForPhonenumber(const QString& number)
{
    return methods::searchNameForPhonenumber(number);
}

void SharedCallerNameResolver::reverseSearchInBackground(const QString& connID, const QString& number,
                                                         ReverseResult done)
{
    ReverseLookup* lookup = ReverseLookup::shared();
    const TNPreferencesManager* manager = TNPreferencesManager::sharedManager();
    const auto prefs = manager ? manager->currentPreferences() : nullptr;
    if (!lookup || !prefs || !prefs->useReverseSearch || number.isEmpty())
        return;
    // The listener moves the answer to its own thread itself.
    lookup->reverseSearchInBackground(connID, number, Prefixis(prefs->prefixis), this,
                                      [done](const QString& name, const QString& id) { done(id, name); });
}

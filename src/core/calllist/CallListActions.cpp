#include "calllist/CallListActions.h"

#include "base/NumberForms.h"
#include "base/TNPreferences.h"
#include "calllist/CallListExport.h"
#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"
#include "contacts/CallerIdentification.h"
#include "contacts/ContactsServices.h"
#include "contacts/ReverseLookup.h"
#include "contacts/VCardAddressBook.h"

#include <QSaveFile>

CallListActions::Deletion CallListActions::deleteCalls(int profile, const QList<qint64>& rowids)
{
    Deletion d;
    const QList<qint64> known = m_calls.callsOfProfile(profile, rowids);
    for (qint64 rowid : rowids)
        if (!known.contains(rowid))
            d.foreign.append(rowid);
    if (!d.foreign.isEmpty() || rowids.isEmpty())
        return d;
    d.deleted = m_calls.deleteCallsForProfile(profile, rowids);
    return d;
}

int CallListActions::exportableSelector(int selector)
{
    static const QList<int> exportable = {ListQuery::SelectorAll, ListQuery::SelectorIncoming,
                                          ListQuery::SelectorMissed, ListQuery::SelectorOutgoing,
                                          ListQuery::SelectorNew};
    return exportable.contains(selector) ? selector : ListQuery::SelectorAll;
}

bool CallListActions::exportToFile(int profile, int selector, const QString& path, QString* error)
{
    const QString text = CallListExport::exportCallsFromListForProfile(
        m_calls, profile, exportableSelector(selector), CallListExport::exportFieldNames(),
        QStringLiteral(";"), QStringLiteral("\""));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

AddressBook* CallListActions::addressBook() const
{
    return m_contacts.addressBook();
}

QString CallListActions::lookUp(const QString& number, const std::shared_ptr<TNPreferences>& prefs)
{
    const Prefixis prefixis(prefs ? prefs->prefixis : QStringList());
    return m_contacts.reverseLookup().threadReverseSearch(QString(), number, prefixis, nullptr, {});
}

QStringList CallListActions::contactAdded(const QString& number, const std::shared_ptr<TNPreferences>& prefs)
{
    m_calls.resetCallerNamesForNumber(number);
    return methods::searchNameForPhonenumber(number, m_contacts.callerCache(), m_contacts.addressBook(),
                                             Prefixis(prefs ? prefs->prefixis : QStringList()),
                                             prefs ? prefs->contactFormat : QVariantMap());
}

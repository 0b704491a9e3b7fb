#include "calllist/DialCompletion.h"

#include "base/Localization.h"
#include "calllist/CallDatabase.h"
#include "calllist/SqlFragment.h"
#include "contacts/AddressBook.h"
#include "contacts/AddressBookSearch.h"

#include <QSet>

QString DialCompletion::text() const
{
    if (name.isEmpty())
        return number;
    const QString who = label.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, label);
    return QStringLiteral("%1 – %2").arg(who, number);
}

namespace methods {

QString phoneLabelText(const QString& label)
{
    return !label.isEmpty() && Localization::hasKey(label) ? Localization::localized(label) : label;
}

QList<DialCompletion> dialCompletions(const AddressBook* book, const CallDatabase* db,
                                      const QVariantMap& format)
{
    QList<DialCompletion> out;
    QSet<QString> seen;
    if (book && book->isAvailable()) {
        const auto snapshot = book->snapshot();
        for (const ABPerson& person : snapshot->people) {
            const QString name = adressbooksearch::formatedOutputForContactWithFirstname(
                person.firstName, person.lastName, person.organization, format);
            for (const ABPhone& phone : person.phones) {
                if (phone.value.isEmpty() || seen.contains(phone.value))
                    continue;
                seen.insert(phone.value);
                out.append({phone.value, name, phoneLabelText(phone.label)});
            }
        }
    }
    if (db) {
        const SqlFragment sql(QStringLiteral("SELECT phonenumber, name, label FROM caller WHERE name != '' "
                                             "ORDER BY name"));
        for (const QVariantMap& row : db->selectLogged(sql, "dialCompletions")) {
            const QString number = row.value(QStringLiteral("phonenumber")).toString();
            if (number.isEmpty() || seen.contains(number))
                continue;
            seen.insert(number);
            out.append({number, row.value(QStringLiteral("name")).toString(),
                        phoneLabelText(row.value(QStringLiteral("label")).toString())});
        }
    }
    return out;
}

} // namespace methods

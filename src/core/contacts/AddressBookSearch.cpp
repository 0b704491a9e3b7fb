#include "contacts/AddressBookSearch.h"

#include "contacts/AddressBookIndex.h"

#include <QHash>
#include <QSet>

#include <array>

namespace adressbooksearch {

namespace {
QStringList noMatch()
{
    return {QString(), QString(), QString()};
}

QString displayName(const ABPerson& person, const QVariantMap& format)
{
    return formatedOutputForContactWithFirstname(person.firstName, person.lastName, person.organization,
                                                 format);
}
} // namespace

QStringList searchAdressbookForPhoneNew(const QString& number, const Prefixis& p, const AddressBook* book,
                                        const QVariantMap& format)
{
    if (!book || !book->isAvailable())
        return noMatch();
    const QString withoutTrunk = methods::removePrefixWhenLongEnough(number, p.trunk);
    const auto index = AddressBookIndex::forSnapshot(book->snapshot(), p);
    const int position = index->firstSingleMatch(number, withoutTrunk);
    if (position < 0)
        return noMatch();
    const auto [personIndex, phoneIndex] = index->entries().at(position);
    const ABPerson& person = index->snapshot().people.at(personIndex);
    return {person.uid, displayName(person, format), person.phones.at(phoneIndex).label};
}

QVector<QStringList> searchAdressbookForPhoneArray(const QStringList& numbers, const Prefixis& p,
                                                   const AddressBook* book, const QVariantMap& format)
{
    QVector<QStringList> result;
    if (!book || !book->isAvailable())
        return result;
    // First position of every value, as the list search would find it.
    QHash<QString, int> firstPosition;
    firstPosition.reserve(numbers.size());
    for (int i = 0; i < numbers.size(); ++i)
        firstPosition.insert(numbers.at(i), std::min(i, firstPosition.value(numbers.at(i), i)));

    const auto index = AddressBookIndex::forSnapshot(book->snapshot(), p);
    const auto& entries = index->entries();
    const qsizetype wanted = numbers.size() / 2;
    QSet<QString> matched;
    for (int e = 0; e < entries.size() && matched.size() != wanted; ++e) {
        auto it = firstPosition.constFind(index->batchFirst().at(e));
        if (it == firstPosition.constEnd() && !index->batchSecond().at(e).isEmpty())
            it = firstPosition.constFind(index->batchSecond().at(e));
        if (it == firstPosition.constEnd())
            continue;
        // The pairs start at even positions; an odd hit is the short form of its neighbour.
        const QString& number = numbers.at(*it % 2 ? *it - 1 : *it);
        if (matched.contains(number))
            continue;
        matched.insert(number);
        const ABPerson& person = index->snapshot().people.at(entries.at(e).person);
        result.append(
            {number, person.uid, displayName(person, format), person.phones.at(entries.at(e).phone).label});
    }
    return result;
}

QString formatedOutputForContactWithFirstname(const QString& first, const QString& last,
                                              const QString& company, const QVariantMap& format)
{
    std::array<QString, 3> slotText;
    const auto slotFor = [&format](const QString& key) -> int {
        const auto it = format.constFind(key);
        if (it == format.constEnd())
            return -1;
        bool ok = false;
        const int slot = it->toInt(&ok);
        return ok && slot >= 0 && slot <= 2 ? slot : -1;
    };
    const auto shortened = [](const QString& name) {
        return name.size() > 1 ? name.left(1) + QStringLiteral(".") : name;
    };
    bool namePresent = false;
    const auto placeName = [&](const QString& value, const QString& fullKey, const QString& shortKey) {
        if (value.isEmpty())
            return;
        if (const int slot = slotFor(fullKey); slot >= 0) {
            slotText[size_t(slot)] = value;
            namePresent = true;
        } else if (const int shortSlot = slotFor(shortKey); shortSlot >= 0) {
            slotText[size_t(shortSlot)] = shortened(value);
            namePresent = true;
        }
    };
    placeName(first, QStringLiteral("Firstname"), QStringLiteral("Firstname_Short"));
    placeName(last, QStringLiteral("Surname"), QStringLiteral("Surname_Short"));

    int companySlot = -1;
    if (!company.isEmpty()) {
        // Without a name part the company alone stands first (a second copy in its own slot
        // would repeat it).
        if (!namePresent) {
            slotText[0] = company;
        } else if (const int slot = slotFor(QStringLiteral("Company")); slot >= 0) {
            companySlot = slot;
            slotText[size_t(slot)] = company;
        }
    }

    QString joined;
    for (int i = 0; i < 3; ++i) {
        const QString& value = slotText[size_t(i)];
        const bool last = i == 2;
        QString separator;
        if (i != companySlot || !namePresent) {
            if (!value.isEmpty() && !last)
                separator = QStringLiteral(" ");
        } else {
            if (companySlot > 0)
                joined += QStringLiteral("- ");
            if (!last)
                separator = QStringLiteral(" - ");
        }
        if (!value.isEmpty())
            joined += value + separator;
    }
    return methods::trimString(joined);
}

QStringList addressbookGroups(const AddressBook* book)
{
    QStringList groups;
    if (!book || !book->isAvailable())
        return groups;
    for (const ABPerson& person : book->snapshot()->people)
        for (const QString& group : person.groups)
            if (!groups.contains(group))
                groups.append(group);
    return groups;
}

QVector<ABPerson> peoplesForGroup(const QString& group, const AddressBook* book)
{
    QVector<ABPerson> members;
    if (!book || !book->isAvailable())
        return members;
    for (const ABPerson& person : book->snapshot()->people)
        if (person.groups.contains(group))
            members.append(person);
    return members;
}

} // namespace adressbooksearch

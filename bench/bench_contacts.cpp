// Address-book matching at the sizes of a large book: 10,000 contacts with 3 numbers each, and
// the caller cache's 5,000 numbers refreshed in one batch.
#include "base/StringAdditions.h"
#include "contacts/AddressBookIndex.h"
#include "contacts/AddressBookSearch.h"
#include "contacts/VCardAddressBook.h"
#include "contacts/VCardParser.h"

#include <QFile>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace {

const Prefixis berlin(QStringList{QStringLiteral("00"), QStringLiteral("49"), QStringLiteral("0"),
                                  QStringLiteral("30")});
const QVariantMap format{
    {QStringLiteral("Firstname"), 0}, {QStringLiteral("Surname"), 1}, {QStringLiteral("Company"), 2}};

QString digits(QRandomGenerator& rng, int count)
{
    QString s;
    for (int i = 0; i < count; ++i)
        s += QChar(u'0' + rng.bounded(10));
    return s;
}

struct Fixture
{
    QTemporaryDir dir;
    std::unique_ptr<VCardAddressBook> book;
    QStringList cached;   // clean numbers as the caller cache holds them
    QStringList pairList; // each number followed by its form without the trunk prefix

    Fixture()
    {
        QRandomGenerator rng(4711);
        QByteArray vcf;
        QStringList someBookNumbers;
        for (int i = 0; i < 10000; ++i) {
            ABPerson p;
            p.uid = QStringLiteral("uid-%1").arg(i);
            p.firstName = QStringLiteral("Vorname%1").arg(i);
            p.lastName = QStringLiteral("Nachname%1").arg(i);
            if (i % 7 == 0)
                p.organization = QStringLiteral("Firma %1 GmbH").arg(i);
            // The ways people store numbers: international, with separators, without area code.
            const QString local = digits(rng, 7);
            p.phones = {
                {PhoneLabel::Home, QStringLiteral("+49 30 ") + local},
                {PhoneLabel::Mobile, QStringLiteral("0171 / ") + digits(rng, 7)},
                {PhoneLabel::Work, i % 3 ? QStringLiteral("(089) ") + digits(rng, 6) : digits(rng, 6)}};
            // Every 50th contact shares a number with an earlier one: the earlier must win.
            if (i % 50 == 49)
                p.phones[2].value = someBookNumbers.at(rng.bounded(int(someBookNumbers.size())));
            for (const ABPhone& ph : p.phones)
                someBookNumbers.append(ph.value);
            vcf += VCardParser::serialize(p);
        }
        const QString path = dir.filePath(QStringLiteral("book.vcf"));
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(vcf) != vcf.size())
            std::abort();
        f.close();
        book = std::make_unique<VCardAddressBook>(path);

        // 5,000 cached numbers: most in the book in the forms calls arrive in, some unknown.
        for (int i = 0; i < 5000; ++i) {
            QString n;
            if (i % 4 == 3) {
                n = QStringLiteral("0") + digits(rng, 9);
            } else {
                n = methods::cleanNumber(someBookNumbers.at(rng.bounded(int(someBookNumbers.size()))),
                                         berlin);
                if (n.startsWith(QStringLiteral("030")) && i % 2)
                    n = n.mid(3); // a local call without area code
            }
            cached.append(n);
        }
        for (const QString& n : cached) {
            pairList.append(n);
            if (n.size() >= berlin.trunk.size())
                pairList.append(methods::removePrefixWhenLongEnough(n, berlin.trunk));
        }
    }
};

Fixture& fixture()
{
    static Fixture f;
    return f;
}

// The rules read literally, step by step from the number-form helpers: a pass over every entry
// and a linear list search per entry. The fast paths must give the same answers.
QString literalAreaStrip(const QString& v, const Prefixis& p)
{
    if (v.size() < p.trunkArea().size())
        return v;
    return methods::removePrefixWhenLongEnough(methods::removePrefixWhenLongEnough(v, p.trunkArea()), p.area);
}

QString literalPlus(const QString& v, const Prefixis& p)
{
    return !v.isEmpty() && v.at(0) == u'+' ? p.international + v.mid(1) : v;
}

QVector<QStringList> linearBatch(const QStringList& numbers, const Prefixis& p,
                                 const AddressBookSnapshot& book)
{
    QVector<QStringList> result;
    QSet<QString> matched;
    for (const ABPerson& person : book.people) {
        for (const ABPhone& phone : person.phones) {
            QString v;
            for (const QChar c : phone.value)
                if (c.isDigit())
                    v += c;
            v = literalPlus(v, p);
            v = methods::removePrefixWhenLongEnough(v, p.internationalCountry());
            v = methods::removePrefixWhenLongEnough(v, p.country);
            qsizetype at = numbers.indexOf(v);
            if (at < 0)
                at = numbers.indexOf(literalAreaStrip(v, p));
            if (at < 0)
                continue;
            const QString& number = numbers.at(at % 2 ? at - 1 : at);
            if (matched.contains(number))
                continue;
            matched.insert(number);
            result.append({number, person.uid,
                           adressbooksearch::formatedOutputForContactWithFirstname(
                               person.firstName, person.lastName, person.organization, format),
                           phone.label});
            if (matched.size() == numbers.size() / 2)
                return result;
        }
    }
    return result;
}

QStringList linearSingle(const QString& n, const Prefixis& p, const AddressBookSnapshot& book)
{
    const QString nn = methods::removePrefixWhenLongEnough(n, p.trunk);
    for (const ABPerson& person : book.people) {
        for (const ABPhone& phone : person.phones) {
            QString v =
                SearchingAdditions::stringByReplacingCharactersInSet(phone.value, u"()./- ", QString());
            v = literalPlus(v, p);
            v = methods::removePrefixWhenLongEnough(v, p.internationalCountry());
            bool hit = v == n || v == nn;
            if (!hit) {
                v = literalAreaStrip(v, p);
                hit = v == n || v == nn;
            }
            if (hit)
                return {person.uid,
                        adressbooksearch::formatedOutputForContactWithFirstname(
                            person.firstName, person.lastName, person.organization, format),
                        phone.label};
        }
    }
    return {QString(), QString(), QString()};
}

void verifyAgainstLinearRules()
{
    Fixture& f = fixture();
    const auto snapshot = f.book->snapshot();
    const auto fast =
        adressbooksearch::searchAdressbookForPhoneArray(f.pairList, berlin, f.book.get(), format);
    const auto slow = linearBatch(f.pairList, berlin, *snapshot);
    if (fast != slow) {
        std::fprintf(stderr, "batch lookup differs from the linear rule (%lld vs %lld records)\n",
                     static_cast<long long>(fast.size()), static_cast<long long>(slow.size()));
        std::abort();
    }
    for (int i = 0; i < 300; ++i) {
        const QString& n = f.cached.at(i);
        if (adressbooksearch::searchAdressbookForPhoneNew(n, berlin, f.book.get(), format) !=
            linearSingle(n, berlin, *snapshot)) {
            std::fprintf(stderr, "single lookup differs from the linear rule for %s\n", qPrintable(n));
            std::abort();
        }
    }
    std::fprintf(stderr, "checked: %lld batch records equal the linear rule\n",
                 static_cast<long long>(fast.size()));
}

void BM_BatchLookup(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state) {
        auto records =
            adressbooksearch::searchAdressbookForPhoneArray(f.pairList, berlin, f.book.get(), format);
        benchmark::DoNotOptimize(records);
    }
    state.counters["records"] = double(
        adressbooksearch::searchAdressbookForPhoneArray(f.pairList, berlin, f.book.get(), format).size());
}
BENCHMARK(BM_BatchLookup)->Unit(benchmark::kMillisecond);

// The first batch after the book or the location changed also normalises every entry.
void BM_BatchLookupFirstAfterChange(benchmark::State& state)
{
    Fixture& f = fixture();
    const auto snapshot = f.book->snapshot();
    for (auto _ : state) {
        AddressBookIndex index(snapshot, berlin);
        benchmark::DoNotOptimize(index.batchFirst().size());
        auto records =
            adressbooksearch::searchAdressbookForPhoneArray(f.pairList, berlin, f.book.get(), format);
        benchmark::DoNotOptimize(records);
    }
}
BENCHMARK(BM_BatchLookupFirstAfterChange)->Unit(benchmark::kMillisecond);

void BM_SingleLookup(benchmark::State& state)
{
    Fixture& f = fixture();
    qsizetype i = 0;
    for (auto _ : state) {
        auto found = adressbooksearch::searchAdressbookForPhoneNew(f.cached.at(i++ % f.cached.size()), berlin,
                                                                   f.book.get(), format);
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(BM_SingleLookup)->Unit(benchmark::kMicrosecond);

// Both parts of the index, as after a change of book or location with single and batch use.
void BM_BuildIndex(benchmark::State& state)
{
    const auto snapshot = fixture().book->snapshot();
    for (auto _ : state) {
        AddressBookIndex index(snapshot, berlin);
        benchmark::DoNotOptimize(index.firstSingleMatch(QStringLiteral("0"), QStringLiteral("0")));
        benchmark::DoNotOptimize(index.batchFirst().size());
    }
}
BENCHMARK(BM_BuildIndex)->Unit(benchmark::kMillisecond);

// Reading and parsing the 10,000-card file (done again only when it changes).
void BM_ReadBook(benchmark::State& state)
{
    Fixture& f = fixture();
    QFile file(f.dir.filePath(QStringLiteral("book.vcf")));
    if (!file.open(QIODevice::ReadOnly))
        std::abort();
    const QByteArray data = file.readAll();
    for (auto _ : state) {
        auto parsed = VCardParser::parse(data, QStringLiteral("book.vcf"));
        benchmark::DoNotOptimize(parsed);
    }
}
BENCHMARK(BM_ReadBook)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    verifyAgainstLinearRules();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// The journal import on a real call database: header variants, encodings, the router's quirks,
// duplicates and early stop of downloads, names, the age limit and the badge.
#include "CalllistFixture.h"

#include "../contacts/StaticAddressBook.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "calllist/JournalBadge.h"
#include "calllist/JournalImporter.h"
#include "calllist/JournalParser.h"

#include <QDir>
#include <QFile>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QString dataFile(const QString& name)
{
    return QStringLiteral(TONDREL_TEST_DATA_DIR "/calllist/") + name;
}

struct Stored
{
    int callstate;
    QString date; // dd.MM.yyyy HH:mm
    QString number, extension, line, duration;
};

} // namespace

class TestJournalImport : public QObject
{
    Q_OBJECT
public:
    // A location with the Berlin dialling context.
    int addLocation(CalllistFixture& f)
    {
        const int profile = f.addLocation();
        auto prefs = f.calls->prefsForProfile(profile);
        prefs->prefixis = {u"00"_s, u"49"_s, u"0"_s, u"30"_s};
        prefs->save();
        return profile;
    }

    QString writeFile(CalllistFixture& f, const QByteArray& bytes)
    {
        const QString path = f.dir.filePath(u"journal-%1.csv"_s.arg(++m_files));
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return path;
    }

    JournalImportResult importFile(CalllistFixture& f, int profile, const QString& path,
                                   const AddressBook* book = nullptr)
    {
        JournalImporter importer(*f.calls, f.store, book, &f.clock);
        return importer.getCSVListFromHost(path, profile);
    }

    // A download whose router answers with the given text; *cancel gets the cancel string.
    JournalImportResult download(CalllistFixture& f, int profile, const QString& text,
                                 QString* cancel = nullptr)
    {
        JournalImporter importer(*f.calls, f.store, nullptr, &f.clock);
        importer.setDownloader([&](const QString& c) {
            if (cancel)
                *cancel = c;
            return text;
        });
        return importer.getCSVListFromHost(QString(), profile);
    }

    QList<Stored> stored(CalllistFixture& f, int profile)
    {
        QList<Stored> rows;
        for (const CallRow& r : f.calls->getCallerlistForProfile(profile, 0, {}, {}, u"date"_s, u"DESC"_s, 0))
            rows.append({r.callstate, r.dateTime().toString(u"dd.MM.yyyy HH:mm"_s), r.phonenumber,
                         r.extension, r.line, r.duration});
        return rows;
    }

private:
    int m_files = 0;

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void headerVariants_data()
    {
        QTest::addColumn<QString>("header");
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("name");
        const QString seven = u"1;14.03.26 09:05;Erika Muster;0301234;Küche;5550001;0:12"_s;
        const QString six = u"1;14.03.26 09:05;0301234;Küche;5550001;0:12"_s;
        QTest::newRow("german 6") << u"Typ;Datum;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer"_s << six
                                  << QString();
        QTest::newRow("german 7") << u"Typ;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer"_s << seven
                                  << u"Erika Muster"_s;
        QTest::newRow("german 7 blanks")
            << u"Typ; Datum; Name; Rufnummer; Nebenstelle; Eigene Rufnummer; Dauer"_s << seven
            << u"Erika Muster"_s;
        QTest::newRow("english 6") << u"Type; Date; Number; Extension; Local Number; Duration"_s << six
                                   << QString();
        QTest::newRow("mixed 7") << u"Typ;Date;Name;Number;Extension;Outgoing Caller ID;Duration"_s << seven
                                 << u"Erika Muster"_s;
        QTest::newRow("german 8 with area")
            << u"Typ;Datum;Name;Rufnummer;Landes-/Ortsnetzbereich;Nebenstelle;Eigene Rufnummer;Dauer"_s
            << u"1;14.03.26 09:05;Erika Muster;0301234;Berlin;Küche;5550001;0:12"_s << u"Erika Muster"_s;
        QTest::newRow("7-field row under 6-column header")
            << u"Typ;Datum;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer"_s << seven << u"Erika Muster"_s;
    }
    void headerVariants()
    {
        QFETCH(QString, header);
        QFETCH(QString, row);
        QFETCH(QString, name);
        for (const bool withSep : {true, false}) {
            CalllistFixture f;
            const int profile = addLocation(f);
            const QString text = (withSep ? u"sep=;\n"_s : QString()) + header + u'\n' + row + u'\n';
            const auto r = importFile(f, profile, writeFile(f, text.toUtf8()));
            QCOMPARE(r.result, 1);
            QCOMPARE(r.badLines, 0);
            const auto rows = stored(f, profile);
            QCOMPARE(rows.size(), 1);
            QCOMPARE(rows[0].date, u"14.03.2026 09:05"_s);
            QCOMPARE(rows[0].number, u"0301234"_s);
            QCOMPARE(rows[0].extension, u"Küche"_s);
            QCOMPARE(rows[0].line, u"5550001"_s);
            QCOMPARE(rows[0].duration, u"0:12"_s);
            QCOMPARE(f.calls->searchCallerNameForPhoneNumber(u"0301234"_s).value(1), name);
        }
    }

    void realJournals_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("imported");
        QTest::addColumn<int>("outgoing");
        QTest::addColumn<QString>("newest");
        QTest::addColumn<QString>("newestNumber");
        QTest::newRow("no final newline") << u"journal_incoming_no_final_newline.csv"_s << 3 << 0
                                          << u"09.11.2019 08:42"_s << u"0895552718"_s;
        QTest::newRow("empty journal") << u"journal_header_only.csv"_s << 0 << 0 << QString() << QString();
        // Type 3 is outgoing here: this journal has no type 4.
        QTest::newRow("older firmware, no type 4")
            << u"journal_without_type4.csv"_s << 14 << 5 << u"27.11.2011 09:41"_s << u"030**811"_s;
    }
    void realJournals()
    {
        QFETCH(QString, file);
        QFETCH(int, imported);
        QFETCH(int, outgoing);
        QFETCH(QString, newest);
        QFETCH(QString, newestNumber);
        CalllistFixture f;
        const int profile = addLocation(f);
        const auto r = importFile(f, profile, dataFile(file));
        QCOMPARE(r.result, imported);
        QCOMPARE(r.badLines, 0);
        const auto rows = stored(f, profile);
        QCOMPARE(rows.size(), imported);
        QCOMPARE(f.calls->getCallCounterStatisticForProfile(profile, 0, 0, 3), qint64(outgoing));
        if (imported) {
            QCOMPARE(rows[0].date, newest);
            QCOMPARE(rows[0].number, newestNumber);
        }
    }

    void latin1JournalWithUmlauts()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        const auto r = importFile(f, profile, dataFile(u"journal_8columns_latin1.csv"_s));
        QCOMPARE(r.result, 4);
        QCOMPARE(f.calls->searchCallerNameForPhoneNumber(u"004533155512"_s).value(1),
                 u"Bäckerei Jürgensen"_s);
        const auto rows = stored(f, profile);
        QCOMPARE(rows[0].extension, u""_s); // 14.09. 19:48 has no extension
        QCOMPARE(rows[1].extension, u"ISDN Gerät"_s);
        QCOMPARE(rows[1].line, u"5557310"_s);
        // The same text in UTF-8 reads the same.
        CalllistFixture g;
        const int p2 = addLocation(g);
        QFile latin(dataFile(u"journal_8columns_latin1.csv"_s));
        QVERIFY(latin.open(QIODevice::ReadOnly));
        importFile(g, p2, writeFile(g, QString::fromLatin1(latin.readAll()).toUtf8()));
        QCOMPARE(g.calls->searchCallerNameForPhoneNumber(u"004533155512"_s).value(1),
                 u"Bäckerei Jürgensen"_s);
    }

    void unreadableJournals_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("login page, old")
            << QByteArray("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01//EN\">\n"
                          "<html><body><input type=\"password\"></body></html>\n");
        QTest::newRow("login page, current") << QByteArray("<!DOCTYPE html>\n<html><head></head></html>\n");
        QTest::newRow("one line") << QByteArray("1;14.03.26 09:05;;0301234;Küche;5550001;0:12");
        QTest::newRow("empty") << QByteArray();
    }
    void unreadableJournals()
    {
        QFETCH(QByteArray, text);
        CalllistFixture f;
        const int profile = addLocation(f);
        int reloads = 0;
        QObject ctx;
        f.center.addObserver(&ctx, Notifications::RELOADCALLINGLIST, [&](const Notification&) { ++reloads; });
        QCOMPARE(download(f, profile, QString::fromUtf8(text)).result, -1);
        QCOMPARE(importFile(f, profile, writeFile(f, text)).result, -1);
        QTRY_COMPARE(reloads, 2); // the view stops its progress indicator
        QVERIFY(f.calls->updatingProfiles().isEmpty());
        QVERIFY(!f.calls->getMarkerDate(profile, TNCallinglist::MarkerImport));
    }

    void badLinesAreSkippedAndCounted()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        QFile cases(dataFile(u"journal_line_cases.txt"_s));
        QVERIFY(cases.open(QIODevice::ReadOnly));
        QByteArray text = "sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n";
        for (const QByteArray& line : cases.readAll().split('\n'))
            if (!line.startsWith('#'))
                text += line + '\n';
        const auto r = importFile(f, profile, writeFile(f, text));
        QCOMPARE(r.result, 12);
        QCOMPARE(r.badLines, 10);
        for (const Stored& s : stored(f, profile))
            QVERIFY(!s.duration.isEmpty() && s.callstate >= 1 && s.callstate <= 3);
    }

    void callTypes_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QList<int>>("states");
        QTest::newRow("type 4 journal: 3 is rejected")
            << u"3;14.03.26 09:05;;0301;;1;0:00\n4;14.03.26 09:04;;0302;;1;0:01\n1;14.03.26 "
               u"09:03;;0303;;1;0:02\n"
               u"2;14.03.26 09:02;;0304;;1;0:00"_s
            << QList<int>{2, 3, 1, 2};
        QTest::newRow("journal without 4: 3 is outgoing")
            << u"3;14.03.26 09:05;;0301;;1;0:00\n1;14.03.26 09:03;;0303;;1;0:02"_s << QList<int>{3, 1};
    }
    void callTypes()
    {
        QFETCH(QString, rows);
        QFETCH(QList<int>, states);
        CalllistFixture f;
        const int profile = addLocation(f);
        const auto r = importFile(
            f, profile,
            writeFile(
                f,
                (u"sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s + rows).toUtf8()));
        QCOMPARE(r.result, int(states.size()));
        QList<int> got;
        for (const Stored& s : stored(f, profile))
            got.append(s.callstate);
        QCOMPARE(got, states);
        QCOMPARE(r.missed, int(states.count(2)));
    }

    void numbersAndSampleRow()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        QString text = u"sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s
                       u"1;14.03.26 09:09;;1234567;;1;0:01\n" // the sample row at the head: skipped
                       u"1;14.03.26 09:08;;7654321;;1;0:01\n" // local number: area code in front
                       u"1;14.03.26 09:07;;0891234;;1;0:01\n" // with trunk prefix: unchanged
                       u"1;14.03.26 09:06;;;;1;0:01\n"        // withheld: stays empty
                       u"1;14.03.26 09:05;;0301;;1;0:01\n"
                       u"1;14.03.26 09:04;;1234567;;1;0:01\n"; // deeper down: a real call
        const auto r = importFile(f, profile, writeFile(f, text.toUtf8()));
        QCOMPARE(r.result, 5);
        QStringList numbers;
        for (const Stored& s : stored(f, profile))
            numbers.append(s.number);
        QCOMPARE(numbers, (QStringList{u"0307654321"_s, u"0891234"_s, u""_s, u"0301"_s, u"0301234567"_s}));
    }

    void longYearDatesStay()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        const QString text = u"Typ;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s
                             u"1;14.03.2026 09:09;;0301;;1;0:01\n"
                             u"1;13.03.26 09:08;;0302;;1;0:01\n"; // short form after a long one: unreadable
        const auto r = importFile(f, profile, writeFile(f, text.toUtf8()));
        QCOMPARE(r.result, 1);
        QCOMPARE(r.badLines, 1);
        QCOMPARE(stored(f, profile).value(0).date, u"14.03.2026 09:09"_s);
    }

    void callerNames()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        QVERIFY(f.calls->insertCallerWithName(u"Cached Name"_s, u"0301"_s, u"c-1"_s, u"work"_s));
        StaticAddressBook book({person(u"ab-1:Max Mustermann:mobile=0170 111"_s)});
        const QString text = u"Typ;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s
                             u"1;14.03.26 09:09;Box Name;0301;;1;0:01\n"    // cache wins
                             u"1;14.03.26 09:08;Box Name;0170111;;1;0:01\n" // address book wins
                             u"1;14.03.26 09:07;;0170111;;1;0:01\n"
                             u"1;14.03.26 09:06;Nur Box;0402;;1;0:01\n" // router's name
                             u"1;14.03.26 09:05;;0403;;1;0:01\n";       // nobody knows
        const auto r = importFile(f, profile, writeFile(f, text.toUtf8()), &book);
        QCOMPARE(r.result, 5);
        QCOMPARE(f.calls->searchCallerNameForPhoneNumber(u"0301"_s),
                 (QStringList{u"c-1"_s, u"Cached Name"_s, u"work"_s}));
        QCOMPARE(f.calls->searchCallerNameForPhoneNumber(u"0170111"_s),
                 (QStringList{u"ab-1"_s, u"Max Mustermann"_s, u"mobile"_s}));
        QCOMPARE(f.calls->searchCallerNameForPhoneNumber(u"0402"_s),
                 (QStringList{u""_s, u"Nur Box"_s, u""_s}));
        QVERIFY(f.calls->searchCallerNameForPhoneNumber(u"0403"_s).isEmpty());
    }

    void downloadDuplicatesAndEarlyStop()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        const QString head = u"sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s;
        const QString older = u"1;14.03.26 09:05;;0301;Küche;1;0:01\n2;13.03.26 20:00;;0302;;1;0:00\n"
                              u"1;10.03.26 08:00;;0303;;1;0:03\n"_s;
        QString cancel;
        auto r = download(f, profile, head + older, &cancel);
        QCOMPARE(cancel, u";;"_s);
        QCOMPARE(r.result, 3);
        QVERIFY(f.calls->getMarkerDate(profile, TNCallinglist::MarkerImport));

        // The same journal again adds nothing; a new call at the head is added.
        r = download(f, profile, head + older, &cancel);
        QCOMPARE(cancel, u";14.03.26 09:05;"_s);
        QCOMPARE(r.result, 0);
        QCOMPARE(r.duplicates, 2); // the third row is older than a day before the newest: the end
        QVERIFY(r.stoppedEarly);

        // Same minute, same number, another extension: the call already stored.
        const QString newer = u"3;14.03.26 11:00;;0309;;1;0:04\n1;14.03.26 09:05;;0301;Wohnzimmer;1;0:02\n"_s;
        r = download(f, profile, head + newer + older);
        QCOMPARE(r.result, 1);
        QCOMPARE(r.duplicates, 3);
        QCOMPARE(stored(f, profile).size(), 4);

        // Files are taken whole, without the duplicate test.
        QCOMPARE(importFile(f, profile, writeFile(f, (head + older).toUtf8())).result, 3);
    }

    void ageLimitLeavesMarkers()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        f.call(profile, 1, at(2026, 1, 1)); // 73 days old
        f.call(profile, 1, at(2026, 3, 1)); // 14 days old
        f.calls->updateMarkerDate(profile, TNCallinglist::MarkerVoicemail, at(2025, 1, 1));
        const QString journal = u"sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s
                                u"1;15.03.26 11:00;;0301;;1;0:01\n"_s;
        // A file import leaves old calls alone.
        f.store.setValue(keys::ListDeleteInterval, 30);
        importFile(f, profile, writeFile(f, journal.toUtf8()));
        QCOMPARE(stored(f, profile).size(), 3);

        f.calls->deleteItemFromCallingListwithColumn(u"calldate"_s,
                                                     at(2026, 3, 15, 11, 0).toSecsSinceEpoch());
        QCOMPARE(download(f, profile, journal).result, 1);
        const auto rows = stored(f, profile);
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.last().date, u"01.03.2026 10:00"_s);
        QVERIFY(f.calls->getLastDateForVoicemailForProfile(profile));
        QVERIFY(f.calls->getMarkerDate(profile, TNCallinglist::MarkerImport));
    }

    void refusedWhileRunning()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        QVERIFY(f.calls->beginUpdatingProfile(profile));
        QCOMPARE(importFile(f, profile, dataFile(u"journal_incoming_no_final_newline.csv"_s)).result, 0);
        QCOMPARE(stored(f, profile).size(), 0);
    }

    void notificationsAndBadge()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        f.store.setValue(keys::BadgeNewCalls, true);
        f.store.setValue(keys::BadgeNewAbsentiaCalls, true);
        QStringList posted;
        QObject ctx;
        for (const QString& name : {Notifications::RELOADABFAXLIST, Notifications::RELOADCALLINGLIST,
                                    Notifications::REFRESHLATESTCALLSMENU})
            f.center.addObserver(&ctx, name, [&posted, name](const Notification&) { posted << name; });
        f.call(profile, 1, at(2026, 3, 14, 8, 0));
        f.calls->setLastDateForNewCallsForProfile(profile);
        const QString journal = u"sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s
                                u"2;14.03.26 10:00;;0301;;1;0:00\n1;14.03.26 09:00;;0302;;1;0:01\n"_s;
        const auto r = download(f, profile, journal);
        QCOMPARE(r.result, 2);
        QCOMPARE(r.badge, std::optional<QString>(u"2 | 1"_s));
        QTRY_COMPARE(posted, (QStringList{Notifications::RELOADABFAXLIST, Notifications::RELOADCALLINGLIST,
                                          Notifications::REFRESHLATESTCALLSMENU}));
    }

    void webExportAfterImport()
    {
        CalllistFixture f;
        const int profile = addLocation(f);
        const QString folder = f.dir.filePath(u"web"_s);
        QVERIFY(QDir().mkpath(folder));
        const QString script = f.dir.filePath(u"after-export.sh"_s);
        {
            QFile s(script);
            QVERIFY(s.open(QIODevice::WriteOnly));
            s.write("#!/bin/sh\ntouch \"" + f.dir.filePath(u"ran"_s).toUtf8() + "\"\n");
            s.setPermissions(s.permissions() | QFile::ExeOwner);
        }
        f.store.setValue(keys::IPhoneExportState, true);
        f.store.setValue(keys::IPhoneExportPath, folder);
        f.store.setValue(keys::IPhoneExportScript, script);
        QVERIFY(f.calls->insertCallerWithName(u"Erika \"E\" Muster"_s, u"0301"_s, {}, {}));
        const QString journal =
            u"Typ;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s
            u"3;14.03.26 10:00;;0302;Büro;1;0:04\n1;14.03.26 09:00;;0301;Küche;1;0:01\n"_s;
        QCOMPARE(importFile(f, profile, writeFile(f, journal.toUtf8())).result, 2);
        QFile js(folder + u"/data.js"_s);
        QVERIFY(js.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(js.readAll()).split(u'\n');
        QVERIFY(lines[0].startsWith(u"var refreshData = \""_s));
        const QString in = u"{ date:\"14.03.2026 09:00\", name:\"Erika \"E\" Muster\", number:\"0301\", "
                           u"extension:\"Küche\", line:\"1\", duration:\"0:01\", state:\"1\"}"_s;
        const QString out = u"{ date:\"14.03.2026 10:00\", name:\"\", number:\"0302\", extension:\"Büro\", "
                            u"line:\"1\", duration:\"0:04\", state:\"3\"}"_s;
        QCOMPARE(
            lines[2],
            u"calldata[0] = new Object();calldata[0] = [%1];calldata[1] = new Object();calldata[1] = [%2];"
            u"calldata[2] = new Object();calldata[2] = [];calldata[3] = new Object();calldata[3] = [%2, %1];"_s
                .arg(in, out));
        QTRY_VERIFY(QFile::exists(f.dir.filePath(u"ran"_s)));
    }

    void badgeTitle_data()
    {
        QTest::addColumn<QVariant>("newCalls");
        QTest::addColumn<QVariant>("missedCalls");
        QTest::addColumn<int>("missed");
        QTest::addColumn<QString>("title"); // "-": none
        QTest::newRow("nothing set") << QVariant() << QVariant() << 2 << u"-"_s;
        QTest::newRow("both on") << QVariant(true) << QVariant(true) << 2 << u"7 | 2"_s;
        QTest::newRow("both on, nothing missed") << QVariant(true) << QVariant(true) << 0 << u"7"_s;
        QTest::newRow("missed only") << QVariant(false) << QVariant(true) << 2 << u"2"_s;
        QTest::newRow("missed only, nothing missed") << QVariant() << QVariant(true) << 0 << u"-"_s;
        QTest::newRow("new only") << QVariant(true) << QVariant(false) << 2 << u"7"_s;
    }
    void badgeTitle()
    {
        QFETCH(QVariant, newCalls);
        QFETCH(QVariant, missedCalls);
        QFETCH(int, missed);
        QFETCH(QString, title);
        CalllistFixture f;
        if (newCalls.isValid())
            f.store.setValue(keys::BadgeNewCalls, newCalls);
        if (missedCalls.isValid())
            f.store.setValue(keys::BadgeNewAbsentiaCalls, missedCalls);
        QCOMPARE(JournalBadge::title(f.store, 7, missed).value_or(u"-"_s), title);
    }
};

QTEST_GUILESS_MAIN(TestJournalImport)
#include "tst_journalimport.moc"

#include "MetaFileBuilder.h"

#include "base/NotificationCenter.h"
#include "voicemail/TNFTPDatasource.h"
#include "voicemail/VoicemailEntries.h"
#include "voicemail/VoicemailIndex.h"
#include "voicemail/VoicemailLookups.h"

#include <QSignalSpy>
#include <QTest>

namespace {

class MapLookup final : public CallerNameLookup
{
public:
    QStringList searchNameForPhonenumber(const QString& number) override
    {
        if (number == u"0301234567")
            return {QStringLiteral("ab-1"), QStringLiteral("Erika Mustermann"), QStringLiteral("mobile")};
        return emptyContact();
    }
};

class FixedMarkers final : public VoicemailMarkerStore
{
public:
    QDateTime voicemail, fax;
    QDateTime lastSavedVoicemailDate() override { return voicemail; }
    void setLastSavedVoicemailDate(const QDateTime& d) override { voicemail = d; }
    QDateTime lastSavedFaxDate() override { return fax; }
    void setLastSavedFaxDate(const QDateTime& d) override { fax = d; }
};

MetaRecord rec(const char* number, const char* file, quint32 duration = 10, int day = 1)
{
    return record(number, file, duration, day, 9);
}

QStringList recFiles(const QList<VoicemailEntry>& entries)
{
    QStringList out;
    for (const auto& e : entries)
        out << e.RecFile;
    return out;
}

const QString kPath = QStringLiteral("USB/FRITZ/voicebox/meta0");

} // namespace

class TestVoicemailIndex : public QObject
{
    Q_OBJECT

    NotificationCenter m_center;
private slots:
    void recordsAlignedToTheEnd_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QList<qsizetype>>("offsets");
        QTest::newRow("empty") << 0 << QList<qsizetype>{};
        QTest::newRow("one byte short of a record") << 347 << QList<qsizetype>{};
        QTest::newRow("exactly one record") << 348 << QList<qsizetype>{0};
        QTest::newRow("700 bytes: two records after 4 lead bytes") << 700 << QList<qsizetype>{352, 4};
        QTest::newRow("three records") << 1044 << QList<qsizetype>{696, 348, 0};
    }
    void recordsAlignedToTheEnd()
    {
        QFETCH(int, size);
        QFETCH(QList<qsizetype>, offsets);
        QCOMPARE(VoicemailIndex::recordOffsets(size), offsets);
    }

    void leadBytesDoNotShiftRecords()
    {
        const QByteArray file = metaFile({rec("111", "rec.0.000"), rec("222", "rec.0.001")}, false, 4);
        QCOMPARE(file.size(), 700);
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        const auto entries = ds.readMetaData(file, kPath);
        QCOMPARE(recFiles(entries), (QStringList{QStringLiteral("rec.0.001"), QStringLiteral("rec.0.000")}));
        QCOMPARE(entries.at(1).PhoneNumber, QStringLiteral("111"));
    }

    void byteOrders_data()
    {
        QTest::addColumn<quint32>("duration");
        QTest::addColumn<QString>("shown");
        QTest::newRow("short message") << quint32(44) << QStringLiteral("0:44");
        QTest::newRow("300 seconds: the whole word, not its low byte")
            << quint32(300) << QStringLiteral("5:00");
        QTest::newRow("over an hour wraps the minutes") << quint32(3661) << QStringLiteral("1:01");
    }
    void byteOrders()
    {
        QFETCH(quint32, duration);
        QFETCH(QString, shown);
        const QList<MetaRecord> records{rec("0301234567", "rec.0.000", duration, 3),
                                        rec("", "rec.0.001", 7, 4)};
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        const auto big = ds.readMetaData(metaFile(records, false), kPath);
        const auto little = ds.readMetaData(metaFile(records, true), kPath);
        QCOMPARE(little.size(), 2);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(little.at(i).toMap(), big.at(i).toMap());
        QCOMPARE(big.at(1).CallDuration, shown);
    }

    void unknownLengthWordGivesNoDuration()
    {
        QByteArray file = metaFile({rec("1", "rec.0.000", 125)}, false);
        file[3] = 0x5B; // neither 00 00 01 5C nor 5C 01 00 00
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        const auto entries = ds.readMetaData(file, kPath);
        QCOMPARE(entries.size(), 1);
        QCOMPARE(entries.at(0).CallDuration, QStringLiteral("0:00"));
    }

    void entryFields()
    {
        MetaRecord r = rec("0301234567", "rec.0.007", 65, 13);
        r.hour = 10;
        r.minute = 30;
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        MapLookup names;
        TNFTPDatasource named(m_center, nullptr, &names);
        const auto plain = ds.readMetaData(metaFile({r}, true), kPath);
        const auto withName = named.readMetaData(metaFile({r}, true), kPath);
        const VoicemailEntry& e = withName.at(0);
        QCOMPARE(e.PhoneNumber, QStringLiteral("0301234567"));
        QCOMPARE(e.CallDuration, QStringLiteral("1:05"));
        QCOMPARE(e.CallDate, QStringLiteral("13.11.2026"));
        QCOMPARE(e.CallTime, QStringLiteral("10:30"));
        QVERIFY(!e.CallTimestamp.isValid());
        QCOMPARE(e.recordedAt(), QDateTime(QDate(2026, 11, 13), QTime(10, 30)));
        QCOMPARE(e.recordingPath(), QStringLiteral("USB/FRITZ/voicebox/rec/rec.0.007"));
        QCOMPARE(e.Contact, (QStringList{QStringLiteral("ab-1"), QStringLiteral("Erika Mustermann"),
                                         QStringLiteral("mobile")}));
        QCOMPARE(plain.at(0).Contact, emptyContact());
    }

    void limitAndSkippedNames_data()
    {
        QTest::addColumn<int>("limit");
        QTest::addColumn<QStringList>("listed");
        QTest::addColumn<int>("counted");
        const QString a = QStringLiteral("rec.0.000"), c = QStringLiteral("rec.0.002"),
                      d = QStringLiteral("rec.0.003");
        // File order: a, "tmp" (not a recording), c, d; read newest first.
        QTest::newRow("all") << -1 << QStringList{d, c, a} << 4;
        QTest::newRow("limit 0 still reads the newest") << 0 << QStringList{d} << 1;
        QTest::newRow("limit 3 counts the skipped record") << 3 << QStringList{d, c} << 3;
        QTest::newRow("limit above the count") << 9 << QStringList{d, c, a} << 4;
    }
    void limitAndSkippedNames()
    {
        QFETCH(int, limit);
        QFETCH(QStringList, listed);
        QFETCH(int, counted);
        const QByteArray file = metaFile(
            {rec("1", "rec.0.000"), rec("2", "tmp.0.001"), rec("3", "rec.0.002"), rec("4", "rec.0.003")},
            false);
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        ds.loadNumberOfVoicemails = limit;
        QCOMPARE(recFiles(ds.readMetaData(file, kPath)), listed);
        QCOMPARE(ds.totalVoicemailCounter, counted);
    }

    void garbageNeverCrashes()
    {
        // Truncated, shifted and random index files: parse whatever is there, never read outside.
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        const QByteArray good = metaFile({rec("1", "rec.0.000"), rec("2", "rec.0.001")}, true);
        quint32 seed = 12345;
        for (int round = 0; round < 500; ++round) {
            QByteArray data = good.left(int(seed % quint32(good.size() + 1)));
            for (qsizetype i = 0; i < data.size(); i += 1 + qsizetype(seed % 97)) {
                seed = seed * 1103515245u + 12345u;
                data[i] = char(seed >> 16);
            }
            const auto entries = ds.readMetaData(data, kPath);
            QVERIFY(entries.size() <= data.size() / 348);
            QVERIFY(VoicemailIndex::withoutRecords(data, {QStringLiteral("rec.0.000")}).size() <=
                    data.size());
        }
    }

    void rewriteWithoutDeletedRecords_data()
    {
        QTest::addColumn<QStringList>("deleted");
        QTest::addColumn<QStringList>("remaining"); // newest first
        QTest::addColumn<bool>("littleEndian");
        const QString a = QStringLiteral("rec.0.000"), b = QStringLiteral("rec.0.001"),
                      c = QStringLiteral("rec.0.002");
        QTest::newRow("middle, big-endian") << QStringList{b} << QStringList{c, a} << false;
        QTest::newRow("newest, little-endian") << QStringList{c} << QStringList{b, a} << true;
        QTest::newRow("two of three") << QStringList{a, c} << QStringList{b} << false;
        QTest::newRow("all") << QStringList{a, b, c} << QStringList{} << true;
        QTest::newRow("unknown name changes nothing")
            << QStringList{QStringLiteral("rec.9.999")} << QStringList{c, b, a} << false;
    }
    void rewriteWithoutDeletedRecords()
    {
        QFETCH(QStringList, deleted);
        QFETCH(QStringList, remaining);
        QFETCH(bool, littleEndian);
        const QByteArray file =
            metaFile({rec("1", "rec.0.000", 11), rec("2", "rec.0.001", 22), rec("3", "rec.0.002", 33)},
                     littleEndian, 4);
        const QByteArray rewritten = TNFTPDatasource::deleteVoicemailsInMetaData(deleted, file);
        QCOMPARE(rewritten.size(), 4 + 348 * remaining.size());
        QCOMPARE(rewritten.left(4), file.left(4));
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        const auto before = ds.readMetaData(file, kPath);
        const auto after = ds.readMetaData(rewritten, kPath);
        QCOMPARE(recFiles(after), remaining);
        // The kept records are byte for byte the old ones.
        for (const VoicemailEntry& e : after) {
            const qsizetype i = recFiles(before).indexOf(e.RecFile);
            QCOMPARE(e.toMap(), before.at(i).toMap());
        }
    }

    void faxNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QDateTime>("stamp");
        QTest::addColumn<QString>("contactName");
        const QDateTime epoch(QDate(1970, 1, 1), QTime(0, 0));
        QTest::newRow("digits sender with a known name")
            << QStringLiteral("13.11.26_10.30_Telefax.0301234567.pdf") << QStringLiteral("0301234567")
            << QStringLiteral("10:30") << QDateTime(QDate(2026, 11, 13), QTime(0, 0))
            << QStringLiteral("Erika Mustermann");
        QTest::newRow("digits sender, unknown")
            << QStringLiteral("01.02.25_08.05_Telefax.089123.pdf") << QStringLiteral("089123")
            << QStringLiteral("08:05") << QDateTime(QDate(2025, 2, 1), QTime(0, 0)) << QString();
        QTest::newRow("named sender gets capitalised words")
            << QStringLiteral("01.02.25_08.05_Telefax.fritz BOX.pdf") << QStringLiteral("Fritz Box")
            << QStringLiteral("08:05") << QDateTime(QDate(2025, 2, 1), QTime(0, 0)) << QString();
        QTest::newRow("third piece without sender")
            << QStringLiteral("01.02.25_08.05_Telefax") << QString() << QStringLiteral("08:05")
            << QDateTime(QDate(2025, 2, 1), QTime(0, 0)) << QString();
        QTest::newRow("date without day, month, year")
            << QStringLiteral("20250201_0805_Telefax.089123.pdf") << QStringLiteral("089123")
            << QStringLiteral("0805") << epoch << QString();
        QTest::newRow("fewer than three pieces")
            << QStringLiteral("scan_1.pdf") << QString() << QStringLiteral("00:00") << epoch << QString();
    }
    void faxNames()
    {
        QFETCH(QString, name);
        QFETCH(QString, number);
        QFETCH(QString, time);
        QFETCH(QDateTime, stamp);
        QFETCH(QString, contactName);
        MapLookup names;
        TNFTPDatasource ds(m_center, nullptr, &names);
        const FaxEntry e = ds.preprocessFaxFile(QStringLiteral("FRITZ/faxbox/") + name);
        QCOMPARE(e.PhoneNumber, number);
        QCOMPARE(e.CallTime, time);
        QCOMPARE(e.CallTimestamp, stamp);
        QCOMPARE(e.Contact.value(1), contactName);
        QCOMPARE(e.Contact.size(), 3);
        QCOMPARE(e.PATH, QStringLiteral("FRITZ/faxbox/") + name);
    }

    void groupTitles_data()
    {
        QTest::addColumn<QString>("sortBy");
        QTest::addColumn<QStringList>("titles");
        QTest::newRow("number") << QStringLiteral("number")
                                << QStringList{QStringLiteral("0301234567"), QStringLiteral("Unknown")};
        QTest::newRow("name") << QStringLiteral("name")
                              << QStringList{QStringLiteral("Erika Mustermann"), QStringLiteral("Unknown")};
        QTest::newRow("line") << QStringLiteral("line")
                              << QStringList{QStringLiteral("987654"), QStringLiteral("Unknown")};
    }
    void groupTitles()
    {
        QFETCH(QString, sortBy);
        QFETCH(QStringList, titles);
        MapLookup names;
        TNFTPDatasource ds(m_center, nullptr, &names);
        ds.sortBy = sortBy;
        MetaRecord anonymous = rec("", "rec.0.001");
        anonymous.calledLine.clear();
        const auto entries =
            ds.readMetaData(metaFile({anonymous, rec("0301234567", "rec.0.000")}, false), kPath);
        const QVariantList grouped = ds.preprocessVoicemails(entries);
        QStringList got;
        for (const QVariant& g : grouped)
            got << g.toMap().value(QStringLiteral("Header")).toString();
        QCOMPARE(got, titles);
    }

    void faxGroupedByDate()
    {
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        const QList<FaxEntry> faxes{
            ds.preprocessFaxFile(QStringLiteral("FRITZ/faxbox/13.11.26_10.30_Telefax.0301.pdf")),
            ds.preprocessFaxFile(QStringLiteral("FRITZ/faxbox/x.pdf"))};
        const QVariantList grouped = ds.preprocessFax(faxes);
        QCOMPARE(grouped.at(0).toMap().value(QStringLiteral("Header")).toString(),
                 QStringLiteral("2026.11.13"));
        QCOMPARE(grouped.at(1).toMap().value(QStringLiteral("Header")).toString(),
                 QStringLiteral("1970.01.01"));
    }

    void newCountersAgainstMarkers_data()
    {
        QTest::addColumn<QDateTime>("marker");
        QTest::addColumn<int>("newFax");
        QTest::newRow("never saved: everything is new") << QDateTime() << 3;
        QTest::newRow("saved between") << QDateTime(QDate(2026, 6, 1), QTime(12, 0)) << 2;
        QTest::newRow("saved after the newest") << QDateTime(QDate(2027, 1, 1), QTime(0, 0)) << 0;
    }
    void newCountersAgainstMarkers()
    {
        QFETCH(QDateTime, marker);
        QFETCH(int, newFax);
        FixedMarkers markers;
        markers.fax = marker;
        TNFTPDatasource ds(m_center, &markers, nullptr);
        const QList<FaxEntry> faxes{
            ds.preprocessFaxFile(QStringLiteral("F/faxbox/01.01.26_10.00_Telefax.1.pdf")),
            ds.preprocessFaxFile(QStringLiteral("F/faxbox/02.07.26_10.00_Telefax.2.pdf")),
            ds.preprocessFaxFile(QStringLiteral("F/faxbox/03.12.26_10.00_Telefax.3.pdf"))};
        const int id = ds.newConnID();
        QVERIFY(ds.loadingFaxFinished(id, faxes));
        QCOMPARE(ds.faxCounter, 3);
        QCOMPARE(ds.newFaxCounter, newFax);
        QCOMPARE(ds.lastSavedFaxDate, marker);
    }

    void olderRunIsDropped()
    {
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        QSignalSpy loaded(&ds, &TNFTPDatasource::voicemailsLoaded);
        const auto fresh =
            ds.readMetaData(metaFile({rec("1", "rec.0.000"), rec("2", "rec.0.001")}, false), kPath);
        const auto stale = ds.readMetaData(metaFile({rec("9", "rec.0.009")}, false), kPath);
        const int first = ds.newConnID();
        const int second = ds.newConnID();
        QVERIFY(ds.loadVoicemailsFinished(second, fresh));
        QVERIFY(!ds.loadVoicemailsFinished(first, stale)); // the slow older run finishes last
        QCOMPARE(loaded.count(), 1);
        QCOMPARE(recFiles(ds.allVoicemailsEntriesList()), recFiles(fresh));
        QCOMPARE(ds.voicemailCounter, 2);
    }
};

QTEST_GUILESS_MAIN(TestVoicemailIndex)
#include "tst_voicemailindex.moc"

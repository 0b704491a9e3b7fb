#include "FtpServerProcess.h"
#include "MetaFileBuilder.h"
#include "StorageFiles.h"

#include "base/NotificationCenter.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "voicemail/TNFTPDatasource.h"
#include "voicemail/VBFTPConnection.h"
#include "voicemail/VoicemailLookups.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

namespace {

MetaRecord rec(const char* file, int day)
{
    return record("0301234", file, 30, day, 12);
}

// Keeps what it is given, like the call database's marker rows.
class StoredMarkers final : public VoicemailMarkerStore
{
public:
    QDateTime voicemail, fax;
    QDateTime lastSavedVoicemailDate() override { return voicemail; }
    void setLastSavedVoicemailDate(const QDateTime& d) override { voicemail = d; }
    QDateTime lastSavedFaxDate() override { return fax; }
    void setLastSavedFaxDate(const QDateTime& d) override { fax = d; }
};

QDateTime may(int day, int hour = 12)
{
    return QDateTime(QDate(2026, 5, day), QTime(hour, 0));
}

} // namespace

// The loading run on its worker thread, against a real FTP server.
class TestTNFTPDatasource : public QObject
{
    Q_OBJECT

    NotificationCenter m_center;
    QTemporaryDir m_root;
    QTemporaryDir m_config;
    std::unique_ptr<FtpServerProcess> m_server;
    std::unique_ptr<SettingsStore> m_store;
    MemorySecretStore m_secrets;

    std::shared_ptr<TNPreferences> prefs(const QString& password = QStringLiteral("pw"))
    {
        auto p = std::make_shared<TNPreferences>(*m_store, m_secrets);
        p->hostName = QStringLiteral("127.0.0.1");
        p->ftpPort = m_server->port();
        p->FTPUsername = QStringLiteral("ftpuser");
        p->FTPPassWord = password;
        p->FTPSSL = false;
        p->loadVoicemails = {1, 1, 1};
        return p;
    }

private slots:
    void initTestCase()
    {
        // Two volumes with FRITZ folders: one with both boxes, one with a voicebox only; and
        // a FRITZ folder at the root without either, which does not count.
        writeFile(m_root.filePath(QStringLiteral("A/FRITZ/voicebox/meta0")),
                  metaFile({rec("rec.0.000", 1), rec("rec.0.001", 2), rec("xyz", 3)}, false));
        writeFile(m_root.filePath(QStringLiteral("A/FRITZ/voicebox/meta1")), QByteArray(347, '\0'));
        writeFile(m_root.filePath(QStringLiteral("A/FRITZ/faxbox/01.02.26_10.00_Telefax.0301.pdf")), "%PDF");
        writeFile(m_root.filePath(QStringLiteral("A/FRITZ/faxbox/01.04.26_10.00_Telefax.0302.pdf")), "%PDF");
        writeFile(m_root.filePath(QStringLiteral("B/FRITZ/voicebox/meta0")),
                  metaFile({rec("rec.0.000", 9)}, true));
        writeFile(m_root.filePath(QStringLiteral("FRITZ/other/x")), "x");
        m_server = std::make_unique<FtpServerProcess>(m_root.path(), QStringLiteral("pw"), false);
        QVERIFY2(m_server->port() > 0, qPrintable(m_server->error()));
        m_store = std::make_unique<SettingsStore>(m_config.filePath(QStringLiteral("settings.json")));
    }

    void findingFritzFolders_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("found");
        QTest::newRow("on a volume") << QStringList{QStringLiteral("USB/FRITZ/voicebox/meta0")}
                                     << QStringList{QStringLiteral("USB/FRITZ/")};
        QTest::newRow("root and two volumes")
            << QStringList{QStringLiteral("FRITZ/voicebox/meta0"), QStringLiteral("V1/FRITZ/faxbox/a.pdf"),
                           QStringLiteral("V2/FRITZ/voicebox/meta0"), QStringLiteral("V3/music/a.mp3")}
            << QStringList{QStringLiteral("FRITZ/"), QStringLiteral("V1/FRITZ/"),
                           QStringLiteral("V2/FRITZ/")};
        QTest::newRow("FRITZ without boxes")
            << QStringList{QStringLiteral("FRITZ/other/x"), QStringLiteral("V/FRITZ/x")} << QStringList{};
        QTest::newRow("FRITZ deeper than a volume")
            << QStringList{QStringLiteral("V/sub/FRITZ/voicebox/meta0")} << QStringList{};
    }
    void findingFritzFolders()
    {
        QFETCH(QStringList, files);
        QFETCH(QStringList, found);
        QTemporaryDir root;
        for (const QString& f : files)
            writeFile(root.filePath(f), "x");
        FtpServerProcess server(root.path(), QStringLiteral("pw"), false);
        VBFTPConnection c(m_center);
        VBFTPConnection::Settings s;
        s.host = QStringLiteral("127.0.0.1");
        s.port = server.port();
        s.user = QStringLiteral("ftpuser");
        s.password = QStringLiteral("pw");
        QVERIFY(c.connectWithSettings(s, 1));
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        QStringList got = ds.loadFRITZDirectories(c);
        got.sort();
        QCOMPARE(got, found);
        QCOMPARE(ds.hasError, found.isEmpty());
    }

    void reloadDeliversOnThisThread()
    {
        StoredMarkers markers;
        markers.fax = QDateTime(QDate(2026, 3, 1), QTime(0, 0));
        TNFTPDatasource ds(m_center, &markers, nullptr);
        QSignalSpy voicemails(&ds, &TNFTPDatasource::voicemailsLoaded);
        QSignalSpy faxes(&ds, &TNFTPDatasource::faxLoaded);
        ds.reloadVoicemails(prefs());
        QTRY_COMPARE_WITH_TIMEOUT(faxes.count(), 1, 20000);
        QCOMPARE(voicemails.count(), 1);
        QVERIFY(!ds.hasError);
        QVERIFY(!ds.isCurrentlyUpdating);
        // meta0 of A: two recordings and one record that is not; meta1 is too short; B: one.
        QCOMPARE(ds.voicemailCounter, 3);
        QCOMPARE(ds.totalVoicemailCounter, 4);
        QCOMPARE(ds.allVoicemailsEntriesList().at(0).PATH, QStringLiteral("A/FRITZ/voicebox/"));
        QCOMPARE(ds.allVoicemailsEntriesList().at(2).PATH, QStringLiteral("B/FRITZ/voicebox/"));
        QCOMPARE(ds.faxCounter, 2);
        QCOMPARE(ds.newFaxCounter, 1); // only the April fax is after the marker
    }

    void newerRunWins()
    {
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        QSignalSpy voicemails(&ds, &TNFTPDatasource::voicemailsLoaded);
        auto first = prefs();
        first->loadVoicemails = {0, 0, 0};
        ds.reloadVoicemails(first);
        ds.reloadVoicemails(prefs());
        QTRY_COMPARE_WITH_TIMEOUT(voicemails.count(), 1, 20000);
        QTest::qWait(300); // the older run's results, if any, would have arrived by now
        QCOMPARE(voicemails.count(), 1);
        QCOMPARE(ds.voicemailCounter, 3);
    }

    void failureOfAnOlderRunIsDropped()
    {
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        QSignalSpy failed(&ds, &TNFTPDatasource::loadingFailed);
        QSignalSpy faxes(&ds, &TNFTPDatasource::faxLoaded);
        auto unreachable = prefs();
        unreachable->ftpPort = 1;
        ds.reloadVoicemails(unreachable);
        // The user reloads before the first run gave up.
        ds.reloadVoicemails(prefs());
        QTRY_COMPARE_WITH_TIMEOUT(faxes.count(), 1, 20000);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(failed.count(), 0);
        QVERIFY(!ds.hasError);
        QVERIFY(!ds.isCurrentlyUpdating);
    }

    void markingSeen_data()
    {
        QTest::addColumn<bool>("fax");
        QTest::addColumn<QDateTime>("marker");
        QTest::addColumn<int>("played");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QDateTime>("newMarker");
        QTest::addColumn<int>("newBefore");
        QTest::addColumn<int>("newAfter");
        // Entries of May 4, 3, 2, 1 (newest first).
        QTest::newRow("first check: all were new")
            << false << QDateTime() << 3 << may(20) << may(20) << 4 << 0;
        QTest::newRow("check time before the newest: it stays new")
            << false << may(1) << 1 << may(3, 18) << may(3, 18) << 3 << 1;
        QTest::newRow("router clock ahead: the played one is seen")
            << false << may(1) << 1 << may(2, 18) << may(3) << 3 << 1;
        QTest::newRow("an old one played: the marker still moves on")
            << false << may(2) << 3 << may(20) << may(20) << 2 << 0;
        QTest::newRow("fax: first check") << true << QDateTime() << 0 << may(20) << may(20) << 4 << 0;
        QTest::newRow("fax: received after the check time")
            << true << may(1) << 0 << may(3, 18) << may(4, 0) << 3 << 0;
    }
    void markingSeen()
    {
        QFETCH(bool, fax);
        QFETCH(QDateTime, marker);
        QFETCH(int, played);
        QFETCH(QDateTime, now);
        QFETCH(QDateTime, newMarker);
        QFETCH(int, newBefore);
        QFETCH(int, newAfter);
        StoredMarkers markers;
        markers.voicemail = markers.fax = marker;
        TNFTPDatasource ds(m_center, &markers, nullptr);
        QList<VoicemailEntry> voicemails;
        QList<FaxEntry> faxes;
        for (int day = 4; day >= 1; --day) {
            VoicemailEntry v;
            v.CallTimestamp = may(day);
            voicemails.append(v);
            FaxEntry f;
            f.CallTimestamp = may(day, 0); // a fax's time of day is not in its timestamp
            faxes.append(f);
        }
        QVERIFY(ds.loadVoicemailsFinished(ds.newConnID(), voicemails));
        QVERIFY(ds.loadingFaxFinished(ds.currentConnID, faxes));
        QCOMPARE(fax ? ds.newFaxCounter : ds.newVoicemailsCounter, newBefore);

        if (fax)
            ds.markFaxSeen(faxes.at(played), now);
        else
            ds.markVoicemailSeen(voicemails.at(played), now);
        QCOMPARE(fax ? markers.fax : markers.voicemail, newMarker);
        QCOMPARE(fax ? markers.voicemail : markers.fax, marker); // the other list is untouched
        QCOMPARE(fax ? ds.newFaxCounter : ds.newVoicemailsCounter, newAfter);
        QVERIFY(fax ? !ds.isNewFax(faxes.at(played)) : !ds.isNewVoicemail(voicemails.at(played)));
        int shownNew = 0;
        for (int i = 0; i < 4; ++i)
            shownNew += (fax ? ds.isNewFax(faxes.at(i)) : ds.isNewVoicemail(voicemails.at(i))) ? 1 : 0;
        QCOMPARE(shownNew, newAfter);

        // The next load counts against the stored marker.
        QVERIFY(ds.loadVoicemailsFinished(ds.newConnID(), voicemails));
        QVERIFY(ds.loadingFaxFinished(ds.currentConnID, faxes));
        QCOMPARE(fax ? ds.newFaxCounter : ds.newVoicemailsCounter, newAfter);
    }

    void failuresReachTheAlert_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("root");
        QTest::addColumn<QString>("message");
        QTest::newRow("wrong password")
            << QStringLiteral("wrong") << QString()
            << QStringLiteral("Login to the router's storage refused (home network): ");
        QTest::newRow("no FRITZ folder")
            << QStringLiteral("pw") << QStringLiteral("empty")
            << QStringLiteral("No voicemail or fax folder was found on the router's storage.");
    }
    void failuresReachTheAlert()
    {
        QFETCH(QString, password);
        QFETCH(QString, root);
        QFETCH(QString, message);
        std::unique_ptr<FtpServerProcess> emptyServer;
        auto p = prefs(password);
        if (!root.isEmpty()) {
            QDir().mkpath(m_root.filePath(root));
            emptyServer =
                std::make_unique<FtpServerProcess>(m_root.filePath(root), QStringLiteral("pw"), false);
            p->ftpPort = emptyServer->port();
        }
        TNFTPDatasource ds(m_center, nullptr, nullptr);
        QSignalSpy failed(&ds, &TNFTPDatasource::loadingFailed);
        QSignalSpy voicemails(&ds, &TNFTPDatasource::voicemailsLoaded);
        ds.reloadVoicemails(p);
        QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 20000);
        QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("Voicemail / Fax"));
        QVERIFY2(failed.at(0).at(1).toString().startsWith(message),
                 qPrintable(failed.at(0).at(1).toString()));
        QVERIFY(ds.hasError);
        QCOMPARE(voicemails.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestTNFTPDatasource)
#include "tst_tnftpdatasource.moc"

#include "FtpServerProcess.h"
#include "MetaFileBuilder.h"

#include "app/SecretStore.h"
#include "app/SettingsStore.h"
#include "app/TNPreferences.h"
#include "voicemail/TNFTPDatasource.h"
#include "voicemail/VBFTPConnection.h"
#include "voicemail/VoicemailLookups.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

namespace {

void writeFile(const QString& path, const QByteArray& data)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(data);
}

MetaRecord rec(const char* file, int day)
{
    MetaRecord r;
    r.number = QStringLiteral("0301234");
    r.recFile = QString::fromLatin1(file);
    r.duration = 30;
    r.day = day;
    r.month = 5;
    r.year = 26;
    return r;
}

class FixedMarkers final : public VoicemailMarkerStore
{
public:
    QDateTime fax = QDateTime(QDate(2026, 3, 1), QTime(0, 0));
    QDateTime lastSavedVoicemailDate() override { return {}; }
    void setLastSavedVoicemailDate(const QDateTime&) override {}
    QDateTime lastSavedFaxDate() override { return fax; }
    void setLastSavedFaxDate(const QDateTime& d) override { fax = d; }
};

} // namespace

// The loading run on its worker thread, against a real FTP server.
class TestTNFTPDatasource : public QObject
{
    Q_OBJECT

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
        writeFile(m_root.filePath(QStringLiteral("B/FRITZ/voicebox/meta0")), metaFile({rec("rec.0.000", 9)}, true));
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
        QTest::newRow("at the root") << QStringList{QStringLiteral("FRITZ/faxbox/a.pdf")} << QStringList{QStringLiteral("FRITZ/")};
        QTest::newRow("root and two volumes")
            << QStringList{QStringLiteral("FRITZ/voicebox/meta0"), QStringLiteral("V1/FRITZ/faxbox/a.pdf"),
                           QStringLiteral("V2/FRITZ/voicebox/meta0"), QStringLiteral("V3/music/a.mp3")}
            << QStringList{QStringLiteral("FRITZ/"), QStringLiteral("V1/FRITZ/"), QStringLiteral("V2/FRITZ/")};
        QTest::newRow("FRITZ without boxes") << QStringList{QStringLiteral("FRITZ/other/x"), QStringLiteral("V/FRITZ/x")}
                                             << QStringList{};
        QTest::newRow("FRITZ deeper than a volume") << QStringList{QStringLiteral("V/sub/FRITZ/voicebox/meta0")}
                                                    << QStringList{};
    }
    void findingFritzFolders()
    {
        QFETCH(QStringList, files);
        QFETCH(QStringList, found);
        QTemporaryDir root;
        for (const QString& f : files)
            writeFile(root.filePath(f), "x");
        FtpServerProcess server(root.path(), QStringLiteral("pw"), false);
        VBFTPConnection c;
        VBFTPConnection::Settings s;
        s.host = QStringLiteral("127.0.0.1");
        s.port = server.port();
        s.user = QStringLiteral("ftpuser");
        s.password = QStringLiteral("pw");
        QVERIFY(c.connectWithSettings(s, 1));
        TNFTPDatasource ds(nullptr, nullptr);
        QStringList got = ds.loadFRITZDirectories(c);
        got.sort();
        QCOMPARE(got, found);
        QCOMPARE(ds.hasError, found.isEmpty());
    }

    void reloadDeliversOnThisThread()
    {
        FixedMarkers markers;
        TNFTPDatasource ds(&markers, nullptr);
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
        QCOMPARE(voicemails.at(0).at(0).toList().size(), 3);
    }

    void newerRunWins()
    {
        TNFTPDatasource ds(nullptr, nullptr);
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

    void failuresReachTheAlert_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("root");
        QTest::addColumn<QString>("message");
        QTest::newRow("wrong password") << QStringLiteral("wrong") << QString()
                                        << QStringLiteral("Login to the router's storage refused (home network): ");
        QTest::newRow("no FRITZ folder") << QStringLiteral("pw") << QStringLiteral("empty")
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
            emptyServer = std::make_unique<FtpServerProcess>(m_root.filePath(root), QStringLiteral("pw"), false);
            p->ftpPort = emptyServer->port();
        }
        TNFTPDatasource ds(nullptr, nullptr);
        QSignalSpy failed(&ds, &TNFTPDatasource::loadingFailed);
        QSignalSpy voicemails(&ds, &TNFTPDatasource::voicemailsLoaded);
        ds.reloadVoicemails(p);
        QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 20000);
        QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("Voicemail / Fax"));
        QVERIFY2(failed.at(0).at(1).toString().startsWith(message), qPrintable(failed.at(0).at(1).toString()));
        QVERIFY(ds.hasError);
        QCOMPARE(voicemails.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestTNFTPDatasource)
#include "tst_tnftpdatasource.moc"

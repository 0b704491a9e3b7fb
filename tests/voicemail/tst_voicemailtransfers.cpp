// Fetching and deleting single messages and faxes, each in its own session, against a real FTP
// server (pyftpdlib).
#include "FtpServerProcess.h"
#include "MetaFileBuilder.h"
#include "SpeexTone.h"
#include "StorageFiles.h"

#include "base/NotificationCenter.h"
#include "voicemail/VoicemailTransfers.h"

#include <QFile>
#include <QTest>

namespace {

MetaRecord rec(const char* file, int day)
{
    return record("0301234", file, 20, day, 12);
}

VoicemailEntry entry(const QString& folder, const QString& recFile)
{
    VoicemailEntry e;
    e.PATH = folder;
    e.FILE = QStringLiteral("meta0");
    e.RecFile = recFile;
    return e;
}

const QString kBoxA = QStringLiteral("A/FRITZ/voicebox/");
const QString kBoxB = QStringLiteral("B/FRITZ/voicebox/");
const QString kFax = QStringLiteral("A/FRITZ/faxbox/01.04.26_10.00_Telefax.0302.pdf");

} // namespace

class TestVoicemailTransfers : public QObject
{
    Q_OBJECT

    NotificationCenter m_center;

    QTemporaryDir m_root;
    QTemporaryDir m_cache;
    std::unique_ptr<FtpServerProcess> m_server;

    VBFTPConnection::Settings settings(const QString& password = QStringLiteral("pw")) const
    {
        VBFTPConnection::Settings s;
        s.host = QStringLiteral("127.0.0.1");
        s.port = m_server->port();
        s.user = QStringLiteral("ftpuser");
        s.password = password;
        s.timeoutSeconds = 5;
        return s;
    }

private slots:
    void init()
    {
        QDir(m_root.path()).removeRecursively();
        QDir(m_cache.path()).removeRecursively();
        // Both volumes name their first recording rec.0.000, with different tones.
        writeFile(m_root.filePath(kBoxA + QStringLiteral("meta0")),
                  metaFile({rec("rec.0.000", 1), rec("rec.0.001", 2)}, false));
        writeFile(m_root.filePath(kBoxA + QStringLiteral("rec/rec.0.000")), speexToneRecording(500, 20, 0));
        writeFile(m_root.filePath(kBoxA + QStringLiteral("rec/rec.0.001")), speexToneRecording(1000, 20, 0));
        writeFile(m_root.filePath(kBoxB + QStringLiteral("meta0")), metaFile({rec("rec.0.000", 3)}, true));
        writeFile(m_root.filePath(kBoxB + QStringLiteral("rec/rec.0.000")), speexToneRecording(1500, 20, 0));
        writeFile(m_root.filePath(kFax), "%PDF-1.4\n% fax\n%%EOF\n");
        if (!m_server) {
            m_server = std::make_unique<FtpServerProcess>(m_root.path(), QStringLiteral("pw"), false);
            QVERIFY2(m_server->port() > 0, qPrintable(m_server->error()));
        }
    }

    void fetchedMessagesAreWavFilesOfTheirFolder_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("recFile");
        QTest::addColumn<int>("frequency");
        QTest::newRow("first volume") << kBoxA << QStringLiteral("rec.0.000") << 500;
        QTest::newRow("same name on the second volume") << kBoxB << QStringLiteral("rec.0.000") << 1500;
        QTest::newRow("second message") << kBoxA << QStringLiteral("rec.0.001") << 1000;
    }
    void fetchedMessagesAreWavFilesOfTheirFolder()
    {
        QFETCH(QString, folder);
        QFETCH(QString, recFile);
        QFETCH(int, frequency);
        VBFTPConnection c(m_center);
        // The other volume's message of the same name is in the cache already.
        const QString other = folder == kBoxA ? kBoxB : kBoxA;
        QVERIFY(VoicemailTransfers::fetchVoicemail(c, settings(), entry(other, QStringLiteral("rec.0.000")),
                                                   m_cache.path())
                    .ok());

        const auto outcome =
            VoicemailTransfers::fetchVoicemail(c, settings(), entry(folder, recFile), m_cache.path());
        QVERIFY2(outcome.ok(), qPrintable(outcome.error));
        QVERIFY(outcome.path.startsWith(m_cache.path() + u'/'));
        const QByteArray wav = readFile(outcome.path);
        QCOMPARE(wav.size(), 44 + 20 * 160 * 2);
        const std::vector<qint16> pcm = wavSamples(wav);
        QVERIFY(std::abs(dominantFrequency({pcm.begin() + 800, pcm.end()}) - frequency) <= 50);
        QVERIFY(!c.isConnected());
    }

    void aReusedNameIsFetchedAfresh()
    {
        VBFTPConnection c(m_center);
        const VoicemailEntry e = entry(kBoxA, QStringLiteral("rec.0.000"));
        QVERIFY(VoicemailTransfers::fetchVoicemail(c, settings(), e, m_cache.path()).ok());
        // The router deleted the message and recorded a new one under its name.
        writeFile(m_root.filePath(kBoxA + QStringLiteral("rec/rec.0.000")), speexToneRecording(2000, 30, 0));
        const auto outcome = VoicemailTransfers::fetchVoicemail(c, settings(), e, m_cache.path());
        QVERIFY(outcome.ok());
        const QByteArray wav = readFile(outcome.path);
        QCOMPARE(wav.size(), 44 + 30 * 160 * 2);
        const std::vector<qint16> pcm = wavSamples(wav);
        QVERIFY(std::abs(dominantFrequency({pcm.begin() + 800, pcm.end()}) - 2000) <= 50);
    }

    void fetchedFaxIsTheRoutersFile()
    {
        VBFTPConnection c(m_center);
        FaxEntry fax;
        fax.PATH = kFax;
        const auto outcome = VoicemailTransfers::fetchFax(c, settings(), fax, m_cache.path());
        QVERIFY2(outcome.ok(), qPrintable(outcome.error));
        QVERIFY(outcome.path.endsWith(QStringLiteral(".fax.pdf")));
        QCOMPARE(readFile(outcome.path), readFile(m_root.filePath(kFax)));
    }

    void failuresSayWhatWentWrong_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<bool>("unreachable");
        QTest::addColumn<QString>("recFile");
        QTest::addColumn<FTPError::Kind>("kind");
        QTest::addColumn<QString>("start");
        QTest::newRow("wrong password")
            << QStringLiteral("wrong") << false << QStringLiteral("rec.0.000") << FTPError::Kind::LoginDenied
            << QStringLiteral("Login to the router's storage refused (home network): ");
        QTest::newRow("nobody listening")
            << QStringLiteral("pw") << true << QStringLiteral("rec.0.000") << FTPError::Kind::NoConnection
            << QStringLiteral("No connection to the router's storage (home network): ");
        QTest::newRow("recording gone") << QStringLiteral("pw") << false << QStringLiteral("rec.0.009")
                                        << FTPError::Kind::Failed << QString();
    }
    void failuresSayWhatWentWrong()
    {
        QFETCH(QString, password);
        QFETCH(bool, unreachable);
        QFETCH(QString, recFile);
        QFETCH(FTPError::Kind, kind);
        QFETCH(QString, start);
        VBFTPConnection::Settings s = settings(password);
        if (unreachable)
            s.port = 1;
        VBFTPConnection c(m_center);
        const auto outcome = VoicemailTransfers::fetchVoicemail(c, s, entry(kBoxA, recFile), m_cache.path());
        QVERIFY(!outcome.ok());
        QCOMPARE(outcome.kind, kind);
        QVERIFY2(outcome.error.startsWith(start), qPrintable(outcome.error));
        QVERIFY(!outcome.error.contains(u'\n'));
        QVERIFY(!c.isConnected());
    }

    void deletingRemovesFilesAndRecords()
    {
        VBFTPConnection c(m_center);
        const QByteArray oldMeta = readFile(m_root.filePath(kBoxA + QStringLiteral("meta0")));
        auto outcome =
            VoicemailTransfers::deleteVoicemails(c, settings(), {entry(kBoxA, QStringLiteral("rec.0.000"))});
        QVERIFY2(outcome.ok(), qPrintable(outcome.error));
        QVERIFY(!QFile::exists(m_root.filePath(kBoxA + QStringLiteral("rec/rec.0.000"))));
        QVERIFY(QFile::exists(m_root.filePath(kBoxA + QStringLiteral("rec/rec.0.001"))));
        QVERIFY(QFile::exists(m_root.filePath(kBoxB + QStringLiteral("rec/rec.0.000"))));
        // The oldest record (first in the file) is gone.
        QCOMPARE(readFile(m_root.filePath(kBoxA + QStringLiteral("meta0"))), oldMeta.mid(348));

        FaxEntry fax;
        fax.PATH = kFax;
        outcome = VoicemailTransfers::deleteFaxes(c, settings(), {fax});
        QVERIFY2(outcome.ok(), qPrintable(outcome.error));
        QVERIFY(!QFile::exists(m_root.filePath(kFax)));

        // Gone already: the second attempt says so.
        outcome = VoicemailTransfers::deleteFaxes(c, settings(), {fax});
        QVERIFY(!outcome.ok());
        QVERIFY(outcome.error.startsWith(QStringLiteral("01.04.26_10.00_Telefax.0302.pdf: ")));
    }

    void cacheFoldersKeepStorageFoldersApart()
    {
        const QString a =
            VoicemailTransfers::cacheFolderFor(QStringLiteral("/c"), QStringLiteral("A/FRITZ/voicebox/"));
        QCOMPARE(
            a, VoicemailTransfers::cacheFolderFor(QStringLiteral("/c"), QStringLiteral("A/FRITZ/voicebox/")));
        QVERIFY(a.startsWith(QStringLiteral("/c/A_FRITZ_voicebox_-")));
        QVERIFY(a != VoicemailTransfers::cacheFolderFor(QStringLiteral("/c"),
                                                        QStringLiteral("A_FRITZ/voicebox/")));
        // Whatever the router names its folders, the cache folder stays one level below.
        QCOMPARE(
            QFileInfo(VoicemailTransfers::cacheFolderFor(QStringLiteral("/c"), QStringLiteral("../../x/")))
                .path(),
            QStringLiteral("/c"));
    }
};

QTEST_GUILESS_MAIN(TestVoicemailTransfers)
#include "tst_voicemailtransfers.moc"

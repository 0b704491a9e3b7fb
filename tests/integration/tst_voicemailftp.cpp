// Voicemail and fax commands of tondrel-cli against a real FTP server (pyftpdlib), plain and TLS.
#include "../voicemail/MetaFileBuilder.h"
#include "../voicemail/SpeexTone.h"
#include "FtpServerProcess.h"
#include "StorageFiles.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

const QString kPassword = QStringLiteral("s3cret");
const QString kVoicebox = QStringLiteral("USB-Stick/FRITZ/voicebox/");

QStringList field(const QJsonArray& entries, const char* key)
{
    QStringList out;
    for (const auto& e : entries)
        out << e.toObject().value(QString::fromLatin1(key)).toString();
    return out;
}

} // namespace

class TestVoicemailFtp : public QObject
{
    Q_OBJECT

    QTemporaryDir m_root;
    TempEnv m_env;
    std::unique_ptr<FtpServerProcess> m_server;

    QString rootPath(const QString& rel) const { return m_root.filePath(rel); }

    // The router's storage: a volume with FRITZ (big-endian meta0, little-endian meta1), one
    // volume without it, and a fax.
    void buildTree()
    {
        writeFile(rootPath(kVoicebox + QStringLiteral("meta0")),
                  metaFile({record("0301111", "rec.0.000", 12, 10, 8), record("0302222", "rec.0.001", 300, 11, 9),
                            record("", "rec.0.002", 44, 12, 10)},
                           false));
        writeFile(rootPath(kVoicebox + QStringLiteral("meta1")),
                  metaFile({record("0893333", "rec.1.000", 65, 13, 11)}, true));
        writeFile(rootPath(kVoicebox + QStringLiteral("rec/rec.0.000")), speexToneRecording(500, 20, 0));
        writeFile(rootPath(kVoicebox + QStringLiteral("rec/rec.0.001")), speexToneRecording(1000, 50, 10));
        writeFile(rootPath(kVoicebox + QStringLiteral("rec/rec.0.002")), speexToneRecording(1500, 20, 0));
        writeFile(rootPath(kVoicebox + QStringLiteral("rec/rec.1.000")), speexToneRecording(700, 20, 0));
        writeFile(rootPath(QStringLiteral("USB-Stick/FRITZ/faxbox/13.11.26_10.30_Telefax.0301234567.pdf")),
                  "%PDF-1.4\n% a fax\n%%EOF\n");
        writeFile(rootPath(QStringLiteral("USB-Stick/FRITZ/faxbox/notes.txt")), "not a fax");
        writeFile(rootPath(QStringLiteral("Other/music/a.mp3")), "x");
        writeFile(rootPath(QStringLiteral("readme.txt")), "x");
    }

    bool startServer(bool tls, const QStringList& readOnly = {})
    {
        QStringList extra;
        for (const QString& dir : readOnly)
            extra << QStringLiteral("--readonly") << dir;
        m_server = std::make_unique<FtpServerProcess>(m_root.path(), kPassword, tls, extra);
        if (m_server->port() <= 0) {
            qWarning() << "ftp server did not start:" << m_server->error();
            return false;
        }
        return configure(tls, kPassword);
    }

    bool configure(bool tls, const QString& password)
    {
        const auto set = [&](const QString& key, const QString& value) {
            return runCli(m_env, {QStringLiteral("location"), QStringLiteral("set"), key, value}).exitCode == 0;
        };
        return set(QStringLiteral("FTPPort"), QString::number(m_server->port()))
               && set(QStringLiteral("FTPSSL"), tls ? QStringLiteral("true") : QStringLiteral("false"))
               && runCli(m_env, {QStringLiteral("location"), QStringLiteral("password"), QStringLiteral("--ftp"),
                                 QStringLiteral("--password-stdin")},
                         password.toUtf8() + "\n")
                          .exitCode
                      == 0;
    }

    QJsonArray listJson(const QString& what)
    {
        const CliResult r = runCli(m_env, {what, QStringLiteral("list"), QStringLiteral("--json")});
        if (r.exitCode != 0)
            qWarning() << r.err;
        return QJsonDocument::fromJson(r.out).array();
    }

private slots:
    void init()
    {
        QVERIFY(m_root.isValid());
        QDir(m_root.path()).removeRecursively();
        QDir().mkpath(m_root.path());
        buildTree();
        const CliResult add = runCli(m_env, {QStringLiteral("location"), QStringLiteral("add"), QStringLiteral("--name"),
                                             QStringLiteral("Home"), QStringLiteral("--host"), QStringLiteral("127.0.0.1")});
        QCOMPARE(add.exitCode, 0);
        runCli(m_env, {QStringLiteral("location"), QStringLiteral("set"), QStringLiteral("FTPUserName"),
                       QStringLiteral("ftpuser")});
    }
    void cleanup()
    {
        m_server.reset();
        QDir(m_env.configDir()).removeRecursively();
        QDir(m_env.dataDir()).removeRecursively();
    }

    void listGetDelete_data()
    {
        QTest::addColumn<bool>("tls");
        QTest::newRow("plain FTP") << false;
        QTest::newRow("explicit FTP over TLS") << true;
    }
    void listGetDelete()
    {
        QFETCH(bool, tls);
        QVERIFY(startServer(tls));

        QJsonArray entries = listJson(QStringLiteral("voicemail"));
        QCOMPARE(field(entries, "RecFile"), (QStringList{QStringLiteral("rec.0.002"), QStringLiteral("rec.0.001"),
                                                         QStringLiteral("rec.0.000"), QStringLiteral("rec.1.000")}));
        const QJsonObject fiveMinutes = entries.at(1).toObject();
        QCOMPARE(fiveMinutes.value(QStringLiteral("CallDuration")).toString(), QStringLiteral("5:00"));
        QCOMPARE(fiveMinutes.value(QStringLiteral("PhoneNumber")).toString(), QStringLiteral("0302222"));
        QCOMPARE(fiveMinutes.value(QStringLiteral("CallDate")).toString(), QStringLiteral("11.11.2026"));
        QCOMPARE(fiveMinutes.value(QStringLiteral("CallTime")).toString(), QStringLiteral("09:15"));
        QCOMPARE(fiveMinutes.value(QStringLiteral("PATH")).toString(), kVoicebox);
        QCOMPARE(fiveMinutes.value(QStringLiteral("FILE")).toString(), QStringLiteral("meta0"));
        QCOMPARE(entries.at(3).toObject().value(QStringLiteral("CallDuration")).toString(), QStringLiteral("1:05"));

        // Fetch the 5-minute message: a 1 kHz tone of 50 frames plus 10 silent ones.
        const QString wavPath = m_env.root.filePath(QStringLiteral("message.wav"));
        CliResult r = runCli(m_env, {QStringLiteral("voicemail"), QStringLiteral("get"), QStringLiteral("2"),
                                     QStringLiteral("--out"), wavPath});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const QByteArray wav = readFile(wavPath);
        QCOMPARE(wav.left(4), QByteArray("RIFF"));
        QCOMPARE(wav.mid(8, 8), QByteArray("WAVEfmt "));
        QCOMPARE(wav.size(), 44 + 60 * 160 * 2);
        const std::vector<qint16> pcm = wavSamples(wav);
        QVERIFY(std::abs(dominantFrequency({pcm.begin() + 800, pcm.begin() + 25 * 160}) - 1000) <= 50);

        const QString pdfPath = m_env.root.filePath(QStringLiteral("fax.pdf"));
        r = runCli(m_env, {QStringLiteral("fax"), QStringLiteral("get"), QStringLiteral("1"), QStringLiteral("--out"),
                           pdfPath});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QVERIFY(readFile(pdfPath).startsWith("%PDF-1.4"));

        // Delete the middle message of meta0 by id and the meta1 one by name.
        const QByteArray oldMeta0 = readFile(rootPath(kVoicebox + QStringLiteral("meta0")));
        r = runCli(m_env, {QStringLiteral("voicemail"), QStringLiteral("delete"), QStringLiteral("2"),
                           QStringLiteral("rec.1.000")});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QVERIFY(!QFile::exists(rootPath(kVoicebox + QStringLiteral("rec/rec.0.001"))));
        QVERIFY(!QFile::exists(rootPath(kVoicebox + QStringLiteral("rec/rec.1.000"))));
        QVERIFY(QFile::exists(rootPath(kVoicebox + QStringLiteral("rec/rec.0.000"))));
        const QByteArray newMeta0 = readFile(rootPath(kVoicebox + QStringLiteral("meta0")));
        QCOMPARE(newMeta0, oldMeta0.left(348) + oldMeta0.mid(2 * 348));
        QCOMPARE(readFile(rootPath(kVoicebox + QStringLiteral("meta1"))).size(), 0);
        QVERIFY(!QFile::exists(rootPath(kVoicebox + QStringLiteral("meta0.new"))));
        entries = listJson(QStringLiteral("voicemail"));
        QCOMPARE(field(entries, "RecFile"), (QStringList{QStringLiteral("rec.0.002"), QStringLiteral("rec.0.000")}));
    }

    void loadFlagsChooseIndexFiles_data()
    {
        QTest::addColumn<QString>("flags");
        QTest::addColumn<QStringList>("files");
        QTest::newRow("[1, 0] reads meta0 only") << QStringLiteral("[1, 0]") << QStringList{QStringLiteral("meta0")};
        QTest::newRow("[0, 1] reads meta1 only") << QStringLiteral("[0, 1]") << QStringList{QStringLiteral("meta1")};
        QTest::newRow("too short a list reads none past it") << QStringLiteral("[1]") << QStringList{QStringLiteral("meta0")};
        QTest::newRow("none") << QStringLiteral("[]") << QStringList{};
    }
    void loadFlagsChooseIndexFiles()
    {
        QFETCH(QString, flags);
        QFETCH(QStringList, files);
        QVERIFY(startServer(false));
        QCOMPARE(runCli(m_env, {QStringLiteral("location"), QStringLiteral("set"), QStringLiteral("LoadVoicemails"), flags})
                     .exitCode,
                 0);
        QStringList got = field(listJson(QStringLiteral("voicemail")), "FILE");
        got.removeDuplicates();
        QCOMPARE(got, files);
    }

    void failedIndexUploadKeepsTheOldIndex()
    {
        // The router refuses writes in voicebox/ (but not in rec/).
        QVERIFY(startServer(false, {kVoicebox}));
        const QByteArray oldMeta0 = readFile(rootPath(kVoicebox + QStringLiteral("meta0")));
        const CliResult r = runCli(m_env, {QStringLiteral("voicemail"), QStringLiteral("delete"), QStringLiteral("rec.0.001")});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith("tondrel-cli: meta0: "), r.err.constData());
        QCOMPARE(r.err.count('\n'), 1);
        QCOMPARE(readFile(rootPath(kVoicebox + QStringLiteral("meta0"))), oldMeta0);
        QVERIFY(!QFile::exists(rootPath(kVoicebox + QStringLiteral("meta0.new"))));
    }

    void faxListAndDelete()
    {
        QVERIFY(startServer(true));
        const QJsonArray faxes = listJson(QStringLiteral("fax"));
        QCOMPARE(faxes.size(), 1);
        const QJsonObject fax = faxes.at(0).toObject();
        QCOMPARE(fax.value(QStringLiteral("PhoneNumber")).toString(), QStringLiteral("0301234567"));
        QCOMPARE(fax.value(QStringLiteral("CallTime")).toString(), QStringLiteral("10:30"));
        QCOMPARE(fax.value(QStringLiteral("Header")).toString(), QStringLiteral("2026.11.13"));
        QCOMPARE(fax.value(QStringLiteral("PATH")).toString(),
                 QStringLiteral("USB-Stick/FRITZ/faxbox/13.11.26_10.30_Telefax.0301234567.pdf"));
        const CliResult r = runCli(m_env, {QStringLiteral("fax"), QStringLiteral("delete"),
                                           QStringLiteral("13.11.26_10.30_Telefax.0301234567.pdf")});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QVERIFY(listJson(QStringLiteral("fax")).isEmpty());
        QVERIFY(QFile::exists(rootPath(QStringLiteral("USB-Stick/FRITZ/faxbox/notes.txt"))));
    }

    void connectionErrors_data()
    {
        QTest::addColumn<bool>("tls");
        QTest::addColumn<bool>("wrongPassword");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("wrong password") << false << true << QByteArray("Login to the router's storage refused (home network): ");
        QTest::newRow("wrong password over TLS") << true << true
                                                 << QByteArray("Login to the router's storage refused (home network): ");
        QTest::newRow("server stopped") << false << false
                                        << QByteArray("No connection to the router's storage (home network): ");
    }
    void connectionErrors()
    {
        QFETCH(bool, tls);
        QFETCH(bool, wrongPassword);
        QFETCH(QByteArray, message);
        QVERIFY(startServer(tls));
        if (wrongPassword)
            QVERIFY(configure(tls, QStringLiteral("not-the-password")));
        else
            m_server->stop();
        const CliResult r = runCli(m_env, {QStringLiteral("voicemail"), QStringLiteral("list")});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith("tondrel-cli: " + message), r.err.constData());
        QCOMPARE(r.err.count('\n'), 1);
        QVERIFY(!r.err.contains(kPassword.toUtf8()));
        QVERIFY(r.out.isEmpty());
    }

    void unknownIdAndMissingFolder()
    {
        QVERIFY(startServer(false));
        CliResult r = runCli(m_env, {QStringLiteral("voicemail"), QStringLiteral("get"), QStringLiteral("9"),
                                     QStringLiteral("--out"), m_env.root.filePath(QStringLiteral("x.wav"))});
        QCOMPARE(r.exitCode, 1);
        QVERIFY(!QFile::exists(m_env.root.filePath(QStringLiteral("x.wav"))));
        QDir(rootPath(QStringLiteral("USB-Stick/FRITZ"))).removeRecursively();
        r = runCli(m_env, {QStringLiteral("fax"), QStringLiteral("list")});
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.err, QByteArray("tondrel-cli: No voicemail or fax folder was found on the router's storage.\n"));
    }
};

QTEST_GUILESS_MAIN(TestVoicemailFtp)
#include "tst_voicemailftp.moc"

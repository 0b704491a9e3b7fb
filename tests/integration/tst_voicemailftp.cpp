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

using namespace Qt::StringLiterals;

namespace {

const QString kPassword = u"s3cret"_s;
const QString kVoicebox = u"USB-Stick/FRITZ/voicebox/"_s;

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
        writeFile(rootPath(kVoicebox + u"meta0"_s),
                  metaFile({record("0301111", "rec.0.000", 12, 10, 8),
                            record("0302222", "rec.0.001", 300, 11, 9), record("", "rec.0.002", 44, 12, 10)},
                           false));
        writeFile(rootPath(kVoicebox + u"meta1"_s),
                  metaFile({record("0893333", "rec.1.000", 65, 13, 11)}, true));
        writeFile(rootPath(kVoicebox + u"rec/rec.0.000"_s), speexToneRecording(500, 20, 0));
        writeFile(rootPath(kVoicebox + u"rec/rec.0.001"_s), speexToneRecording(1000, 50, 10));
        writeFile(rootPath(kVoicebox + u"rec/rec.0.002"_s), speexToneRecording(1500, 20, 0));
        writeFile(rootPath(kVoicebox + u"rec/rec.1.000"_s), speexToneRecording(700, 20, 0));
        writeFile(rootPath(u"USB-Stick/FRITZ/faxbox/13.11.26_10.30_Telefax.0301234567.pdf"_s),
                  "%PDF-1.4\n% a fax\n%%EOF\n");
        writeFile(rootPath(u"USB-Stick/FRITZ/faxbox/notes.txt"_s), "not a fax");
        writeFile(rootPath(u"Other/music/a.mp3"_s), "x");
        writeFile(rootPath(u"readme.txt"_s), "x");
    }

    bool startServer(bool tls, const QStringList& readOnly = {})
    {
        QStringList extra;
        for (const QString& dir : readOnly)
            extra << u"--readonly"_s << dir;
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
            return runCli(m_env, {u"location"_s, u"set"_s, key, value}).exitCode == 0;
        };
        return set(u"FTPPort"_s, QString::number(m_server->port())) &&
               set(u"FTPSSL"_s, tls ? u"true"_s : u"false"_s) &&
               runCli(m_env, {u"location"_s, u"password"_s, u"--ftp"_s, u"--password-stdin"_s},
                      password.toUtf8() + "\n")
                       .exitCode == 0;
    }

    QJsonArray listJson(const QString& what)
    {
        const CliResult r = runCli(m_env, {what, u"list"_s, u"--json"_s});
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
        const CliResult add =
            runCli(m_env, {u"location"_s, u"add"_s, u"--name"_s, u"Home"_s, u"--host"_s, u"127.0.0.1"_s});
        QCOMPARE(add.exitCode, 0);
        runCli(m_env, {u"location"_s, u"set"_s, u"FTPUserName"_s, u"ftpuser"_s});
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

        QJsonArray entries = listJson(u"voicemail"_s);
        QCOMPARE(field(entries, "RecFile"),
                 (QStringList{u"rec.0.002"_s, u"rec.0.001"_s, u"rec.0.000"_s, u"rec.1.000"_s}));
        const QJsonObject fiveMinutes = entries.at(1).toObject();
        QCOMPARE(fiveMinutes.value(u"CallDuration"_s).toString(), u"5:00"_s);
        QCOMPARE(fiveMinutes.value(u"PhoneNumber"_s).toString(), u"0302222"_s);
        QCOMPARE(fiveMinutes.value(u"CallDate"_s).toString(), u"11.11.2026"_s);
        QCOMPARE(fiveMinutes.value(u"CallTime"_s).toString(), u"09:15"_s);
        QCOMPARE(fiveMinutes.value(u"PATH"_s).toString(), kVoicebox);
        QCOMPARE(fiveMinutes.value(u"FILE"_s).toString(), u"meta0"_s);
        QCOMPARE(entries.at(3).toObject().value(u"CallDuration"_s).toString(), u"1:05"_s);

        // Fetch the 5-minute message: a 1 kHz tone of 50 frames plus 10 silent ones.
        const QString wavPath = m_env.root.filePath(u"message.wav"_s);
        CliResult r = runCli(m_env, {u"voicemail"_s, u"get"_s, u"2"_s, u"--out"_s, wavPath});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const QByteArray wav = readFile(wavPath);
        QCOMPARE(wav.left(4), QByteArray("RIFF"));
        QCOMPARE(wav.mid(8, 8), QByteArray("WAVEfmt "));
        QCOMPARE(wav.size(), 44 + 60 * 160 * 2);
        const std::vector<qint16> pcm = wavSamples(wav);
        QVERIFY(std::abs(dominantFrequency({pcm.begin() + 800, pcm.begin() + 25 * 160}) - 1000) <= 50);

        const QString pdfPath = m_env.root.filePath(u"fax.pdf"_s);
        r = runCli(m_env, {u"fax"_s, u"get"_s, u"1"_s, u"--out"_s, pdfPath});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QVERIFY(readFile(pdfPath).startsWith("%PDF-1.4"));

        // Delete the middle message of meta0 by id and the meta1 one by name.
        const QByteArray oldMeta0 = readFile(rootPath(kVoicebox + u"meta0"_s));
        r = runCli(m_env, {u"voicemail"_s, u"delete"_s, u"2"_s, u"rec.1.000"_s});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QVERIFY(!QFile::exists(rootPath(kVoicebox + u"rec/rec.0.001"_s)));
        QVERIFY(!QFile::exists(rootPath(kVoicebox + u"rec/rec.1.000"_s)));
        QVERIFY(QFile::exists(rootPath(kVoicebox + u"rec/rec.0.000"_s)));
        const QByteArray newMeta0 = readFile(rootPath(kVoicebox + u"meta0"_s));
        QCOMPARE(newMeta0, oldMeta0.left(348) + oldMeta0.mid(2 * 348));
        QCOMPARE(readFile(rootPath(kVoicebox + u"meta1"_s)).size(), 0);
        QVERIFY(!QFile::exists(rootPath(kVoicebox + u"meta0.new"_s)));
        entries = listJson(u"voicemail"_s);
        QCOMPARE(field(entries, "RecFile"), (QStringList{u"rec.0.002"_s, u"rec.0.000"_s}));
    }

    void loadFlagsChooseIndexFiles_data()
    {
        QTest::addColumn<QString>("flags");
        QTest::addColumn<QStringList>("files");
        QTest::newRow("[1, 0] reads meta0 only") << u"[1, 0]"_s << QStringList{u"meta0"_s};
        QTest::newRow("[0, 1] reads meta1 only") << u"[0, 1]"_s << QStringList{u"meta1"_s};
        QTest::newRow("too short a list reads none past it") << u"[1]"_s << QStringList{u"meta0"_s};
        QTest::newRow("none") << u"[]"_s << QStringList{};
    }
    void loadFlagsChooseIndexFiles()
    {
        QFETCH(QString, flags);
        QFETCH(QStringList, files);
        QVERIFY(startServer(false));
        QCOMPARE(runCli(m_env, {u"location"_s, u"set"_s, u"LoadVoicemails"_s, flags}).exitCode, 0);
        QStringList got = field(listJson(u"voicemail"_s), "FILE");
        got.removeDuplicates();
        QCOMPARE(got, files);
    }

    void failedIndexUploadKeepsTheOldIndex()
    {
        // The router refuses writes in voicebox/ (but not in rec/).
        QVERIFY(startServer(false, {kVoicebox}));
        const QByteArray oldMeta0 = readFile(rootPath(kVoicebox + u"meta0"_s));
        const CliResult r = runCli(m_env, {u"voicemail"_s, u"delete"_s, u"rec.0.001"_s});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith("tondrel-cli: meta0: "), r.err.constData());
        QCOMPARE(r.err.count('\n'), 1);
        QCOMPARE(readFile(rootPath(kVoicebox + u"meta0"_s)), oldMeta0);
        QVERIFY(!QFile::exists(rootPath(kVoicebox + u"meta0.new"_s)));
    }

    void faxListAndDelete()
    {
        QVERIFY(startServer(true));
        const QJsonArray faxes = listJson(u"fax"_s);
        QCOMPARE(faxes.size(), 1);
        const QJsonObject fax = faxes.at(0).toObject();
        QCOMPARE(fax.value(u"PhoneNumber"_s).toString(), u"0301234567"_s);
        QCOMPARE(fax.value(u"CallTime"_s).toString(), u"10:30"_s);
        QCOMPARE(fax.value(u"Header"_s).toString(), u"2026.11.13"_s);
        QCOMPARE(fax.value(u"PATH"_s).toString(),
                 u"USB-Stick/FRITZ/faxbox/13.11.26_10.30_Telefax.0301234567.pdf"_s);
        const CliResult r =
            runCli(m_env, {u"fax"_s, u"delete"_s, u"13.11.26_10.30_Telefax.0301234567.pdf"_s});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QVERIFY(listJson(u"fax"_s).isEmpty());
        QVERIFY(QFile::exists(rootPath(u"USB-Stick/FRITZ/faxbox/notes.txt"_s)));
    }

    void connectionErrors_data()
    {
        QTest::addColumn<bool>("tls");
        QTest::addColumn<bool>("wrongPassword");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("wrong password over TLS")
            << true << true << QByteArray("Login to the router's storage refused (home network): ");
        QTest::newRow("server stopped")
            << false << false << QByteArray("No connection to the router's storage (home network): ");
    }
    void connectionErrors()
    {
        QFETCH(bool, tls);
        QFETCH(bool, wrongPassword);
        QFETCH(QByteArray, message);
        QVERIFY(startServer(tls));
        if (wrongPassword)
            QVERIFY(configure(tls, u"not-the-password"_s));
        else
            m_server->stop();
        const CliResult r = runCli(m_env, {u"voicemail"_s, u"list"_s});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith("tondrel-cli: " + message), r.err.constData());
        QCOMPARE(r.err.count('\n'), 1);
        QVERIFY(!r.err.contains(kPassword.toUtf8()));
        QVERIFY(r.out.isEmpty());
    }

    void unknownIdAndMissingFolder()
    {
        QVERIFY(startServer(false));
        CliResult r =
            runCli(m_env, {u"voicemail"_s, u"get"_s, u"9"_s, u"--out"_s, m_env.root.filePath(u"x.wav"_s)});
        QCOMPARE(r.exitCode, 1);
        QVERIFY(!QFile::exists(m_env.root.filePath(u"x.wav"_s)));
        QDir(rootPath(u"USB-Stick/FRITZ"_s)).removeRecursively();
        r = runCli(m_env, {u"fax"_s, u"list"_s});
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.err,
                 QByteArray("tondrel-cli: No voicemail or fax folder was found on the router's storage.\n"));
    }
};

QTEST_GUILESS_MAIN(TestVoicemailFtp)
#include "tst_voicemailftp.moc"

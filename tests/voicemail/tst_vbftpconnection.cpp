#include "FtpServerProcess.h"
#include "StorageFiles.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "voicemail/VBFTPConnection.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <thread>

class TestVBFTPConnection : public QObject
{
    Q_OBJECT

    NotificationCenter m_center;
    QTemporaryDir m_root;
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
    void initTestCase()
    {
        writeFile(m_root.filePath(QStringLiteral("Stick/FRITZ/voicebox/meta0")), QByteArray(348, 'm'));
        writeFile(m_root.filePath(QStringLiteral("Stick/FRITZ/voicebox/rec/rec.0.000")), "rec");
        writeFile(m_root.filePath(QStringLiteral("Stick/FRITZ/faxbox/a.pdf")), "%PDF");
        writeFile(m_root.filePath(QStringLiteral("Stick/FRITZ/faxbox/b.PDF")), "%PDF");
        writeFile(m_root.filePath(QStringLiteral("Stick/FRITZ/faxbox/c.txt")), "x");
        writeFile(m_root.filePath(QStringLiteral("Stick/My Music/song 1.mp3")), "x");
        writeFile(m_root.filePath(QStringLiteral("empty.txt")), "");
        // A large file served slowly, to cancel while it is in flight.
        writeFile(m_root.filePath(QStringLiteral("big.bin")), QByteArray(4 * 1024 * 1024, 'b'));
        m_server = std::make_unique<FtpServerProcess>(
            m_root.path(), QStringLiteral("pw"), false,
            QStringList{QStringLiteral("--throttle"), QStringLiteral("65536")});
        QVERIFY2(m_server->port() > 0, qPrintable(m_server->error()));
    }

    void listingGivesFullPaths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("root") << QString() << QStringLiteral("*.*")
                              << QStringList{QStringLiteral("Stick/"), QStringLiteral("big.bin"),
                                             QStringLiteral("empty.txt")};
        QTest::newRow("volume, names with blanks")
            << QStringLiteral("Stick/") << QStringLiteral("*.*")
            << QStringList{QStringLiteral("Stick/FRITZ/"), QStringLiteral("Stick/My Music/")};
        QTest::newRow("files without a dot pass *.*")
            << QStringLiteral("Stick/FRITZ/voicebox") << QStringLiteral("*.*")
            << QStringList{QStringLiteral("Stick/FRITZ/voicebox/meta0"),
                           QStringLiteral("Stick/FRITZ/voicebox/rec/")};
        QTest::newRow("mask filters files, any case")
            << QStringLiteral("/Stick/FRITZ/faxbox/") << QStringLiteral("*.pdf")
            << QStringList{QStringLiteral("Stick/FRITZ/faxbox/a.pdf"),
                           QStringLiteral("Stick/FRITZ/faxbox/b.PDF")};
        QTest::newRow("encoded blank in the path")
            << QStringLiteral("Stick/My Music/") << QString()
            << QStringList{QStringLiteral("Stick/My Music/song 1.mp3")};
    }
    void listingGivesFullPaths()
    {
        QFETCH(QString, path);
        QFETCH(QString, mask);
        QFETCH(QStringList, expected);
        VBFTPConnection c(m_center);
        QVERIFY(c.connectWithSettings(settings(), 1));
        QStringList got = c.directoryListingForPath(path, mask);
        got.sort();
        QCOMPARE(got, expected);
        QVERIFY(!c.lastError().isError());
    }

    void searchPath()
    {
        VBFTPConnection c(m_center);
        QVERIFY(c.connectWithSettings(settings(), 1));
        QCOMPARE(c.searchPath(QStringLiteral("Stick/"), QStringLiteral("FRITZ")),
                 QStringLiteral("Stick/FRITZ/"));
        QCOMPARE(c.searchPath(QStringLiteral("Stick/My Music/"), QStringLiteral("FRITZ")), QString());
        QCOMPARE(c.searchPath(QString(), QStringLiteral("big.bin")), QString()); // a file is no folder
    }

    void readUploadRenameDelete()
    {
        VBFTPConnection c(m_center);
        QVERIFY(c.connectWithSettings(settings(), 7));
        QCOMPARE(c.dataForFile(QStringLiteral("Stick/FRITZ/voicebox/meta0")), QByteArray(348, 'm'));
        const QByteArray empty = c.dataForFile(QStringLiteral("/empty.txt"));
        QVERIFY(!empty.isNull());
        QVERIFY(empty.isEmpty());
        QVERIFY(c.dataForFile(QStringLiteral("missing.bin")).isNull());
        QCOMPARE(c.lastError().kind, FTPError::Kind::Failed);

        QVERIFY(
            c.uploadData("new index", QStringLiteral("Stick/FRITZ/voicebox"), QStringLiteral("meta9.new")));
        QVERIFY(c.renameFile(QStringLiteral("meta9.new"), QStringLiteral("meta9"),
                             QStringLiteral("Stick/FRITZ/voicebox/")));
        QCOMPARE(c.dataForFile(QStringLiteral("Stick/FRITZ/voicebox/meta9")), QByteArray("new index"));
        QVERIFY(c.deleteFile(QStringLiteral("meta9"), QStringLiteral("Stick/FRITZ/voicebox/")));
        QVERIFY(!QFile::exists(m_root.filePath(QStringLiteral("Stick/FRITZ/voicebox/meta9"))));
        QVERIFY(!c.deleteFile(QStringLiteral("meta9"), QStringLiteral("Stick/FRITZ/voicebox/")));
        // The session survives a failed command.
        QCOMPARE(c.dataForFile(QStringLiteral("Stick/FRITZ/voicebox/rec/rec.0.000")), QByteArray("rec"));

        const QString local = m_root.filePath(QStringLiteral("download.out"));
        QVERIFY(c.downloadFile(QStringLiteral("Stick/FRITZ/faxbox/a.pdf"), local));
        QFile f(local);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("%PDF"));
        QVERIFY(!c.downloadFile(QStringLiteral("Stick/none.pdf"), local + QStringLiteral("2")));
        QVERIFY(!QFile::exists(local + QStringLiteral("2")));
    }

    void connectErrors_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<bool>("closedPort");
        QTest::addColumn<bool>("remote");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("key");
        QTest::newRow("wrong password at home")
            << QStringLiteral("nope") << false << false << int(FTPError::Kind::LoginDenied)
            << QStringLiteral("errorFTP_Login_Denied_Home");
        QTest::newRow("wrong password remote")
            << QStringLiteral("nope") << false << true << int(FTPError::Kind::LoginDenied)
            << QStringLiteral("errorFTP_Login_Denied_Remote");
        QTest::newRow("nobody listening")
            << QStringLiteral("pw") << true << false << int(FTPError::Kind::NoConnection)
            << QStringLiteral("errorFTP_Connect_Home");
    }
    void connectErrors()
    {
        QFETCH(QString, password);
        QFETCH(bool, closedPort);
        QFETCH(bool, remote);
        QFETCH(int, kind);
        QFETCH(QString, key);
        VBFTPConnection::Settings s = settings(password);
        s.remote = remote;
        if (closedPort) {
            FtpServerProcess gone(m_root.path(), QStringLiteral("pw"), false);
            s.port = gone.port();
        }
        VBFTPConnection c(m_center);
        QVERIFY(!c.connectWithSettings(s, 1));
        QCOMPARE(int(c.lastError().kind), kind);
        QCOMPARE(c.lastError().alertKey(), key);
        QVERIFY(!c.lastError().message.isEmpty());
        if (password != u"pw")
            QVERIFY(!c.lastError().alertText().contains(password));
        QVERIFY(c.directoryListingForPath(QString()).isEmpty());
    }

    void stalledServer_data()
    {
        QTest::addColumn<bool>("tls");
        QTest::addColumn<bool>("greet");
        QTest::addColumn<QString>("key");
        QTest::newRow("TLS handshake never answered")
            << true << true << QStringLiteral("errorFTPSSL_Timeout");
        QTest::newRow("no greeting, plain FTP") << false << false << QStringLiteral("errorFTP_Connect_Home");
    }
    void stalledServer()
    {
        QFETCH(bool, tls);
        QFETCH(bool, greet);
        QFETCH(QString, key);
        // Accepts, greets if asked, agrees to AUTH TLS, then stays silent.
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QList<QTcpSocket*> sockets;
        connect(&server, &QTcpServer::newConnection, this, [&] {
            QTcpSocket* s = server.nextPendingConnection();
            sockets << s;
            if (greet)
                s->write("220 FRITZ!Box FTP server ready.\r\n");
            connect(s, &QTcpSocket::readyRead, s, [s] {
                if (s->readAll().startsWith("AUTH"))
                    s->write("234 Proceed with negotiation.\r\n");
            });
        });
        VBFTPConnection::Settings st = settings();
        st.port = server.serverPort();
        st.tls = tls;
        st.timeoutSeconds = 2;
        VBFTPConnection c(m_center);
        bool done = false, ok = true;
        std::thread worker([&] {
            ok = c.connectWithSettings(st, 1);
            done = true;
        });
        QTRY_VERIFY_WITH_TIMEOUT(done, 15000);
        worker.join();
        QVERIFY(!ok);
        QCOMPARE(c.lastError().alertKey(), key);
    }

    void stopNotificationCancelsTransfer()
    {
        VBFTPConnection c(m_center);
        QVERIFY(c.connectWithSettings(settings(), 1));
        const QString local = m_root.filePath(QStringLiteral("big.out"));
        bool ok = true;
        QElapsedTimer timer;
        timer.start();
        // About a minute at the throttled rate; the notification stops it within moments.
        std::thread worker([&] { ok = c.downloadFile(QStringLiteral("big.bin"), local); });
        QTest::qWait(500);
        m_center.post(Notifications::STOPFTPTRANSFER);
        worker.join();
        QVERIFY(!ok);
        QCOMPARE(c.lastError().kind, FTPError::Kind::Cancelled);
        QVERIFY(timer.elapsed() < 20000);
        QVERIFY(!QFile::exists(local));
        // A cancelled session stays cancelled until it connects again.
        QVERIFY(c.dataForFile(QStringLiteral("empty.txt")).isNull());
        QVERIFY(c.connectWithSettings(settings(), 2));
        QVERIFY(!c.dataForFile(QStringLiteral("empty.txt")).isNull());
    }
};

QTEST_GUILESS_MAIN(TestVBFTPConnection)
#include "tst_vbftpconnection.moc"

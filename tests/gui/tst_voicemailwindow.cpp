// The answering machine and fax window against a real FTP server (pyftpdlib) holding the
// router's storage: lists with names, durations and new marks, playing and opening, saving,
// deleting, errors, cancelling, notifications, and how the tray opens it.
#include "../voicemail/MetaFileBuilder.h"
#include "../voicemail/SpeexTone.h"
#include "FtpServerProcess.h"
#include "GuiFixture.h"
#include "StorageFiles.h"

#include "TrayApplication.h"
#include "TrayMenu.h"
#include "voicemail/VoicemailListModel.h"
#include "voicemail/VoicemailWindow.h"

#include "app/ServiceAdapters.h"
#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "calllist/TNCallinglist.h"
#include "voicemail/TNFTPDatasource.h"

#include <QAction>
#include <QLabel>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

const QString kPassword = u"s3cret"_s;
const QString kVoicebox = u"USB-Stick/FRITZ/voicebox/"_s;
const QString kFaxbox = u"USB-Stick/FRITZ/faxbox/"_s;
const QString kFaxKnown = u"13.11.26_10.30_Telefax.0301234567.pdf"_s;
const QString kFaxNamed = u"14.11.26_08.05_Telefax.Kanzlei Meier.pdf"_s;
constexpr int kWait = 20000;

QDateTime nov(int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, 11, day), QTime(hour, minute));
}

// The router's storage, the tray on a location that reaches it, and the window's hooks.
struct VoicemailRig
{
    QTemporaryDir root;
    QTemporaryDir out;
    GuiTray t;
    GuiEnv& env = t.env;
    std::unique_ptr<FtpServerProcess> server;
    std::unique_ptr<TrayApplication>& tray = t.tray;
    ManualClock clock{nov(12, 20)};
    QStringList opened; // files handed to the desktop
    QList<int> confirmations;
    bool confirm = true;
    QString savePath;
    QString suggested;

    QString storage(const QString& rel) const { return root.filePath(rel); }

    // Answering machine 1 (big-endian) with three messages, machine 2 (little-endian) with one,
    // two faxes.
    void buildStorage()
    {
        writeFile(storage(kVoicebox + u"meta0"_s),
                  metaFile({record("0301111", "rec.0.000", 12, 10, 8),
                            record("0302222", "rec.0.001", 75, 11, 9), record("", "rec.0.002", 44, 12, 10)},
                           false));
        writeFile(storage(kVoicebox + u"meta1"_s),
                  metaFile({record("0893333", "rec.1.000", 65, 13, 11)}, true));
        writeFile(storage(kVoicebox + u"rec/rec.0.000"_s), speexToneRecording(500, 20, 0));
        writeFile(storage(kVoicebox + u"rec/rec.0.001"_s), speexToneRecording(1000, 50, 10));
        writeFile(storage(kVoicebox + u"rec/rec.0.002"_s), speexToneRecording(1500, 20, 0));
        writeFile(storage(kVoicebox + u"rec/rec.1.000"_s), speexToneRecording(700, 20, 0));
        writeFile(storage(kFaxbox + kFaxKnown), "%PDF-1.4\n% a fax\n%%EOF\n");
        writeFile(storage(kFaxbox + kFaxNamed), "%PDF-1.4\n% another fax\n%%EOF\n");
    }

    bool startServer(const QStringList& extra = {})
    {
        server = std::make_unique<FtpServerProcess>(root.path(), kPassword, false, extra);
        if (server->port() <= 0)
            qWarning() << "ftp server did not start:" << server->error();
        return server->port() > 0;
    }

    // ftpPort 0: the server's; password empty: the right one.
    bool open(int ftpPort = 0, const QString& password = {}, const QStringList& serverArgs = {})
    {
        buildStorage();
        if (!startServer(serverArgs))
            return false;
        QVariantMap home = GuiEnv::location(u"Home"_s, 1, 0);
        home.insert(u"FTPPort"_s, ftpPort > 0 ? ftpPort : server->port());
        home.insert(u"FTPUserName"_s, u"ftpuser"_s);
        home.insert(u"FTPSSL"_s, false);
        if (!env.open({{u"L1"_s, home}}, u"L1"_s))
            return false;
        setFtpPassword(password.isEmpty() ? kPassword : password);
        // Faxes were checked on the 13th at noon: the one of the 14th is new (a fax's time of
        // day is not kept). Messages were never checked: all are new.
        env.env->voicemailMarkers()->setLastSavedFaxDate(nov(13, 12));
        env.env->callinglist()->insertCallerWithName(u"Erika Mustermann"_s, u"0302222"_s, u"abid-7"_s,
                                                     u"home"_s);
        return true;
    }

    void setFtpPassword(const QString& password)
    {
        env.env->secrets().write(SecretStore::keychainServiceForKey(u"FTPPass"_s, u"L1"_s),
                                 SecretStore::keychainAccountForKey(u"FTPPass"_s), password);
        env.env->manager().activateCurrentLocation();
    }

    void start(const QStringList& arguments = {})
    {
        t.start({}, arguments);
        VoicemailWindow& w = tray->voicemailWindow();
        w.setCacheDir(out.filePath(u"cache"_s));
        w.setClock(&clock);
        w.setOpenFile([this](const QString& path) { opened.append(path); });
        w.setConfirmDelete([this](int count) {
            confirmations.append(count);
            return confirm;
        });
        w.setChooseSavePath([this](const QString& name, const QString&) {
            suggested = name;
            return savePath;
        });
    }

    // Opened and read; false when the reading failed.
    bool openWindow()
    {
        VoicemailWindow& w = tray->voicemailWindow();
        QSignalSpy done(&w, &VoicemailWindow::loadFinished);
        tray->openVoicemail();
        if (!QTest::qWaitFor([&] { return done.count() > 0 && !w.isLoading(); }, kWait))
            return false;
        return done.last().at(0).toBool();
    }

    VoicemailWindow& window() { return tray->voicemailWindow(); }

    // Runs the action and waits for its transfer; its success.
    bool transfer(QAction* action)
    {
        QSignalSpy done(&window(), &VoicemailWindow::transferFinished);
        action->trigger();
        if (!QTest::qWaitFor([&] { return done.count() > 0; }, kWait))
            return false;
        // A deletion reads the list again.
        return done.last().at(0).toBool() && QTest::qWaitFor([&] { return !window().isLoading(); }, kWait);
    }
};

QString cell(VoicemailListModel* m, int row, int column)
{
    return m->index(row, column).data().toString();
}

// The rows as shown: date, number, name, line or file, duration, "new" when marked and bold.
QStringList rows(VoicemailListModel* m, bool fax)
{
    QStringList out;
    for (int r = 0; r < m->rowCount(); ++r) {
        const QModelIndex date = m->index(r, VoicemailListModel::Date);
        const bool isNew = date.data(VoicemailListModel::NewRole).toBool();
        const bool marked = !cell(m, r, VoicemailListModel::New).isEmpty();
        const bool bold = date.data(Qt::FontRole).value<QFont>().bold();
        out << QStringList{date.data().toString(),
                           cell(m, r, VoicemailListModel::Number),
                           cell(m, r, VoicemailListModel::Name),
                           cell(m, r, fax ? VoicemailListModel::File : VoicemailListModel::Line),
                           fax ? QString() : cell(m, r, VoicemailListModel::Duration),
                           isNew && marked && bold   ? u"new"_s
                           : isNew || marked || bold ? u"half new"_s
                                                     : QString()}
                   .join(u'|');
    }
    return out;
}

QStringList numbers(VoicemailListModel* m)
{
    QStringList out;
    for (int r = 0; r < m->rowCount(); ++r)
        out << m->index(r, 0).data(VoicemailListModel::NumberRole).toString();
    return out;
}

QList<bool> newMarks(VoicemailListModel* m)
{
    QList<bool> out;
    for (int r = 0; r < m->rowCount(); ++r)
        out << m->index(r, 0).data(VoicemailListModel::NewRole).toBool();
    return out;
}

QAction* act(VoicemailWindow& w, const char* name)
{
    return w.findChild<QAction*>(QLatin1String(name));
}

QLabel* label(VoicemailWindow& w, const char* name)
{
    return w.findChild<QLabel*>(QLatin1String(name));
}

} // namespace

class TestVoicemailWindow : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void listsEntries()
    {
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        QVERIFY(label(w, "errorLine")->text().isEmpty());
        const auto at = [](int day, const char* time) {
            return QLocale().toString(QDate(2026, 11, day), QLocale::ShortFormat) + u' ' +
                   QLatin1String(time);
        };
        // Newest first per answering machine; messages are new until the first check, the fax of
        // the 13th was received before the last check of faxes.
        QCOMPARE(rows(w.voicemailModel(), false),
                 (QStringList{at(12, "10:15") + u"|Number withheld||Machine 1 (987654)|0:44|new"_s,
                              at(11, "09:15") + u"|0302222|Erika Mustermann|Machine 1 (987654)|1:15|new"_s,
                              at(10, "08:15") + u"|0301111||Machine 1 (987654)|0:12|new"_s,
                              at(13, "11:15") + u"|0893333||Machine 2 (987654)|1:05|new"_s}));
        QCOMPARE(rows(w.faxModel(), true),
                 (QStringList{at(13, "10:30") + u"|0301234567||"_s + kFaxKnown + u"||"_s,
                              at(14, "08:05") + u"|Kanzlei Meier||"_s + kFaxNamed + u"||new"_s}));
        QCOMPARE(label(w, "countLabel")->text(), u"4 messages (4 new), 2 faxes (1 new)"_s);
    }

    void playOrOpenMarksSeen_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QList<bool>>("marksAfter");
        QTest::addColumn<QDateTime>("marker");
        // The clock says the 12th, 20:00. The message of the 13th stays seen when read again: the
        // index files carry no date to compare with the check time.
        QTest::newRow("a message: the check time")
            << 0 << 1 << QByteArray("RIFF") << QList<bool>{false, false, false, false} << nov(12, 20);
        QTest::newRow("fax received after our clock: its day")
            << 1 << 1 << QByteArray("%PDF") << QList<bool>{false, false} << nov(14, 0);
    }
    void playOrOpenMarksSeen()
    {
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(QByteArray, head);
        QFETCH(QList<bool>, marksAfter);
        QFETCH(QDateTime, marker);
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        const auto t = tab == 0 ? VoicemailWindow::VoicemailTab : VoicemailWindow::FaxTab;
        QVERIFY(w.selectRow(t, row));
        QCOMPARE(act(w, "play")->text(), tab == 0 ? u"Play"_s : u"Open"_s);
        QVERIFY(act(w, "play")->isEnabled());
        QVERIFY(rig.transfer(act(w, "play")));
        QCOMPARE(rig.opened.size(), 1);
        const QString path = rig.opened.first();
        QVERIFY2(path.startsWith(w.cacheDir() + u'/'), qPrintable(path));
        const QByteArray data = readFile(path);
        QVERIFY(data.startsWith(head));
        if (tab == 0) {
            QCOMPARE(data.mid(8, 8), QByteArray("WAVEfmt "));
            QVERIFY(data.size() > 44);
        } else {
            QCOMPARE(data, readFile(rig.storage(kFaxbox + kFaxNamed)));
        }
        VoicemailListModel* m = tab == 0 ? w.voicemailModel() : w.faxModel();
        QCOMPARE(newMarks(m), marksAfter);
        // Kept in the call database: the next reading counts the same.
        VoicemailMarkerStore* markers = rig.env.env->voicemailMarkers();
        QCOMPARE(tab == 0 ? markers->lastSavedVoicemailDate() : markers->lastSavedFaxDate(), marker);
        QVERIFY(rig.openWindow());
        QCOMPARE(newMarks(m), marksAfter);
        QCOMPARE(tab == 0 ? w.datasource().newVoicemailsCounter : w.datasource().newFaxCounter,
                 int(marksAfter.count(true)));
    }

    void saveAs_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("suggested");
        QTest::addColumn<bool>("chosen"); // false: the dialog answers with no file
        QTest::newRow("message of a known caller")
            << 0 << 1 << u"2026-11-11 09.15 Erika Mustermann.wav"_s << true;
        QTest::newRow("message without a number") << 0 << 0 << u"2026-11-12 10.15.wav"_s << true;
        QTest::newRow("fax") << 1 << 0 << kFaxKnown << true;
        QTest::newRow("cancelled in the dialog") << 0 << 0 << u"2026-11-12 10.15.wav"_s << false;
    }
    void saveAs()
    {
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(QString, suggested);
        QFETCH(bool, chosen);
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        if (chosen)
            rig.savePath = rig.out.filePath(u"saved/"_s + suggested);
        QDir().mkpath(rig.out.filePath(u"saved"_s));
        QVERIFY(w.selectRow(tab == 0 ? VoicemailWindow::VoicemailTab : VoicemailWindow::FaxTab, row));
        const QList<bool> marks = newMarks(w.voicemailModel());
        if (chosen) {
            QVERIFY(rig.transfer(act(w, "save")));
        } else {
            QSignalSpy done(&w, &VoicemailWindow::transferFinished);
            act(w, "save")->trigger();
            QVERIFY(!w.isTransferring());
            QCoreApplication::processEvents();
            QCOMPARE(done.count(), 0);
            QVERIFY(act(w, "save")->isEnabled());
        }
        QCOMPARE(rig.suggested, suggested);
        const QByteArray data = readFile(rig.savePath);
        if (!chosen)
            QVERIFY(QDir(rig.out.filePath(u"saved"_s)).isEmpty());
        else if (tab == 0)
            QVERIFY(data.startsWith("RIFF") && data.mid(8, 8) == "WAVEfmt " && data.size() > 44);
        else
            QCOMPARE(data, readFile(rig.storage(kFaxbox + kFaxKnown)));
        // Saving is not listening.
        QVERIFY(rig.opened.isEmpty());
        QCOMPARE(newMarks(w.voicemailModel()), marks);
    }

    void deleteEntries_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<bool>("confirm");
        QTest::addColumn<QStringList>("goneFiles");
        QTest::addColumn<QStringList>("numbersLeft");
        QTest::newRow("one message") << 0 << QList<int>{1} << true
                                     << QStringList{kVoicebox + u"rec/rec.0.001"_s}
                                     << QStringList{QString(), u"0301111"_s, u"0893333"_s};
        QTest::newRow("messages of both machines")
            << 0 << QList<int>{0, 3} << true
            << QStringList{kVoicebox + u"rec/rec.0.002"_s, kVoicebox + u"rec/rec.1.000"_s}
            << QStringList{u"0302222"_s, u"0301111"_s};
        QTest::newRow("a fax") << 1 << QList<int>{0} << true << QStringList{kFaxbox + kFaxKnown}
                               << QStringList{u"Kanzlei Meier"_s};
        QTest::newRow("declined") << 0 << QList<int>{1} << false << QStringList{}
                                  << QStringList{QString(), u"0302222"_s, u"0301111"_s, u"0893333"_s};
    }
    void deleteEntries()
    {
        QFETCH(int, tab);
        QFETCH(QList<int>, rows);
        QFETCH(bool, confirm);
        QFETCH(QStringList, goneFiles);
        QFETCH(QStringList, numbersLeft);
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        const auto t = tab == 0 ? VoicemailWindow::VoicemailTab : VoicemailWindow::FaxTab;
        QVERIFY(w.selectRow(t, rows.first()));
        QTableView* view = w.table(t);
        for (int r : rows.mid(1))
            view->selectionModel()->select(view->model()->index(r, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
        rig.confirm = confirm;
        const QByteArray meta0 = readFile(rig.storage(kVoicebox + u"meta0"_s));
        if (confirm) {
            QVERIFY(rig.transfer(act(w, "delete")));
        } else {
            act(w, "delete")->trigger();
            QVERIFY(!w.isTransferring());
        }
        QCOMPARE(rig.confirmations, QList<int>{int(rows.size())});
        for (const QString& gone : goneFiles)
            QVERIFY2(!QFile::exists(rig.storage(gone)), qPrintable(gone));
        VoicemailListModel* m = tab == 0 ? w.voicemailModel() : w.faxModel();
        QStringList shown = numbers(m);
        shown.replaceInStrings(QRegularExpression(u"^$"_s), QString());
        QCOMPARE(shown, numbersLeft);
        if (tab == 0 && confirm)
            QCOMPARE(readFile(rig.storage(kVoicebox + u"meta0"_s)).size(), meta0.size() - 348);
        QVERIFY(label(w, "errorLine")->text().isEmpty());
    }

    void errorsShowOneLine_data()
    {
        QTest::addColumn<QString>("problem");
        QTest::addColumn<QString>("start");
        QTest::newRow("router unreachable")
            << u"port"_s << u"No connection to the router's storage (home network): "_s;
        QTest::newRow("login refused")
            << u"password"_s << u"Login to the router's storage refused (home network): "_s;
        QTest::newRow("no storage") << u"storage"_s
                                    << u"No voicemail or fax folder was found on the router's storage."_s;
    }
    void errorsShowOneLine()
    {
        QFETCH(QString, problem);
        QFETCH(QString, start);
        VoicemailRig rig;
        QVERIFY(rig.open(problem == u"port" ? 1 : 0, problem == u"password" ? u"wrong"_s : QString()));
        if (problem == u"storage")
            QVERIFY(QDir(rig.storage(u"USB-Stick"_s)).rename(u"FRITZ"_s, u"FRITZ-old"_s));
        rig.start();
        QVERIFY(!rig.openWindow());
        VoicemailWindow& w = rig.window();
        QVERIFY(label(w, "errorLine")->isVisibleTo(&w));
        QVERIFY2(label(w, "errorLine")->text().startsWith(start), qPrintable(label(w, "errorLine")->text()));
        QVERIFY(!label(w, "errorLine")->text().contains(u'\n'));
        QCOMPARE(w.voicemailModel()->rowCount(), 0);
        QVERIFY(!w.isLoading());
        QVERIFY(act(w, "reload")->isEnabled());
        QVERIFY(!act(w, "cancel")->isEnabled());
        QVERIFY(!w.findChild<QProgressBar*>(u"progress"_s)->isVisibleTo(&w));

        // Put right, a reload reads the lists and the line goes.
        if (problem == u"port") {
            rig.env.env->manager().currentPreferences()->ftpPort = rig.server->port();
        } else if (problem == u"password") {
            rig.setFtpPassword(kPassword);
        } else {
            QVERIFY(QDir(rig.storage(u"USB-Stick"_s)).rename(u"FRITZ-old"_s, u"FRITZ"_s));
        }
        QSignalSpy done(&w, &VoicemailWindow::loadFinished);
        act(w, "reload")->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(done.count(), 1, kWait);
        QVERIFY(done.first().at(0).toBool());
        QCOMPARE(w.voicemailModel()->rowCount(), 4);
        QVERIFY(!label(w, "errorLine")->isVisibleTo(&w));
    }

    void failedFetchLeavesTheWindowUsable()
    {
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        // The recording went missing since the list was read.
        QVERIFY(QFile::remove(rig.storage(kVoicebox + u"rec/rec.0.001"_s)));
        QVERIFY(w.selectRow(VoicemailWindow::VoicemailTab, 1));
        QVERIFY(!rig.transfer(act(w, "play")));
        QVERIFY(rig.opened.isEmpty());
        QVERIFY(!label(w, "errorLine")->text().isEmpty());
        QVERIFY(!label(w, "errorLine")->text().contains(u'\n'));
        QCOMPARE(newMarks(w.voicemailModel()), (QList<bool>{true, true, true, true}));
        QVERIFY(act(w, "play")->isEnabled());
        QVERIFY(w.selectRow(VoicemailWindow::VoicemailTab, 0));
        QVERIFY(rig.transfer(act(w, "play")));
        QCOMPARE(rig.opened.size(), 1);
        QVERIFY(label(w, "errorLine")->text().isEmpty());
        QCOMPARE(newMarks(w.voicemailModel()), (QList<bool>{false, false, false, false}));
    }

    void cancelStopsAFetch()
    {
        VoicemailRig rig;
        // A long message served slowly, to be caught in flight.
        QVERIFY(rig.open(0, {}, {u"--throttle"_s, u"8192"_s}));
        writeFile(rig.storage(kVoicebox + u"rec/rec.0.001"_s), speexToneRecording(1000, 3000, 0));
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        QVERIFY(w.selectRow(VoicemailWindow::VoicemailTab, 1));
        QSignalSpy done(&w, &VoicemailWindow::transferFinished);
        act(w, "play")->trigger();
        QVERIFY(w.isTransferring());
        QVERIFY(act(w, "cancel")->isEnabled());
        QVERIFY(!act(w, "play")->isEnabled());
        QVERIFY(!act(w, "reload")->isEnabled());
        // Cancel once part of the recording has arrived.
        QVERIFY(QTest::qWaitFor(
            [&] {
                const QFileInfoList parts =
                    QDir(w.cacheDir()).entryInfoList({u"*"_s}, QDir::Dirs | QDir::NoDotAndDotDot);
                for (const QFileInfo& dir : parts)
                    for (const QFileInfo& f : QDir(dir.filePath()).entryInfoList({u"*.spx"_s}, QDir::Files))
                        if (f.size() > 0)
                            return true;
                return done.count() > 0;
            },
            kWait));
        QCOMPARE(done.count(), 0);
        act(w, "cancel")->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(done.count(), 1, kWait);
        QCOMPARE(done.first().at(0).toBool(), false);
        QCOMPARE(label(w, "errorLine")->text(), u"The transfer was cancelled."_s);
        QVERIFY(rig.opened.isEmpty());
        QVERIFY(act(w, "play")->isEnabled());
        QVERIFY(act(w, "reload")->isEnabled());
        QVERIFY(!act(w, "cancel")->isEnabled());
    }

    void followsNotifications_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QList<int>>("rowsAtResets");
        QTest::newRow("RELOADABFAXLIST") << Notifications::RELOADABFAXLIST << QList<int>{5};
        QTest::newRow("UPDATEABFAXLIST") << Notifications::UPDATEABFAXLIST << QList<int>{5};
        QTest::newRow("UPDATEABFAXLISTCLEAN clears first")
            << Notifications::UPDATEABFAXLISTCLEAN << QList<int>{0, 5};
    }
    void followsNotifications()
    {
        QFETCH(QString, name);
        QFETCH(QList<int>, rowsAtResets);
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        // A new message on machine 2.
        writeFile(rig.storage(kVoicebox + u"meta1"_s), metaFile({record("0893333", "rec.1.000", 65, 13, 11),
                                                                 record("0304444", "rec.1.001", 9, 14, 7)},
                                                                true));
        QList<int> rowsAt;
        connect(w.voicemailModel(), &QAbstractItemModel::modelReset, this,
                [&] { rowsAt.append(w.voicemailModel()->rowCount()); });
        QSignalSpy done(&w, &VoicemailWindow::loadFinished);
        rig.env.env->notifications().post(name);
        QTRY_COMPARE_WITH_TIMEOUT(done.count(), 1, kWait);
        QCOMPARE(rowsAt, rowsAtResets);
        QCOMPARE(cell(w.voicemailModel(), 3, VoicemailListModel::Number), u"0304444"_s);
        QCOMPARE(w.datasource().newVoicemailsCounter, 5);
    }

    void hiddenWindowReadsWhenShown_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("faxesWhileHidden");
        QTest::newRow("RELOADABFAXLIST: the old list until shown") << Notifications::RELOADABFAXLIST << 2;
        QTest::newRow("UPDATEABFAXLISTCLEAN: emptied at once") << Notifications::UPDATEABFAXLISTCLEAN << 0;
    }
    void hiddenWindowReadsWhenShown()
    {
        QFETCH(QString, name);
        QFETCH(int, faxesWhileHidden);
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        w.hide();
        QVERIFY(QFile::remove(rig.storage(kFaxbox + kFaxNamed)));
        rig.env.env->notifications().post(name);
        QCoreApplication::processEvents();
        QVERIFY(!w.isLoading());
        QCOMPARE(w.faxModel()->rowCount(), faxesWhileHidden);
        QVERIFY(rig.openWindow());
        QCOMPARE(w.faxModel()->rowCount(), 1);
    }

    void cleanWhileReadingDropsTheRun()
    {
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start();
        QVERIFY(rig.openWindow());
        VoicemailWindow& w = rig.window();
        w.hide();
        w.reload(); // still reading the old location when the new one is activated
        QVERIFY(w.isLoading());
        rig.env.env->notifications().post(Notifications::UPDATEABFAXLISTCLEAN);
        QCoreApplication::processEvents();
        QVERIFY(!w.isLoading());
        QVERIFY(QThreadPool::globalInstance()->waitForDone(kWait));
        QCoreApplication::processEvents();
        QCOMPARE(w.voicemailModel()->rowCount(), 0);
        QCOMPARE(w.faxModel()->rowCount(), 0);
        QVERIFY(label(w, "errorLine")->text().isEmpty());
        QVERIFY(act(w, "reload")->isEnabled());
    }

    void trayOpensTheWindow_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("fromMenu");
        QTest::newRow("--voicemail") << QStringList{u"--voicemail"_s} << false;
        QTest::newRow("menu item") << QStringList{} << true;
    }
    void trayOpensTheWindow()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, fromMenu);
        VoicemailRig rig;
        QVERIFY(rig.open());
        rig.start(arguments);
        TrayMenu& menu = rig.tray->menu();
        if (fromMenu) {
            QVERIFY(!rig.window().isVisible());
            menu.voicemailItem()->trigger();
        }
        VoicemailWindow* first = &rig.window();
        QVERIFY(first->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(first->voicemailModel()->rowCount(), 4, kWait);
        QCOMPARE(first->windowTitle(), u"Answering machine and fax – Home"_s);
        // Once more from the other way: the same window.
        rig.tray->handleArguments({u"--voicemail"_s});
        menu.voicemailItem()->trigger();
        QCOMPARE(&rig.window(), first);
        QTRY_VERIFY_WITH_TIMEOUT(!first->isLoading(), kWait);
    }
};

QTEST_MAIN(TestVoicemailWindow)
#include "tst_voicemailwindow.moc"

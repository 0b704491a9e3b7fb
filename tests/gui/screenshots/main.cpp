// Writes the pictures of the README: the tray menu, the call monitor window with a ringing and
// a connected call, and the new-call window, against the simulated router. Needs a display
// (scripts/screenshots.sh runs it under Xvfb).
#include "../../voicemail/MetaFileBuilder.h"
#include "../../voicemail/SpeexTone.h"
#include "../GuiFixture.h"
#include "FtpServerProcess.h"

#include "CallMonitorWindow.h"
#include "DialWindow.h"
#include "LatestCallsMenu.h"
#include "TrayApplication.h"
#include "TrayMenu.h"
#include "app/CallMonitorService.h"
#include "calllist/CallListWindow.h"
#include "phonebook/PhonebookWindow.h"
#include "settings/SettingsWindow.h"
#include "setup/SetupWizard.h"
#include "traffic/TrafficWindow.h"
#include "voicemail/VoicemailWindow.h"

#include "assistant/SsdpDiscovery.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "box/TrafficSampler.h"
#include "calllist/TNCallinglist.h"
#include "monitor/StreamListener.h"

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QMenu>
#include <QPainter>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
bool save(const QPixmap& picture, const QString& path)
{
    const bool ok = !picture.isNull() && picture.save(path);
    std::fprintf(ok ? stdout : stderr, "%s %s\n", ok ? "wrote" : "could not write", qPrintable(path));
    return ok;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"Tondrel"_s);
    if (argc < 2) {
        std::fprintf(stderr, "usage: tondrel-screenshots <folder>\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    QDir().mkpath(out.path());

    SimulatorProcess sim({u"--ssdp-port"_s, u"0"_s});
    if (!sim.isRunning()) {
        std::fprintf(stderr, "simulator: %s\n", qPrintable(sim.error()));
        return 1;
    }
    // The router's storage with two messages and a fax, served over FTP.
    QTemporaryDir storage;
    const QString voicebox = storage.filePath(u"USB-Stick/FRITZ/voicebox/"_s);
    const QString faxbox = storage.filePath(u"USB-Stick/FRITZ/faxbox/"_s);
    QDir().mkpath(voicebox + u"rec"_s);
    QDir().mkpath(faxbox);
    const auto message = [](const char* number, const char* file, quint32 seconds, int day, int hour) {
        MetaRecord r;
        r.number = QString::fromLatin1(number);
        r.recFile = QString::fromLatin1(file);
        r.calledLine = u"5550000"_s;
        r.duration = seconds;
        r.day = day;
        r.month = QDate::currentDate().month();
        r.year = QDate::currentDate().year() % 100;
        r.hour = hour;
        r.minute = 12;
        return r;
    };
    const auto writeFile = [](const QString& path, const QByteArray& data) {
        QFile f(path);
        return f.open(QIODevice::WriteOnly) && f.write(data) == data.size();
    };
    const int today = QDate::currentDate().day();
    bool stored =
        writeFile(voicebox + u"meta0"_s, metaFile({message("0409998877", "rec.0.000", 23, today, 9),
                                                   message("0301234567", "rec.0.001", 41, today, 11)},
                                                  false));
    stored &= writeFile(voicebox + u"rec/rec.0.000"_s, speexToneRecording(500, 20, 0));
    stored &= writeFile(voicebox + u"rec/rec.0.001"_s, speexToneRecording(700, 20, 0));
    stored &=
        writeFile(faxbox + QDate::currentDate().toString(u"dd.MM.yy"_s) + u"_08.05_Telefax.08005550199.pdf"_s,
                  "%PDF-1.4\n%%EOF\n");
    FtpServerProcess ftp(storage.path(), u"ftp-secret"_s, false);
    if (!stored || ftp.port() <= 0) {
        std::fprintf(stderr, "the FTP storage could not be set up\n");
        return 1;
    }

    GuiEnv env;
    QVariantMap home = GuiEnv::routerLocation(u"Home"_s, 1, sim);
    home.insert(u"FTPPort"_s, ftp.port());
    home.insert(u"FTPUserName"_s, u"ftpuser"_s);
    home.insert(u"FTPSSL"_s, false);
    home.insert(u"Lines"_s, QVariantList{QVariantMap{{u"Line"_s, u"5550000"_s}, {u"Title"_s, u"SIP0"_s}}});
    if (!env.open({{u"L1"_s, home}}, u"L1"_s, {{u"AddressBook"_s, GuiEnv::addressBook()}})) {
        std::fprintf(stderr, "settings could not be opened\n");
        return 1;
    }
    env.env->secrets().write(SecretStore::keychainServiceForKey(u"FTPPass"_s, u"L1"_s),
                             SecretStore::keychainAccountForKey(u"FTPPass"_s), u"ftp-secret"_s);
    env.setPassword(u"L1"_s, u"secret"_s);
    TNCallinglist& calls = *env.env->callinglist();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    calls.insertCall({1, 1, now - 7200, u"0301234567"_s, u"1"_s, u"5550000"_s, u"0:04"_s});
    calls.insertCall({1, 1, now - 86400, u"08005550199"_s, u"610"_s, u"5550000"_s, u"0:12"_s});
    calls.insertCall({1, 2, now - 1800, u"0409998877"_s, u"1"_s, u"5550000"_s, u"0:00"_s});
    calls.insertCall({1, 3, now - 3 * 86400, u"0891234500"_s, u"610"_s, u"5550000"_s, u"0:31"_s});
    calls.insertCall({1, 1, now - 3 * 86400 - 5000, u"0409998877"_s, u"1"_s, u"5550000"_s, u"0:02"_s});
    calls.insertCallerWithName(u"Hanna Berg"_s, u"0409998877"_s, QString(), u"mobile"_s);

    RecordingPresenter presenter;
    TrayApplication::Options options = TrayApplication::routerOptions(*env.env);
    options.presenter = &presenter;
    options.headless = true;
    TrayApplication tray(*env.env, options);
    tray.start({});
    StreamListener& listener = tray.callMonitor().listener();
    if (!QTest::qWaitFor([&] { return listener.isConnected(); }, 10000) ||
        !GuiEnv::waitForMonitorClient(sim)) {
        std::fprintf(stderr, "the call monitor did not connect\n");
        return 1;
    }
    auto post = [&sim](const QString& what, const QVariantMap& body) {
        sim.control("POST", u"/_sim/monitor/"_s + what, QJsonDocument::fromVariant(body).toJson());
    };
    post(u"ring"_s, {{u"caller"_s, u"08005550199"_s}, {u"called"_s, u"5550000"_s}, {u"connID"_s, 1}});
    post(u"connect"_s, {{u"connID"_s, 1}, {u"extension"_s, u"10"_s}});
    post(u"ring"_s, {{u"caller"_s, u"0301234567"_s}, {u"called"_s, u"5550000"_s}, {u"connID"_s, 2}});
    if (!QTest::qWaitFor([&] { return listener.monitorCalls().size() == 2; }, 5000)) {
        std::fprintf(stderr, "the calls did not arrive\n");
        return 1;
    }
    QTest::qWait(3200); // the connected call's clock runs, the router's status arrives

    bool ok = true;
    CallMonitorWindow& monitor = tray.monitorWindow();
    monitor.openCallmonitorWindow();
    monitor.move(40, 40);
    QTest::qWait(300);
    ok &= save(monitor.grab(), out.filePath(u"callmonitor.png"_s));
    monitor.hide();

    DialWindow& dial = tray.dialWindow();
    dial.openWithNumber(u"0301234567"_s, {});
    dial.move(40, 40);
    QTest::qWait(300);
    ok &= save(dial.grab(), out.filePath(u"dialing.png"_s));
    dial.hide();

    // The menu with the latest calls open beside it.
    env.env->notifications().post(Notifications::REFRESHLATESTCALLSMENU);
    QTest::qWait(100);
    QMenu* menu = tray.menu().menu();
    menu->popup(QPoint(20, 20));
    QTest::qWait(300);
    menu->setActiveAction(tray.menu().latestCallsMenu()->menuAction());
    QTest::qWait(800);
    // Both menus drawn into one picture where they stand on the screen.
    QMenu* latest = tray.menu().latestCallsMenu();
    QRect area = menu->geometry();
    if (latest->isVisible())
        area = area.united(latest->geometry());
    QPixmap picture(area.size());
    picture.fill(Qt::transparent);
    {
        QPainter painter(&picture);
        painter.drawPixmap(menu->geometry().topLeft() - area.topLeft(), menu->grab());
        if (latest->isVisible())
            painter.drawPixmap(latest->geometry().topLeft() - area.topLeft(), latest->grab());
    }
    ok &= save(picture, out.filePath(u"menu.png"_s));
    menu->hide();

    // The call list with the calls of the last days.
    if (CallListWindow* list = tray.callListWindow()) {
        list->resize(900, 420);
        list->move(40, 40);
        tray.openCallList();
        QTest::qWait(600);
        ok &= save(list->grab(), out.filePath(u"calllist.png"_s));
        list->hide();
    }

    // The online monitor after a few samples of the simulated router's moving figures.
    tray.trafficSampler().setInterval(250);
    TrafficWindow& traffic = tray.trafficWindow();
    traffic.move(40, 40);
    tray.openTrafficWindow();
    QTest::qWait(4000);
    ok &= save(traffic.grab(), out.filePath(u"traffic.png"_s));
    traffic.close();

    // The answering machine's messages and the faxes.
    VoicemailWindow& voicemail = tray.voicemailWindow();
    voicemail.move(40, 40);
    tray.openVoicemail();
    ok &= QTest::qWaitFor([&] { return !voicemail.isLoading(); }, 15000);
    QTest::qWait(400);
    ok &= save(voicemail.grab(), out.filePath(u"voicemail.png"_s));
    voicemail.close();

    // The router's phone book.
    tray.openPhonebook();
    PhonebookWindow& phonebook = tray.phonebookWindow();
    phonebook.move(40, 40);
    ok &= QTest::qWaitFor(
        [&] { return !phonebook.isBusy() && phonebook.contactList()->topLevelItemCount() > 0; }, 10000);
    QTest::qWait(300);
    ok &= save(phonebook.grab(), out.filePath(u"phonebook.png"_s));
    phonebook.close();

    // The settings of the location, on the telephony page.
    tray.openSettings();
    if (SettingsWindow* settings = tray.settingsWindow()) {
        settings->move(40, 40);
        if (auto* tabs = settings->findChild<QTabWidget*>())
            tabs->setCurrentIndex(1);
        QTest::qWait(400);
        ok &= save(settings->grab(), out.filePath(u"settings.png"_s));
        settings->close();
    }

    // The setup assistant's first step with the router it found.
    SetupWizard wizard(*env.env);
    wizard.setDiscoveryTarget(u"127.0.0.1:%1"_s.arg(sim.port(u"ssdp"_s)));
    wizard.discovery().setCompletionInterval(800);
    wizard.move(40, 40);
    wizard.show();
    QTest::qWait(1500);
    ok &= save(wizard.grab(), out.filePath(u"setup.png"_s));
    wizard.hide();
    return ok ? 0 : 1;
}

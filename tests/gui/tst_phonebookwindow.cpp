// The router's phone book window against the simulated router: listed, a contact added, an
// address-book group sent in its place; a refused login leaves a line and a usable window.
#include "GuiFixture.h"

#include "TrayApplication.h"
#include "TrayMenu.h"
#include "phonebook/PhonebookContactDialog.h"
#include "phonebook/PhonebookWindow.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
QStringList names(const PhonebookWindow& window)
{
    QStringList out;
    for (int i = 0; i < window.contactList()->topLevelItemCount(); ++i)
        out << window.contactList()->topLevelItem(i)->text(0);
    return out;
}

struct BookRig : GuiTray
{
    SimulatorProcess sim;

    bool start(const QString& password)
    {
        return startOnRouter(sim, {{u"CallMonitor"_s, false}}, {{u"AddressBook"_s, GuiEnv::addressBook()}},
                             password);
    }
};
} // namespace

class TestPhonebookWindow : public QObject
{
    Q_OBJECT
private slots:
    void contactNeedsNameAndNumber_data();
    void contactNeedsNameAndNumber();
    void listAddAndSendGroup();
    void refusedLogin();
};

void TestPhonebookWindow::contactNeedsNameAndNumber_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("mobile");
    QTest::addColumn<bool>("canSave");
    QTest::newRow("name and number") << u"Oma"_s << u"0171 123456"_s << true;
    QTest::newRow("no number") << u"Oma"_s << QString() << false;
    QTest::newRow("blank name") << u"  "_s << u"0171"_s << false;
    QTest::newRow("letters are no number") << u"Oma"_s << u"abc"_s << false;
}

void TestPhonebookWindow::contactNeedsNameAndNumber()
{
    QFETCH(QString, name);
    QFETCH(QString, mobile);
    QFETCH(bool, canSave);
    PhonebookContactDialog dialog;
    QTest::keyClicks(dialog.nameField(), name);
    QTest::keyClicks(dialog.mobileField(), mobile);
    QCOMPARE(dialog.canSave(), canSave);
}

void TestPhonebookWindow::listAddAndSendGroup()
{
    BookRig rig;
    QVERIFY(rig.start(u"secret"_s));
    rig.tray->menu().phonebookItem()->trigger();
    PhonebookWindow& window = rig.tray->phonebookWindow();
    QVERIFY(window.isVisible());
    QTRY_COMPARE_WITH_TIMEOUT(names(window), (QStringList{u"A. Muster"_s, u"Bäckerei Krüger"_s}), 10000);
    QVERIFY(window.contactList()->topLevelItem(0)->text(1).contains(u"07216080"_s));

    BoxContactEntry oma;
    oma.name = u"Oma Erna"_s;
    oma.mobile = u"0171 5551234"_s;
    window.addContact(oma);
    QTRY_VERIFY_WITH_TIMEOUT(!window.isBusy(), 10000);
    QVERIFY2(names(window).contains(u"Oma Erna"_s), qPrintable(window.statusText()));
    QCOMPARE(names(window).size(), 3);

    // The address book's groups are offered; sending one replaces the router's book.
    QVERIFY(window.findChild<QComboBox*>(u"groups"_s)->findText(u"Lieferanten"_s) >= 0);
    QString askedFor;
    window.setConfirmReplace([&](const QString& group, int contacts) {
        askedFor = u"%1:%2"_s.arg(group).arg(contacts);
        return true;
    });
    window.sendGroup(u"Lieferanten"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!window.isBusy(), 10000);
    QCOMPARE(askedFor, u"Lieferanten:2"_s);
    const QStringList after = names(window);
    QVERIFY2(!after.contains(u"Oma Erna"_s) && after.join(u'|').contains(u"Stadtwerke"_s),
             qPrintable(after.join(u'|')));
}

void TestPhonebookWindow::refusedLogin()
{
    BookRig rig;
    QVERIFY(rig.start(u"wrong"_s));
    PhonebookWindow& window = rig.tray->phonebookWindow();
    rig.tray->openPhonebook();
    QTRY_VERIFY_WITH_TIMEOUT(!window.isBusy() && !window.statusText().isEmpty(), 10000);
    QVERIFY2(window.statusText().contains(u"password"_s), qPrintable(window.statusText()));
    QCOMPARE(window.contactList()->topLevelItemCount(), 0);
    // Nothing is sent after a refused login, and the window takes the next request.
    window.setConfirmReplace([](const QString&, int) { return true; });
    window.sendGroup(u"Nachbarn"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!window.isBusy(), 10000);
    QVERIFY2(window.statusText().contains(u"password"_s), qPrintable(window.statusText()));
}

QTEST_MAIN(TestPhonebookWindow)
#include "tst_phonebookwindow.moc"

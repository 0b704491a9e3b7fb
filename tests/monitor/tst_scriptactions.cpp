#include "monitor/ScriptActions.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestScriptActions : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath(u"scripts"_s); // made on first save
        const QVariantList actions{QVariantMap{{u"Name"_s, u"Pause music"_s},
                                               {u"States"_s, QVariantList{true, false, false, true}},
                                               {u"Params"_s, QStringList{u"Spotify"_s, u"ä ö ü"_s}},
                                               {u"Version"_s, 3}},
                                   QVariantMap{{u"Name"_s, u"Log calls"_s}, {u"Volume"_s, 0.5}}};
        QVERIFY(methods::saveScriptActions(actions, dir));
        QFile f(QDir(dir).filePath(u"ScriptActions.plist"_s));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.readAll().startsWith("<?xml"));

        const QVariantList loaded = methods::loadOldScriptActions(dir);
        QCOMPARE(loaded.size(), 2);
        const QVariantMap first = loaded.at(0).toMap();
        QCOMPARE(first.value(u"Name"_s).toString(), u"Pause music"_s);
        QCOMPARE(first.value(u"States"_s).toList(), (QVariantList{true, false, false, true}));
        QCOMPARE(first.value(u"Params"_s).toStringList(), (QStringList{u"Spotify"_s, u"ä ö ü"_s}));
        QCOMPARE(first.value(u"Version"_s).toInt(), 3);
        QCOMPARE(loaded.at(1).toMap().value(u"Volume"_s).toDouble(), 0.5);
    }

    void unreadableFilesGiveAnEmptyList_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing file") << QByteArray();
        QTest::newRow("not a property list") << QByteArray("ScriptActions = (1, 2)");
        QTest::newRow("list at the top instead of a dictionary") << QByteArray(
            "<?xml version=\"1.0\"?><plist version=\"1.0\"><array><string>x</string></array></plist>");
        QTest::newRow("dictionary without the key") << QByteArray(
            "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>Other</key><true/></dict></plist>");
    }
    void unreadableFilesGiveAnEmptyList()
    {
        QFETCH(QByteArray, content);
        QTemporaryDir tmp;
        if (!content.isEmpty()) {
            QFile f(tmp.filePath(u"ScriptActions.plist"_s));
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(content);
        }
        QVERIFY(methods::loadOldScriptActions(tmp.path()).isEmpty());
        QVERIFY(methods::loadNewScriptActions(tmp.path()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestScriptActions)
#include "tst_scriptactions.moc"

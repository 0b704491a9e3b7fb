#include "base/Localization.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTest>

class TestLocalization : public QObject
{
    Q_OBJECT
private slots:
    void englishByDefault();
    void everyKeyHasAGermanText();
    void unknownKeyFallsBackToTheKey();
};

void TestLocalization::englishByDefault()
{
    QVERIFY(Localization::install(QLocale::c()));
    QCOMPARE(Localization::localized(QStringLiteral("Error")), QStringLiteral("Error"));
    const QString block =
        Localization::localizedFormat(QStringLiteral("errorBlockTime"), QStringLiteral("32"));
    QVERIFY2(block.contains(QStringLiteral("32")), qPrintable(block));
}

void TestLocalization::everyKeyHasAGermanText()
{
    QVERIFY(Localization::install(QLocale(QLocale::German, QLocale::Germany)));
    static const QRegularExpression placeholder(QStringLiteral("%\\d"));
    // Words that are the same in both languages.
    const QStringList same{
        QStringLiteral("iPhone"), QStringLiteral("Fax"),          QStringLiteral("Name"),
        QStringLiteral("Pager"),  QStringLiteral("Home"),         QStringLiteral("Internet"),
        QStringLiteral("Normal"), QStringLiteral("Label_Single"), QStringLiteral("Label_Short_Single")};
    QStringList untranslated;
    for (const QString& key : Localization::allKeys()) {
        const QString english = Localization::englishText(key);
        const QString german = Localization::localized(key);
        QVERIFY2(!german.isEmpty(), qPrintable(key));
        if (german == english && !same.contains(english) && !same.contains(key))
            untranslated << key;
        QCOMPARE(german.count(placeholder), english.count(placeholder));
    }
    QVERIFY2(untranslated.isEmpty(), qPrintable(untranslated.join(u", ")));
    QCOMPARE(Localization::localized(QStringLiteral("Error")), QStringLiteral("Fehler"));
    QVERIFY(Localization::install(QLocale::c()));
}

void TestLocalization::unknownKeyFallsBackToTheKey()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Missing localisation key")));
    QCOMPARE(Localization::localized(QStringLiteral("noSuchKey")), QStringLiteral("noSuchKey"));
}

QTEST_GUILESS_MAIN(TestLocalization)
#include "tst_localization.moc"

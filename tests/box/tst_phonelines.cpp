#include "box/FBBoxPhoneHelper.h"

#include <QTest>
#include <QVariantMap>

using namespace FBBoxPhoneHelper;

namespace {
QStringList extensionAnswer(const QString& port3, const QString& dectIntern)
{
    QStringList v{QStringLiteral("Küche"), QStringLiteral("Fax"), port3};
    for (int i = 0; i < 8; ++i)
        v << (i == 0 ? QStringLiteral("ISDN-Telefon") : QStringLiteral("er"));
    v << QStringLiteral("Mobilteil 1") << dectIntern;
    for (int i = 1; i < 6; ++i)
        v << QStringLiteral("er") << QStringLiteral("er");
    return v;
}

QStringList interns(const QVariantList& list)
{
    QStringList r;
    for (const QVariant& e : list)
        r << e.toMap().value(QStringLiteral("Intern")).toString();
    return r;
}
} // namespace

class TestPhoneLines : public QObject
{
    Q_OBJECT
private slots:
    void extensions_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QStringList>("interns");
        QTest::newRow("two named analogue ports and a handset")
            << extensionAnswer(QString(), QStringLiteral("610"))
            << QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("50"),
                           QStringLiteral("51"), QStringLiteral("610")};
        QTest::newRow("handset without internal number is skipped")
            << extensionAnswer(QStringLiteral("Flur"), QStringLiteral("er"))
            << QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                           QStringLiteral("50"), QStringLiteral("51")};
        QTest::newRow("answer too short") << QStringList{QStringLiteral("a")} << QStringList();
    }
    void extensions()
    {
        QFETCH(QStringList, values);
        QFETCH(QStringList, interns);
        QCOMPARE(::interns(extensionsFromValues(values)), interns);
    }

    void extensionMergeKeepsShowAndDropsVanished()
    {
        const QVariantList existing{
            QVariantMap{{QStringLiteral("Intern"), QStringLiteral("2")}, {QStringLiteral("Show"), false}},
            QVariantMap{{QStringLiteral("Intern"), QStringLiteral("611")}, {QStringLiteral("Show"), true}}};
        const QVariantList merged = mergeExtensions(
            existing, extensionsFromValues(extensionAnswer(QString(), QStringLiteral("610"))));
        QCOMPARE(interns(merged), (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("50"),
                                               QStringLiteral("51"), QStringLiteral("610")}));
        QCOMPARE(merged[1].toMap().value(QStringLiteral("Show")).toBool(), false);
        QCOMPARE(merged[0].toMap().value(QStringLiteral("Show")).toBool(), true);
    }

    void linesKeepTheUsersMarksAndOrder()
    {
        QStringList values(43, QString());
        values[0] = QStringLiteral("5551234");
        values[1] = QStringLiteral("er");
        values[10] = QStringLiteral("5550000");
        values[11] = QStringLiteral("5559876");
        values[13] = QStringLiteral("5559999");
        const QVariantList fresh = linesFromValues(values);
        QCOMPARE(fresh.size(), 4);
        QCOMPARE(fresh[3].toMap().value(QStringLiteral("Title")).toString(), QStringLiteral("SIP2"));

        const QVariantList existing{QVariantMap{{QStringLiteral("Line"), QStringLiteral("old")},
                                                {QStringLiteral("Title"), QStringLiteral("Old")}},
                                    QVariantMap{{QStringLiteral("Line"), QStringLiteral("5559876")},
                                                {QStringLiteral("Title"), QStringLiteral("Mine")},
                                                {QStringLiteral("HideList"), true},
                                                {QStringLiteral("HideMonitor"), false}}};
        const QVariantList merged = mergeLines(existing, fresh);
        QCOMPARE(merged.size(), 5);
        QCOMPARE(merged[0].toMap().value(QStringLiteral("Line")).toString(), QStringLiteral("old"));
        const QVariantMap kept = merged[1].toMap();
        QCOMPARE(kept.value(QStringLiteral("Line")).toString(), QStringLiteral("5559876"));
        QCOMPARE(kept.value(QStringLiteral("Title")).toString(), QStringLiteral("SIP1"));
        QCOMPARE(kept.value(QStringLiteral("HideList")).toBool(), true);
        QCOMPARE(merged[2].toMap().value(QStringLiteral("Line")).toString(), QStringLiteral("5551234"));
    }

    void faxLineTitleComesFromTheRouter()
    {
        const QVariantList existing{QVariantMap{{QStringLiteral("Line"), QStringLiteral("5551235")},
                                                {QStringLiteral("Title"), QStringLiteral("Mein Fax")}}};
        QStringList values(10, QString());
        values[0] = QStringLiteral("5551235");
        values[1] = QStringLiteral("5551236");
        const QVariantList merged = mergeFaxLines(existing, faxLinesFromValues(values));
        QCOMPARE(merged.size(), 2);
        QCOMPARE(merged[0].toMap().value(QStringLiteral("Title")).toString(), QStringLiteral("5551235"));
        QCOMPARE(mergeFaxLines({}, faxLinesFromValues(values)).size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestPhoneLines)
#include "tst_phonelines.moc"

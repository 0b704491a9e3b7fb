// Every text the windows show has a German translation: the shipped catalog is compared with a
// fresh scan of the window sources, so a new tr() text without German fails here.
#include "base/Localization.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {
struct Message
{
    QString context;
    QString source;
    QString translation;
    bool finished = false;
};

QList<Message> readCatalog(const QString& path)
{
    QList<Message> out;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return out;
    QXmlStreamReader xml(&file);
    QString context;
    Message current;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"message") {
            current = Message{context, {}, {}, false};
        } else if (xml.name() == u"source") {
            current.source = xml.readElementText();
        } else if (xml.name() == u"translation") {
            current.finished = xml.attributes().value(u"type"_s).isEmpty();
            current.translation = xml.readElementText();
            out.append(current);
        }
    }
    return out;
}
} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT
private slots:
    void everyWindowTextHasGerman();
    void germanCatalogIsShipped();
};

void TestTranslations::everyWindowTextHasGerman()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString scanned = dir.filePath(u"scan_de.ts"_s);
    QVERIFY(QFile::copy(QStringLiteral(TONDREL_GUI_TS_FILE), scanned));
    QFile::setPermissions(scanned, QFile::ReadOwner | QFile::WriteOwner);
    QProcess lupdate;
    lupdate.start(QStringLiteral(TONDREL_LUPDATE_PATH),
                  {u"-silent"_s, u"-no-obsolete"_s, u"-locations"_s, u"none"_s,
                   QStringLiteral(TONDREL_GUI_SOURCE_DIR), u"-ts"_s, scanned});
    QVERIFY(lupdate.waitForFinished(120000));
    QCOMPARE(lupdate.exitCode(), 0);

    static const QRegularExpression placeholder(u"%\\d"_s);
    QStringList missing;
    const QList<Message> messages = readCatalog(scanned);
    QVERIFY(messages.size() > 50);
    for (const Message& m : messages) {
        if (!m.finished || m.translation.isEmpty())
            missing << m.context + u'|' + m.source;
        else
            QVERIFY2(m.translation.count(placeholder) == m.source.count(placeholder), qPrintable(m.source));
    }
    QVERIFY2(missing.isEmpty(),
             qPrintable(u"no German text (update translations/tondrel_gui_de.ts): "_s + missing.join(u", ")));
}

void TestTranslations::germanCatalogIsShipped()
{
    QVERIFY(Localization::install(QLocale(QLocale::German, QLocale::Germany), u"tondrel_gui"_s));
    QCOMPARE(QCoreApplication::translate("TrayMenu", "Quit Tondrel"), u"Tondrel beenden"_s);
    QVERIFY(Localization::install(QLocale::c(), u"tondrel_gui"_s));
    QCOMPARE(QCoreApplication::translate("TrayMenu", "Quit Tondrel"), u"Quit Tondrel"_s);
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"

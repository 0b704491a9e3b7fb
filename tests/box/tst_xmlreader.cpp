#include "box/FASOAPConnection.h"
#include "box/XMLReader.h"

#include <QFile>
#include <QTest>

class TestXmlReader : public QObject
{
    Q_OBJECT
private slots:
    void nestedDictionariesKeepPrefixes()
    {
        const QVariantMap doc = XMLReader::dictionaryForXMLString(QStringLiteral(
            "<?xml version=\"1.0\"?><s:Envelope "
            "xmlns:s=\"http://schemas.xmlsoap.org/soap/envelope/\"><s:Body>"
            "<u:GetPhonebookListResponse xmlns:u=\"urn:dslforum-org:service:X_AVM-DE_OnTel:1\">"
            "<NewPhonebookList>0,1</NewPhonebookList><Item>a</Item><Item>b</Item>"
            "</u:GetPhonebookListResponse></s:Body></s:Envelope>"));
        const QVariantMap response = doc.value(QStringLiteral("s:Envelope"))
                                         .toMap()
                                         .value(QStringLiteral("s:Body"))
                                         .toMap()
                                         .value(QStringLiteral("u:GetPhonebookListResponse"))
                                         .toMap();
        QCOMPARE(response.value(QStringLiteral("NewPhonebookList")).toString(), QStringLiteral("0,1"));
        QCOMPARE(response.value(QStringLiteral("Item")).toList(),
                 (QVariantList{QStringLiteral("a"), QStringLiteral("b")}));
    }

    void answers_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("valid");
        QTest::newRow("response element")
            << QStringLiteral("<s:Envelope xmlns:s=\"x\"><s:Body><u:GetInfoResponse "
                              "xmlns:u=\"y\"><A>1</A></u:GetInfoResponse></s:Body></s:Envelope>")
            << true;
        QTest::newRow("router error page") << QStringLiteral("<html><body>404</body></html>") << false;
        // Used to overflow the stack, one recursion per level.
        QTest::newRow("100,000 nested elements")
            << QStringLiteral("<s:Envelope xmlns:s=\"x\"><s:Body><u:GetInfoResponse xmlns:u=\"y\">") +
                   QStringLiteral("<A>").repeated(100000) + QStringLiteral("</A>").repeated(100000) +
                   QStringLiteral("</u:GetInfoResponse></s:Body></s:Envelope>")
            << false;
        QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/box/getinfo_response_unclosed_devicelog.xml"));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QTest::newRow("device log element never closed") << QString::fromUtf8(f.readAll()) << false;
    }
    void answers()
    {
        QFETCH(QString, answer);
        QFETCH(bool, valid);
        QCOMPARE(FASOAPConnection::responseFor(QStringLiteral("GetInfo"), answer).isValid(), valid);
    }

    void contactServiceEnvelope()
    {
        const QString body = QString::fromUtf8(FASOAPConnection::envelope(
            QStringLiteral("GetPhonebook"), {{QStringLiteral("NewPhonebookID"), QStringLiteral("0")},
                                             {QStringLiteral("NewX"), QStringLiteral("a&b")}}));
        QVERIFY(body.contains(
            QStringLiteral("<u:GetPhonebook xmlns:u=\"urn:X_AVM-DE_OnTel-com:serviceId:X_AVM-DE_OnTel1\">\n"
                           "<NewPhonebookID>0</NewPhonebookID>\n<NewX>a&amp;b</NewX>\n</u:GetPhonebook>")));
        QString error;
        QVERIFY(!XMLReader::dictionaryForXMLString(body, &error).isEmpty());
        QVERIFY(error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestXmlReader)
#include "tst_xmlreader.moc"

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/StringAdditions.h"
#include "contacts/FBReverseSearch.h"
#include "contacts/HtmlText.h"
#include "contacts/HttpTransport.h"
#include "contacts/ReverseLookup.h"
#include "contacts/ReverseSearchDefinitions.h"

#include "DirectoryServer.h"
#include "MemoryCallerCache.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
const Prefixis berlin(QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s});

struct Def
{
    QString key, prefix, url, data, method, match;
};

QString xmlEscaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QByteArray definitionsPlist(const QList<Def>& defs)
{
    QString xml =
        u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>ReverseSearch</key><dict>"_s;
    for (const Def& d : defs) {
        xml += u"<key>%1</key><dict>"_s.arg(d.key);
        const QList<std::pair<QString, QString>> fields = {{u"prefix"_s, d.prefix},
                                                           {u"url"_s, d.url},
                                                           {u"data"_s, d.data},
                                                           {u"method"_s, d.method},
                                                           {u"match"_s, d.match}};
        for (const auto& [name, value] : fields)
            if (!value.isNull())
                xml += u"<key>%1</key><string>%2</string>"_s.arg(name, xmlEscaped(value));
        xml += u"</dict>"_s;
    }
    xml += u"</dict></dict></plist>\n"_s;
    return xml.toUtf8();
}

// A binary property list of arrays, each holding the next one: depth levels.
QByteArray nestedBinaryPlist(quint32 depth)
{
    QByteArray objects;
    QList<quint32> offsets;
    for (quint32 i = 0; i < depth; ++i) {
        offsets << quint32(8 + objects.size());
        if (i + 1 == depth) {
            objects += char(0xA0); // empty array
        } else {
            objects += char(0xA1); // array of one, then its 4-byte object reference
            const quint32 next = qToBigEndian(i + 1);
            objects += QByteArray(reinterpret_cast<const char*>(&next), 4);
        }
    }
    QByteArray out = "bplist00" + objects;
    const quint64 tableAt = quint64(out.size());
    for (quint32 offset : offsets) {
        const quint32 be = qToBigEndian(offset);
        out += QByteArray(reinterpret_cast<const char*>(&be), 4);
    }
    out += QByteArray(6, '\0');
    out += char(4); // offset size
    out += char(4); // object reference size
    for (quint64 field : {quint64(depth), quint64(0), tableAt}) {
        const quint64 be = qToBigEndian(field);
        out += QByteArray(reinterpret_cast<const char*>(&be), 8);
    }
    return out;
}

const QString namePattern = u"(?s)<span class=\"name\">(.*?)</span>"_s;

void writeFile(const QString& path, const QByteArray& content, QFileDevice::Permissions perms = {})
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(content);
    f.close();
    if (perms)
        QVERIFY(f.setPermissions(perms));
}
} // namespace

class TestReverseLookup : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void queryChoice_data();
    void queryChoice();
    void postLookupEndToEnd();
    void getDefinitionOfTheCallersCountry();
    void unknownCountryAsksNobody();
    void pageWithoutAName_data();
    void pageWithoutAName();
    void shippedDefinitionsUnlessDownloaded();
    void badDefinitionsFileFallsBack_data();
    void badDefinitionsFileFallsBack();
    void customScript_data();
    void customScript();
    void customQueryWithLabel();
    void update_data();
    void update();
    void backgroundLookupReportsOnMainThread();
    void textHelpers_data();
    void textHelpers();

private:
    NotificationCenter m_center;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<SettingsStore> m_settings;
    std::unique_ptr<DirectoryServer> m_server;
    std::unique_ptr<MemoryCallerCache> m_cache;
    std::unique_ptr<ManualClock> m_clock;
    CurlHttpTransport m_http;

    QString dataDir() const { return m_dir->filePath(u"data"_s); }
    void installDefinitions(const QList<Def>& defs)
    {
        QDir().mkpath(dataDir());
        writeFile(QDir(dataDir()).filePath(ReverseSearchDefinitions::FileName), definitionsPlist(defs));
    }
    std::unique_ptr<FBReverseSearch> makeSearch()
    {
        auto search =
            std::make_unique<FBReverseSearch>(dataDir(), *m_settings, m_http, m_cache.get(), *m_clock);
        search->setTimeoutMs(2000);
        return search;
    }
};

void TestReverseLookup::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<SettingsStore>(m_dir->filePath(u"settings.json"_s));
    m_server = std::make_unique<DirectoryServer>();
    m_server->startServing();
    m_cache = std::make_unique<MemoryCallerCache>();
    m_clock = std::make_unique<ManualClock>(QDateTime(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC));
}

void TestReverseLookup::cleanup()
{
    m_server.reset();
}

void TestReverseLookup::queryChoice_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("query");
    QTest::newRow("austrian number, own prefix") << u"00431234"_s << u"0043"_s << u"01234"_s;
    QTest::newRow("local number gets own area") << u"1234"_s << u"0049"_s << u"0301234"_s;
    QTest::newRow("national number as it is") << u"0891234"_s << u"0049"_s << u"0891234"_s;
    QTest::newRow("international own country") << u"0049301234"_s << u"0049"_s << u"0301234"_s;
    QTest::newRow("first key in file order wins") << u"0041441234"_s << u"0041"_s << u"9441234"_s;
    QTest::newRow("no definition for the country") << u"0033123"_s << QString() << QString();
}

void TestReverseLookup::queryChoice()
{
    QFETCH(QString, number);
    QFETCH(QString, key);
    QFETCH(QString, query);
    // 0041 before 00414 on purpose: the file's order decides, not the longest key.
    const auto defs = ReverseSearchDefinitions::fromPlist(definitionsPlist({
        {u"0049"_s, u"0"_s, u"u"_s, u"d"_s, u"POST"_s, namePattern},
        {u"0043"_s, u"0"_s, u"u"_s, u"d"_s, u"POST"_s, namePattern},
        {u"0041"_s, u"9"_s, u"u"_s, u"d"_s, u"POST"_s, namePattern},
        {u"00414"_s, u"0"_s, u"u"_s, u"d"_s, u"POST"_s, namePattern},
    }));
    QVERIFY(defs);
    const auto q = FBReverseSearch::queryFor(number, berlin, *defs);
    QCOMPARE(q.key, key);
    QCOMPARE(q.number, query);
}

void TestReverseLookup::postLookupEndToEnd()
{
    m_server->setPage("/inverse", u"<html><body><div class=\"hit\"><span class=\"name\"><b>M&uuml;ller &amp; "
                                  u"S&ouml;hne</b>\n GmbH</span></div></body></html>"_s.toUtf8());
    installDefinitions({{u"0049"_s, u"0"_s, m_server->url("/inverse"), u"ph=##NUMBER##&kind=inv"_s, QString(),
                         namePattern}});
    const QString name = makeSearch()->reverseSearch(u"1234"_s, berlin);
    QCOMPARE(name, u"Müller & Söhne GmbH"_s);

    const auto requests = m_server->requests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.at(0).method, QByteArray("POST")); // no method in the definition
    QCOMPARE(requests.at(0).target, QByteArray("/inverse"));
    QCOMPARE(requests.at(0).body, QByteArray("ph=0301234&kind=inv"));
    QCOMPARE(requests.at(0).headers.value("content-type"), QByteArray("application/x-www-form-urlencoded"));
    QCOMPARE(requests.at(0).headers.value("user-agent"), FBReverseSearch::UserAgent);
    // Cached under the number as asked, without id or label.
    QCOMPARE(m_cache->rows.value(u"1234"_s), (QStringList{QString(), u"Müller & Söhne GmbH"_s, QString()}));
}

void TestReverseLookup::getDefinitionOfTheCallersCountry()
{
    m_server->setPage("/at", "<span class=\"name\">Huber Alois</span>");
    installDefinitions(
        {{u"0049"_s, u"0"_s, m_server->url("/de"), u"ph=##NUMBER##"_s, QString(), namePattern},
         {u"0043"_s, u"0"_s, m_server->url("/at"), u"what=##NUMBER##"_s, u"GET"_s, namePattern}});
    QCOMPARE(makeSearch()->reverseSearch(u"00431234"_s, berlin), u"Huber Alois"_s);
    const auto requests = m_server->requests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.at(0).method, QByteArray("GET"));
    QCOMPARE(requests.at(0).target, QByteArray("/at?what=01234"));
    QVERIFY(requests.at(0).body.isEmpty());
}

void TestReverseLookup::unknownCountryAsksNobody()
{
    installDefinitions(
        {{u"0049"_s, u"0"_s, m_server->url("/de"), u"ph=##NUMBER##"_s, QString(), namePattern}});
    QCOMPARE(makeSearch()->reverseSearch(u"0033123456"_s, berlin), QString());
    // Own country without a definition: nothing to ask either.
    QCOMPARE(
        makeSearch()->reverseSearch(u"0301234"_s, Prefixis(QStringList{u"00"_s, u"41"_s, u"0"_s, u"44"_s})),
        QString());
    QVERIFY(m_server->requests().isEmpty());
}

void TestReverseLookup::pageWithoutAName_data()
{
    QTest::addColumn<QByteArray>("page"); // empty: the page never answers
    QTest::addColumn<QString>("pattern");
    QTest::newRow("never answers") << QByteArray() << namePattern;
    QTest::newRow("no hit") << QByteArray("<html><p>Kein Treffer</p></html>") << namePattern;
    // Nested quantifiers against a long word that fails at its end: exponential backtracking.
    QTest::newRow("hostile pattern") << QByteArray(20000, 'a') + '!' << u"^(\\w+\\s?)*$"_s;
    // Fails slowly at every start position but within PCRE2's per-position match limit (about
    // 20 s of CPU before the name at the end is reached): the lookup's time budget ends it first.
    QTest::newRow("look-ahead at every position")
        << (QByteArray(24, 'a') + '!').repeated(2600) + "<span class=\"name\">Too Late</span>"
        << u"<span class=\"name\">(.*?)</span>|(?=(?:a|aa)*b)"_s;
}

void TestReverseLookup::pageWithoutAName()
{
    QFETCH(QByteArray, page);
    QFETCH(QString, pattern);
    if (page.isEmpty())
        m_server->setHanging("/de");
    else
        m_server->setPage("/de", page);
    installDefinitions({{u"0049"_s, u"0"_s, m_server->url("/de"), u"ph=##NUMBER##"_s, QString(), pattern}});
    auto search = makeSearch();
    search->setTimeoutMs(300);
    QCOMPARE(search->reverseSearch(u"0301234"_s, berlin), QString());
    QCOMPARE(m_server->requests().size(), 1);
    QVERIFY(m_cache->rows.isEmpty());
}

void TestReverseLookup::shippedDefinitionsUnlessDownloaded()
{
    const auto shipped = ReverseSearchDefinitions::load(dataDir());
    QVERIFY(shipped);
    QVERIFY(shipped->find(u"0049"_s));
    QVERIFY(shipped->find(u"0043"_s));
    for (const auto& def : shipped->definitions()) {
        QVERIFY2(def.url.startsWith(u"https://"), qPrintable(def.key));
        QVERIFY(def.data.contains(u"##NUMBER##"));
        QVERIFY(QRegularExpression(def.match).isValid());
        QCOMPARE(QRegularExpression(def.match).captureCount(), 1);
    }
    installDefinitions({{u"0099"_s, u"0"_s, u"u"_s, u"d"_s, QString(), namePattern}});
    const auto downloaded = ReverseSearchDefinitions::load(dataDir());
    QCOMPARE(downloaded->definitions().size(), 1);
    QCOMPARE(downloaded->definitions().at(0).key, u"0099"_s);
}

void TestReverseLookup::badDefinitionsFileFallsBack_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray good = definitionsPlist({{u"0099"_s, u"0"_s, u"u"_s, u"d"_s, QString(), namePattern}});
    QTest::newRow("damaged download") << QByteArray("<plist><dict>");
    // Each of these crashed libplist (an assertion, a stack overflow).
    QTest::newRow("NUL byte in a string")
        << QByteArray(good).replace("<string>d</string>", QByteArray("<string>d\0x</string>", 19));
    QTest::newRow("NUL character reference")
        << QByteArray(good).replace("<string>d</string>", "<string>d&#0;x</string>");
    QTest::newRow("binary, 100,000 levels deep") << nestedBinaryPlist(100000);
    QTest::newRow("XML, 100,000 levels deep") << QByteArray(good).replace(
        "<string>d</string>", "<array>" + QByteArray("<array>").repeated(100000) +
                                  QByteArray("</array>").repeated(100000) + "</array>");
    QTest::newRow("oversized") << QByteArray(good).replace(
        "<string>d</string>", "<string>" + QByteArray(2 * 1024 * 1024, 'd') + "</string>");
}

void TestReverseLookup::badDefinitionsFileFallsBack()
{
    QFETCH(QByteArray, file);
    QString why;
    QVERIFY(!ReverseSearchDefinitions::fromPlist(file, &why));
    QVERIFY(!why.isEmpty());
    QDir().mkpath(dataDir());
    writeFile(QDir(dataDir()).filePath(ReverseSearchDefinitions::FileName), file);
    const auto loaded = ReverseSearchDefinitions::load(dataDir());
    QVERIFY(loaded);
    QVERIFY(loaded->find(u"0049"_s)); // the shipped ones
    QVERIFY(!loaded->find(u"0099"_s));
}

void TestReverseLookup::customScript_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("webRequests");
    QTest::newRow("name and label") << QByteArray("echo 'Meier||##||Mobil'") << u"Meier"_s << u"Mobil"_s << 0;
    QTest::newRow("name only") << QByteArray("echo Meier") << u"Meier"_s << QString() << 0;
    QTest::newRow("number reaches the script")
        << QByteArray("echo \"Nr $1\"") << u"Nr 0301234"_s << QString() << 0;
    QTest::newRow("empty output falls back to the web")
        << QByteArray("true") << u"Web Name"_s << QString() << 1;
}

void TestReverseLookup::customScript()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, name);
    QFETCH(QString, label);
    QFETCH(int, webRequests);
    const QString scripts = m_dir->filePath(u"scripts"_s);
    QDir().mkpath(scripts);
    writeFile(QDir(scripts).filePath(u"lookup"_s), "#!/bin/sh\n" + script + "\n",
              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    m_settings->setValue(keys::ReverseSearchCustom,
                         QVariantMap{{u"useScript"_s, true}, {u"script"_s, u"lookup"_s}});
    m_server->setPage("/de", "<span class=\"name\">Web Name</span>");
    installDefinitions(
        {{u"0049"_s, u"0"_s, m_server->url("/de"), u"ph=##NUMBER##"_s, QString(), namePattern}});
    auto search = makeSearch();
    ReverseLookup lookup(*search, *m_settings, m_http, m_center,
                         ReverseLookup::scriptRunnerForFolder(scripts, 5000));
    const ReverseSearchResult result = lookup.reverseSearchMain(u"0301234 (alt)"_s, berlin);
    QCOMPARE(result.name, name);
    QCOMPARE(result.label, label);
    QCOMPARE(m_server->requests().size(), webRequests);
}

void TestReverseLookup::customQueryWithLabel()
{
    m_server->setPage("/custom", "<td class=n>Schulz &amp; Co</td><td class=l>Gesch&auml;ft</td>");
    m_settings->setValue(keys::ReverseSearchCustom,
                         QVariantMap{{u"useURL"_s, true},
                                     {u"url"_s, m_server->url("/custom")},
                                     {u"data"_s, u"nummer=##NUMBER##"_s},
                                     {u"matchName"_s, u"<td class=n>(.*?)</td>"_s},
                                     {u"matchLabel"_s, u"<td class=l>(.*?)</td>"_s}});
    auto search = makeSearch();
    ReverseLookup lookup(*search, *m_settings, m_http, m_center, {});
    lookup.setTimeoutMs(2000);
    const ReverseSearchResult result = lookup.reverseSearchMain(u"+49301234"_s, berlin);
    QCOMPARE(result.name, u"Schulz & Co"_s);
    QCOMPARE(result.label, u"Geschäft"_s);
    const auto requests = m_server->requests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.at(0).method, QByteArray("POST"));
    QCOMPARE(requests.at(0).body, QByteArray("nummer=+49301234")); // as given, not encoded
}

void TestReverseLookup::update_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("lastUpdateAgo"); // seconds, -1: never
    QTest::addColumn<QString>("storedVersion");
    QTest::addColumn<QByteArray>("served"); // "" serves nothing (404)
    QTest::addColumn<bool>("downloaded");
    const QByteArray good =
        definitionsPlist({{u"0049"_s, u"0"_s, u"https://new"_s, u"d"_s, QString(), namePattern}});
    const QString version = QStringLiteral(TONDREL_VERSION);
    QTest::newRow("switched off") << false << -1 << version << good << false;
    QTest::newRow("never downloaded") << true << -1 << version << good << true;
    QTest::newRow("fresh enough") << true << 3600 << version << good << false;
    QTest::newRow("interval passed") << true << 90000 << version << good << true;
    QTest::newRow("new application version") << true << 3600 << u"0.0.1"_s << good << true;
    QTest::newRow("broken download keeps the old file")
        << true << 90000 << version << QByteArray("<html>oops") << false;
    QTest::newRow("missing download keeps the old file") << true << 90000 << version << QByteArray() << false;
}

void TestReverseLookup::update()
{
    QFETCH(bool, enabled);
    QFETCH(int, lastUpdateAgo);
    QFETCH(QString, storedVersion);
    QFETCH(QByteArray, served);
    QFETCH(bool, downloaded);
    const QByteArray old =
        definitionsPlist({{u"0049"_s, u"0"_s, u"https://old"_s, u"d"_s, QString(), namePattern}});
    QDir().mkpath(dataDir());
    const QString file = QDir(dataDir()).filePath(ReverseSearchDefinitions::FileName);
    writeFile(file, old);
    if (!served.isEmpty())
        m_server->setPage("/defs.plist", served);
    m_settings->setValue(keys::AutoUpdateReverseSearch, enabled);
    m_settings->setValue(keys::ReverseSearchUpdateURL, m_server->url("/defs.plist"));
    m_settings->setValue(keys::Version, storedVersion);
    const QString lastDate =
        lastUpdateAgo < 0 ? QString() : m_clock->now().addSecs(-lastUpdateAgo).toUTC().toString(Qt::ISODate);
    if (!lastDate.isEmpty())
        m_settings->setValue(keys::UpdateDateReverseSearch, lastDate);

    QCOMPARE(makeSearch()->threadUpdateReverseSearchPlist(), downloaded);

    QFile f(file);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), downloaded ? served : old);
    const QString expectedDate = downloaded ? m_clock->now().toUTC().toString(Qt::ISODate) : lastDate;
    QCOMPARE(m_settings->value(keys::UpdateDateReverseSearch).toString(), expectedDate);
}

void TestReverseLookup::backgroundLookupReportsOnMainThread()
{
    m_server->setPage("/de", "<span class=\"name\">Hintergrund</span>");
    installDefinitions(
        {{u"0049"_s, u"0"_s, m_server->url("/de"), u"ph=##NUMBER##"_s, QString(), namePattern}});
    auto search = makeSearch();
    ReverseLookup lookup(*search, *m_settings, m_http, m_center, {});
    QString gotName, gotConn;
    QThread* deliveredOn = nullptr;
    int reloads = 0;
    QObject observer;
    m_center.addObserver(&observer, Notifications::RELOADCALLINGLIST, [&reloads](const auto&) { ++reloads; });
    lookup.reverseSearchInBackground(u"7"_s, u"0301234"_s, berlin, this,
                                     [&](const QString& name, const QString& connID) {
                                         gotName = name;
                                         gotConn = connID;
                                         deliveredOn = QThread::currentThread();
                                     });
    QTRY_COMPARE(gotName, u"Hintergrund"_s);
    QCOMPARE(gotConn, u"7"_s);
    QCOMPARE(deliveredOn, QThread::currentThread());
    QTRY_COMPARE(reloads, 1);
    QThreadPool::globalInstance()->waitForDone();
}

void TestReverseLookup::textHelpers_data()
{
    QTest::addColumn<QString>("helper");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("percent escapes, utf-8")
        << u"urldecode"_s << u"M%C3%BCller%20%26%20S%C3%B6hne"_s << u"Müller & Söhne"_s;
    QTest::newRow("plus is not a blank") << u"urldecode"_s << u"a+b"_s << u"a+b"_s;
    QTest::newRow("broken escape kept") << u"urldecode"_s << u"100%"_s << u"100%"_s;
    QTest::newRow("tags and entities")
        << u"html"_s << u"<td><b>Dr.&nbsp;M&uuml;ller</b><br/>Berlin</td>"_s << u"Dr. Müller Berlin"_s;
    QTest::newRow("numeric entities") << u"html"_s << u"Stra&#223;e &#x26; Co"_s << u"Straße & Co"_s;
    QTest::newRow("escaped markup stays text") << u"html"_s << u"a &lt;b&gt;"_s << u"a <b>"_s;
    QTest::newRow("every occurrence replaced") << u"replace"_s << u"00430043"_s << u"00"_s;
}

void TestReverseLookup::textHelpers()
{
    QFETCH(QString, helper);
    QFETCH(QString, input);
    QFETCH(QString, expected);
    QString got;
    if (helper == u"urldecode")
        got = methods::urldecode(input);
    else if (helper == u"html")
        got = HtmlText::toPlainText(input);
    else
        got = FBStringHelper::replaceStringTarget(u"0043"_s, u"0"_s, input);
    QCOMPARE(got, expected);
}

QTEST_GUILESS_MAIN(TestReverseLookup)
#include "tst_reverselookup.moc"

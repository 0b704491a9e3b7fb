#include "monitor/CallScriptRunner.h"
#include "monitor/TNScriptManager.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// A real shell script in the scripts folder; each run appends its arguments to a log.
void writeScript(const QDir& dir, const QString& name, const QByteArray& body)
{
    QFile f(dir.filePath(name));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("#!/bin/sh\n" + body);
    f.close();
    f.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

QStringList logLines(const QDir& dir, const QString& name)
{
    QFile f(dir.filePath(name + u".log"_s));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

CallRecord call(const QString& uid)
{
    CallRecord r;
    r.number = u"0301234567"_s;
    r.contact = {u"ab-1"_s, u"Anna Berg"_s, u"mobile"_s};
    r.line = u"5551234"_s;
    r.connID = u"3"_s;
    r.MemoSubject = u"Offer"_s;
    r.MemoBody = u"call back"_s;
    r.UID = uid;
    return r;
}

QVariantList row(const QString& name, bool s1, bool s2, bool s3, bool s4)
{
    return {name, s1, s2, s3, s4};
}

} // namespace

class TestScriptManager : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    // The label arrives localised ("mobile" is a known label key).
    void argumentOrder()
    {
        const QDir dir(m_dir.path());
        writeScript(dir, u"args"_s, "printf '%s|' \"$@\" >> \"$0.log\"; echo >> \"$0.log\"\n");
        TNScriptManager manager(dir.path());
        manager.threadExecuteAppleScripts(
            1, call(u"u-args"_s), QVariantList{QVariant(row(u"args"_s, true, false, false, false))}, {});
        QCOMPARE(logLines(dir, u"args"_s),
                 QStringList{
                     u"0301234567|Anna Berg|ab-1|5551234|Mobile|3|org.tondrel.Tondrel|Offer|call back|"_s});
    }

    void statesAndExtraParameters_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QStringList>("ran"); // "script:extra arguments seen"
        QTest::newRow("ringing runs the ringing scripts") << 1 << QStringList{u"a:x"_s, u"b:x y"_s};
        QTest::newRow("end of an incoming call") << 2 << QStringList{u"b:y"_s};
        QTest::newRow("outgoing call started") << 3 << QStringList{};
        QTest::newRow("outgoing call ended") << 4 << QStringList{u"c:"_s};
    }
    void statesAndExtraParameters()
    {
        QFETCH(int, state);
        QFETCH(QStringList, ran);
        QTemporaryDir tmp;
        const QDir dir(tmp.path());
        // Each script logs its name and the arguments after the nine call fields.
        for (const QString& n : {u"a"_s, u"b"_s, u"c"_s})
            writeScript(dir, n,
                        "shift 9; echo \"$(basename \"$0\"):$*\" >> \"" +
                            dir.filePath(u"ran.log"_s).toUtf8() + "\"\n");
        const QVariantList table{
            row(u"a"_s, true, false, false, false), row(u"missing"_s, true, true, true, true),
            row(u"b"_s, true, true, false, false), row(u"c"_s, false, false, false, true)};
        const QVariantMap params{{u"a"_s, QStringList{u"x"_s}}, {u"b"_s, QStringList{u"y"_s}}};
        TNScriptManager manager(dir.path());
        manager.threadExecuteAppleScripts(state, call(u"u1"_s), table, params);
        QCOMPARE(logLines(dir, u"ran"_s), ran);
    }

    // A value after ":" follows the call to its end, and only that call.
    void resultMemoryPerCall()
    {
        QTemporaryDir tmp;
        const QDir dir(tmp.path());
        writeScript(dir, u"mem"_s, "echo \"$1\" >> \"$0.log\"; echo 'seen:42'\n");
        const QVariantList table{QVariant(row(u"mem"_s, true, true, false, false))};
        TNScriptManager manager(dir.path());
        manager.executeAppleScriptsWithCallState(1, call(u"first"_s), table, {});
        QVERIFY(manager.waitForDone(10000));
        QCOMPARE(manager.memoryFor(u"first"_s, u"mem"_s), u"42"_s);
        manager.executeAppleScriptsWithCallState(1, call(u"second"_s), table, {});
        QVERIFY(manager.waitForDone(10000));
        manager.executeAppleScriptsWithCallState(2, call(u"first"_s), table, {});
        QVERIFY(manager.waitForDone(10000));
        // First argument: the number for fresh calls, the remembered value at the end of the first.
        QCOMPARE(logLines(dir, u"mem"_s), (QStringList{u"0301234567"_s, u"0301234567"_s, u"42"_s}));
        QCOMPARE(manager.memoryFor(u"first"_s, u"mem"_s), QString());
        QCOMPARE(manager.memoryFor(u"second"_s, u"mem"_s), u"42"_s);
    }

    void misbehavingScripts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("executable");
        QTest::addColumn<QString>("result");
        QTest::newRow("ordinary") << u"ok"_s << QByteArray("echo done:1\n") << true << u"done:1"_s;
        QTest::newRow("missing file") << u"nothere"_s << QByteArray() << true << QString();
        QTest::newRow("not executable") << u"plain"_s << QByteArray("echo hi\n") << false << QString();
        QTest::newRow("failing") << u"fails"_s << QByteArray("echo partial; exit 3\n") << true << QString();
        QTest::newRow("hanging is killed")
            << u"hangs"_s << QByteArray("exec sleep 30\n") << true << QString();
        QTest::newRow("name leaving the folder") << u"../escape"_s << QByteArray() << true << QString();
    }
    void misbehavingScripts()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, body);
        QFETCH(bool, executable);
        QFETCH(QString, result);
        QTemporaryDir tmp;
        const QDir dir(tmp.path());
        if (!body.isEmpty()) {
            writeScript(dir, name, body);
            if (!executable)
                QFile::setPermissions(dir.filePath(name), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        }
        QCOMPARE(methods::executeAppleScriptWithName(dir.path(), name, {}, 1500), result);
    }

    void outputIsCapped()
    {
        QTemporaryDir tmp;
        const QDir dir(tmp.path());
        writeScript(dir, u"chatty"_s, "head -c 1000000 /dev/zero | tr '\\0' 'a'\n");
        const QString out = methods::executeAppleScriptWithName(dir.path(), u"chatty"_s, {});
        QCOMPARE(out.size(), methods::MaxScriptOutput);
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestScriptManager)
#include "tst_scriptmanager.moc"

#include "export/TaskWrapper.h"

#include "platform/files/Files.h"

#include <QRegularExpression>
#include <QTest>

using namespace cardreel;
using namespace Qt::StringLiterals;

class TaskWrapperTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsWordsOverWhole_data();
    void handsWordsOverWhole();
    void plainWordsStayAsTheyAre();
    void output_data();
    void output();
    void programsThatCannotBeStarted();
};

void TaskWrapperTest::handsWordsOverWhole_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("apostrophes and a command") << u"'it''s';echo run;'"_s;
    QTest::newRow("exclamation marks") << u"!! a!b !$ \\! '!' end!"_s;
    QTest::newRow("dollars and backquotes") << u"$HOME $(echo run) `echo run` \"$x\""_s;
    QTest::newRow("line feeds") << u"\na\n\nb\\\nc'\n!\n"_s;
    QTest::newRow("patterns") << u"* ? [a-z] ~root {a,b} ^a^b % # & | < > ; ( )"_s;
    QTest::newRow("backslashes") << u"\\ a\\b \\\\ \\'\\"_s;
}

void TaskWrapperTest::handsWordsOverWhole()
{
    QFETCH(QString, word);
    const QStringList args = TaskWrapper::argsWithCommandLineString(u"printf '%s' "_s + quotedForCShell(word));
    QCOMPARE(TaskWrapper::syncProcessWithArguments(args).value_or("nothing"), files::nativePath(word));
}

void TaskWrapperTest::plainWordsStayAsTheyAre()
{
    QCOMPARE(quotedForCShell(u"/home/a b/道 $1.kmz"_s), u"'/home/a b/道 $1.kmz'"_s);
    QCOMPARE(TaskWrapper::argsWithCommandLineString(u"a 'b'"_s), (QStringList{u"/bin/csh"_s, u"-c"_s, u"a 'b'"_s}));
}

void TaskWrapperTest::output_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("more than a pipe holds") << u"head -c 300000 /dev/zero"_s << QByteArray(300'000, '\0');
    QTest::newRow("of a program that fails") << u"echo a; exit 3"_s << QByteArray("a\n");
    QTest::newRow("of a program that is killed") << u"echo a; kill -9 $$"_s << QByteArray("a\n");
    QTest::newRow("of one that reads its input") << u"cat; echo end"_s << QByteArray("end\n");
}

void TaskWrapperTest::output()
{
    QFETCH(QString, line);
    QTEST(TaskWrapper::syncProcessWithArguments(TaskWrapper::argsWithCommandLineString(line)).value_or("nothing"),
          "expected");
}

void TaskWrapperTest::programsThatCannotBeStarted()
{
    for (const QStringList& args : {QStringList(), QStringList{u"/no/such/program"_s, u"it"_s}, QStringList{u"/"_s}}) {
        const QString message = u"syncProcessWithArguments error = .+ args = "_s + args.join(u' ');
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(message));
        QVERIFY(!TaskWrapper::syncProcessWithArguments(args));
    }
}

QTEST_GUILESS_MAIN(TaskWrapperTest)
#include "TaskWrapperTest.moc"

#include "export/TaskWrapper.h"

#include "platform/files/Files.h"

#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTest>

#include <unistd.h>

using namespace cardreel;
using namespace Qt::StringLiterals;

class TaskWrapperTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsWordsOverWhole_data()
    {
        QTest::addColumn<QString>("word");
        QTest::newRow("apostrophes and a command") << u"'it''s';echo run;'"_s;
        QTest::newRow("exclamation marks") << u"!! a!b !$ \\! '!' end!"_s;
        QTest::newRow("dollars and backquotes") << u"$HOME $(echo run) `echo run` \"$x\""_s;
        QTest::newRow("line feeds") << u"\na\n\nb\\\nc'\n!\n"_s;
        QTest::newRow("patterns") << u"* ? [a-z] ~root {a,b} ^a^b % # & | < > ; ( )"_s;
        QTest::newRow("backslashes") << u"\\ a\\b \\\\ \\'\\"_s;
    }
    void handsWordsOverWhole()
    {
        QFETCH(QString, word);
        const QStringList args = TaskWrapper::argsWithCommandLineString(u"printf '%s' "_s + quotedForCShell(word));
        QCOMPARE(TaskWrapper::syncProcessWithArguments(args).value_or("nothing"), files::nativePath(word));
    }

    void plainWordsStayAsTheyAre()
    {
        QCOMPARE(quotedForCShell(u"/home/a b/道 $1.kmz"_s), u"'/home/a b/道 $1.kmz'"_s);
        QCOMPARE(TaskWrapper::argsWithCommandLineString(u"a 'b'"_s), (QStringList{u"/bin/csh"_s, u"-c"_s, u"a 'b'"_s}));
    }

    void output_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("more than a pipe holds") << u"head -c 300000 /dev/zero"_s << QByteArray(300'000, '\0');
        QTest::newRow("of a program that fails") << u"echo a; exit 3"_s << QByteArray("a\n");
        QTest::newRow("of a program that is killed") << u"echo a; kill -9 $$"_s << QByteArray("a\n");
        QTest::newRow("of one that complains") << u"sh -c 'echo a; echo b >&2'"_s << QByteArray("a\n");
        QTest::newRow("of one that reads its input") << u"cat; echo end"_s << QByteArray("end\n");
    }
    void output()
    {
        QFETCH(QString, line);
        QTemporaryFile said;
        QVERIFY(said.open());
        const int former = dup(STDERR_FILENO);
        dup2(said.handle(), STDERR_FILENO);
        const auto output = TaskWrapper::syncProcessWithArguments(TaskWrapper::argsWithCommandLineString(line));
        dup2(former, STDERR_FILENO);
        close(former);
        QTEST(output.value_or("nothing"), "expected");
        QCOMPARE(said.size(), 0);
    }

    void programsThatCannotBeStarted()
    {
        for (const QStringList& args :
             {QStringList(), QStringList{u"/no/such/program"_s, u"it"_s}, QStringList{u"/"_s}}) {
            const QString message = u"syncProcessWithArguments error = .+ args = "_s + args.join(u' ');
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(message));
            QVERIFY(!TaskWrapper::syncProcessWithArguments(args));
        }
    }
};

QTEST_GUILESS_MAIN(TaskWrapperTest)
#include "TaskWrapperTest.moc"

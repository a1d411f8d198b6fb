#include "platform/InterfaceThread.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <atomic>
#include <future>
#include <thread>

using namespace cardreel;

class InterfaceThreadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { InterfaceThread::open(); }
    void runsThereAndWaits();
    void runsAtOnceOnTheInterfaceThread();
    void closingReleasesWhoWaits();
    void aCallThatClosesIsStillDone();
};

void InterfaceThreadTest::runsThereAndWaits()
{
    int sum = 0; // unguarded: the hand-over itself has to order the accesses
    std::atomic<bool> wrongThread = false;
    auto job = std::async(std::launch::async, [&] {
        bool all = true;
        for (int i = 1; i <= 100; ++i) {
            all = InterfaceThread::callAndWait([&] {
                      wrongThread = wrongThread || QThread::currentThread() != QCoreApplication::instance()->thread();
                      sum += i;
                  }) &&
                  all;
            all = all && sum == i * (i + 1) / 2;
        }
        return all;
    });
    QTRY_VERIFY(job.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QVERIFY(job.get());
    QVERIFY(!wrongThread);
    QCOMPARE(sum, 5050);
}

void InterfaceThreadTest::runsAtOnceOnTheInterfaceThread()
{
    bool called = false;
    QVERIFY(InterfaceThread::callAndWait([&] { called = true; }));
    QVERIFY(called);
}

void InterfaceThreadTest::closingReleasesWhoWaits()
{
    std::atomic<int> called = 0;
    std::vector<std::future<bool>> jobs;
    for (int i = 0; i < 8; ++i)
        jobs.push_back(std::async(std::launch::async, [&] { return InterfaceThread::callAndWait([&] { ++called; }); }));
    // No event is handled here, so nobody's turn comes before the end.
    InterfaceThread::close();
    for (std::future<bool>& job : jobs)
        QVERIFY(!job.get());
    QVERIFY(!InterfaceThread::callAndWait([&] { ++called; }));
    QCoreApplication::processEvents();
    QCOMPARE(called.load(), 0);
}

void InterfaceThreadTest::aCallThatClosesIsStillDone()
{
    auto job =
        std::async(std::launch::async, [] { return InterfaceThread::callAndWait([] { InterfaceThread::close(); }); });
    QTRY_VERIFY(job.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QVERIFY(job.get());
}

QTEST_GUILESS_MAIN(InterfaceThreadTest)
#include "InterfaceThreadTest.moc"

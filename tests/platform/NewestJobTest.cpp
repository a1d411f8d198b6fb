#include "platform/NewestJob.h"

#include "platform/BackgroundThread.h"

#include <QTest>

#include <memory>
#include <optional>
#include <semaphore>
#include <vector>

namespace cardreel {

class NewestJobTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { BackgroundThread::wait(); }

    void onlyTheNewestIsAnswered()
    {
        std::binary_semaphore hasBegun(0);
        std::binary_semaphore mayEnd(0);
        std::vector<int> done;
        std::vector<int> answers;
        NewestJob job;
        const auto work = [&](int number) {
            return [&, number] {
                done.push_back(number);
                return [&answers, number] { answers.push_back(number); };
            };
        };
        job.start([&] {
            hasBegun.release();
            mayEnd.acquire();
            return work(1)();
        });
        hasBegun.acquire();
        for (const int number : {2, 3, 4})
            job.start(work(number));
        mayEnd.release();
        QVERIFY(answers.empty()); // not from within the call
        QTRY_COMPARE(answers, std::vector<int>{4});
        BackgroundThread::wait();
        QCOMPARE(done, (std::vector<int>{1, 4}));
        job.start(work(5));
        QTRY_COMPARE(answers, (std::vector<int>{4, 5}));
    }

    void nobodyIsAnsweredAnyMore_data()
    {
        QTest::addColumn<bool>("isDestroyed");
        QTest::newRow("cancelled") << false;
        QTest::newRow("destroyed") << true;
    }
    void nobodyIsAnsweredAnyMore()
    {
        QFETCH(bool, isDestroyed);
        int answers = 0;
        std::optional<NewestJob> job(std::in_place);
        job->start([&answers] { return [&answers] { ++answers; }; });
        BackgroundThread::wait(); // the answer is on its way
        if (isDestroyed)
            job.reset();
        else
            job->cancel();
        QCoreApplication::processEvents();
        QCOMPARE(answers, 0);
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::NewestJobTest)
#include "NewestJobTest.moc"

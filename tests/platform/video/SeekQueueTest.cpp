#include "platform/video/SeekQueue.h"

#include <QTest>

namespace cardreel {

class SeekQueueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsOnlyTheNewestOfThoseAskedForMeanwhile()
    {
        SeekQueue queue;
        const auto first = queue.request({1, SeekQueue::Precision::Keyframe});
        QVERIFY(first && first->seconds == 1 && first->precision == SeekQueue::Precision::Keyframe);
        QVERIFY(!queue.request({2, SeekQueue::Precision::Keyframe}));
        QVERIFY(!queue.request({3, SeekQueue::Precision::Exact}));
        const auto next = queue.finished();
        QVERIFY(next && next->seconds == 3 && next->precision == SeekQueue::Precision::Exact);
        QVERIFY(queue.isBusy());
        QVERIFY(!queue.finished());
        QVERIFY(!queue.isBusy());
    }

    void waitsWhileHeld()
    {
        SeekQueue queue;
        queue.request({1});
        queue.request({2});
        queue.hold();
        QVERIFY(!queue.request({5}));
        const auto next = queue.finished();
        QVERIFY(next && next->seconds == 5);
        queue.clear();
        QVERIFY(queue.request({6}));
    }
};

} // namespace cardreel

QTEST_APPLESS_MAIN(cardreel::SeekQueueTest)
#include "SeekQueueTest.moc"

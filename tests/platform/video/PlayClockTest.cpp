#include "platform/video/PlayClock.h"

#include <QTest>

namespace cardreel {

class PlayClockTest : public QObject
{
    Q_OBJECT

    static PlayClock::Moment at(double seconds)
    {
        return PlayClock::Moment(
            std::chrono::duration_cast<PlayClock::Moment::duration>(std::chrono::duration<double>(1000 + seconds)));
    }

    static bool isNear(double a, double b) { return std::abs(a - b) < 1e-6; }

private Q_SLOTS:
    void goesOnWithinAFrame()
    {
        PlayClock clock;
        clock.reset(0.04);
        clock.setRunning(true, at(0));
        QCOMPARE(clock.time(at(5)), 0.0); // nothing is known to play yet
        clock.report(2.0, at(5));
        QVERIFY(isNear(clock.time(at(5.01)), 2.01));
        QVERIFY(isNear(clock.time(at(5.2)), 2.04)); // a late frame holds it
        clock.report(2.04, at(5.2));
        clock.setRunning(false, at(5.21));
        QVERIFY(isNear(clock.time(at(9)), 2.05));
        clock.setRunning(true, at(9));
        QVERIFY(isNear(clock.time(at(9.01)), 2.06));
        QVERIFY(isNear(clock.time(at(10)), 2.08));
    }

    void goesOnAtItsSpeed()
    {
        PlayClock clock;
        clock.reset(0.04);
        clock.setSpeed(4, at(0));
        clock.setRunning(true, at(0));
        clock.report(1.0, at(0));
        QVERIFY(isNear(clock.time(at(0.005)), 1.02));
        clock.setSpeed(2, at(0.005)); // from where it is
        QVERIFY(isNear(clock.time(at(0.006)), 1.022));
        QVERIFY(isNear(clock.time(at(1)), 1.04));
    }

    void followsKeyFramesFartherApart()
    {
        PlayClock clock;
        clock.reset(0.04);
        clock.setSpeed(10, at(0));
        clock.setRunning(true, at(0));
        clock.report(1.0, at(0));
        clock.report(1.5, at(0.05));
        QVERIFY(isNear(clock.time(at(0.09)), 1.9));
        QVERIFY(isNear(clock.time(at(0.5)), 2.0));
        // What is sought in between is no step of the file.
        clock.jump(30);
        QCOMPARE(clock.time(at(0.6)), 30.0);
        clock.report(29.8, at(0.7));
        QVERIFY(isNear(clock.time(at(1.7)), 29.84));
    }

    void endsWithTheLastFrame()
    {
        PlayClock clock;
        clock.reset(0); // unknown: as of thirty a second
        clock.setRunning(true, at(0));
        clock.report(2.0, at(0));
        clock.finish();
        QVERIFY(isNear(clock.time(at(7)), 2.0 + 1.0 / 30));
        clock.reset(0.04);
        QCOMPARE(clock.time(at(8)), 0.0);
    }
};

} // namespace cardreel

QTEST_APPLESS_MAIN(cardreel::PlayClockTest)
#include "PlayClockTest.moc"

#include "platform/map/TilePlan.h"

#include <QTest>

namespace cardreel {

class TilePlanTest : public QObject
{
    Q_OBJECT

    const TileKey m_a{3, 0, 0};
    const TileKey m_b{3, 1, 0};
    const TileKey m_c{3, 2, 0};
    const TileKey m_d{3, 3, 0};

    /// Begins what is due and lets it fail; how many those were.
    static int failAll(TilePlan& plan, qint64 nowMs, qint64 pauseMs = 0)
    {
        int count = 0;
        for (std::optional<TileKey> key = plan.next(nowMs); key; key = plan.next(nowMs), ++count)
            plan.didFail(*key, nowMs, pauseMs);
        return count;
    }

private Q_SLOTS:
    void mostUrgentFirstAndNotTooMany()
    {
        TilePlan plan;
        plan.setParallel(2);
        plan.setWanted({m_a, m_b, m_c});
        QCOMPARE(plan.next(0), m_a);
        QCOMPARE(plan.next(0), m_b);
        QCOMPARE(plan.nextDueMs(), std::nullopt);
        QCOMPARE(plan.next(0), std::nullopt);
        plan.didAnswer(m_b);
        QCOMPARE(plan.nextDueMs(), 0);
        QCOMPARE(plan.setWanted({m_d, m_c}), std::vector{m_a});
        QVERIFY(!plan.isUnderway(m_a));
        QCOMPARE(plan.next(0), m_d);
        plan.didObtain(m_c);
        QCOMPARE(plan.next(0), std::nullopt);
    }

    void waitsLongerAfterEachFailure()
    {
        TilePlan plan;
        qint64 now = 1000;
        for (const qint64 delay : {2, 4, 8, 16, 32, 64, 128, 256, 300, 300}) {
            plan.setWanted({m_a});
            QCOMPARE(failAll(plan, now), 1);
            plan.setWanted({}); // moving away and back must not ask sooner
            plan.setWanted({m_a});
            QCOMPARE(plan.nextDueMs(), now + delay * 1000);
            QCOMPARE(plan.next(now + delay * 1000 - 1), std::nullopt);
            now += delay * 1000;
        }
        QVERIFY(plan.isUnreachable());
        QCOMPARE(plan.next(now), m_a);
        plan.didAnswer(m_a);
        plan.setWanted({m_a});
        QVERIFY(!plan.isUnreachable());
        QCOMPARE(plan.next(now), m_a);
    }

    void aBadTileHoldsUpNoOther()
    {
        TilePlan plan;
        plan.setWanted({m_a});
        for (qint64 now = 0; now < 10'000'000; now += 1'000'000)
            QCOMPARE(failAll(plan, now), 1);
        plan.setWanted({m_a, m_b});
        QVERIFY(!plan.isPaused());
        QVERIFY(!plan.isUnreachable());
        QCOMPARE(plan.next(20'000'000), m_b); // although the other one is due, too
    }

    void aDeadSourceGetsOneProbeAtATime()
    {
        TilePlan plan;
        plan.setParallel(2);
        plan.setWanted({m_a, m_b, m_c, m_d});
        QCOMPARE(failAll(plan, 0), 3);
        QVERIFY(plan.isPaused());
        qint64 now = 0;
        for (const qint64 delay : {2, 4, 8, 16, 32, 60, 60}) {
            QCOMPARE(plan.nextDueMs(), now + delay * 1000);
            QCOMPARE(plan.next(now + delay * 1000 - 1), std::nullopt);
            now += delay * 1000;
            const std::optional<TileKey> probe = plan.next(now);
            QVERIFY(probe);
            QCOMPARE(plan.next(now), std::nullopt);
            QVERIFY(plan.setWanted({m_a, m_b, m_c, m_d}).empty());
            plan.didFail(*probe, now);
        }
        QVERIFY(plan.isUnreachable());
        // The probes took turns, so nothing has to wait long once one is answered.
        now += 60'000;
        plan.didAnswer(plan.next(now).value());
        QVERIFY(!plan.isUnreachable());
        plan.setWanted({m_a, m_b, m_c, m_d});
        QVERIFY(plan.next(now));
        QVERIFY(plan.next(now));
    }

    void leavesASourceAloneThatAsksForIt()
    {
        TilePlan plan;
        plan.setParallel(2);
        plan.setWanted({m_a, m_b});
        QCOMPARE(failAll(plan, 0, 3'600'000), 1);
        QVERIFY(plan.isUnreachable());
        plan.setWanted({m_c});
        QCOMPARE(plan.nextDueMs(), 3'600'000);
        QCOMPARE(plan.next(3'599'999), std::nullopt);
        QCOMPARE(plan.next(3'600'000), m_c);
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::TilePlanTest)
#include "TilePlanTest.moc"

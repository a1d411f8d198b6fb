#include "app/TransportBar.h"

#include "WindowParts.h"
#include "app/PositionSlider.h"
#include "app/VolumeSlider.h"
#include "platform/text/RecorderTime.h"
#include "platform/text/UnitText.h"

#include <QAction>
#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>
#include <QWheelEvent>

#include <limits>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class TransportBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_window->resize(800, 300);
        m_bar = new TransportBar(m_window.get());
        m_bar->setGeometry(0, 260, 800, 40);
        m_slider = m_bar->findChild<PositionSlider*>();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        // Beside the narrowest list in the narrowest window.
        QVERIFY(m_bar->minimumSizeHint().width() <= 1000 - 400);
    }

    void cleanup() { m_window.reset(); }

    void writesPlayTimes()
    {
        for (const double none :
             {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -3.0, 0.999})
            QCOMPARE(playTimeText(none), u"0:00"_s);
        QCOMPARE(playTimeText(65.9), u"1:05"_s);
        QCOMPARE(playTimeText(3725), u"1:02:05"_s);
    }

    void theTipTellsTheTimeOfDayUnderThePointer()
    {
        const Instant start = utc(2025, 6, 14, 8, 6, 14);
        m_bar->setRecording(180, secondsSince1970(start));
        QTest::mouseMove(m_slider, at(0));
        QTRY_VERIFY(tip() && tip()->isVisible());
        QCOMPARE(tip()->text(), recorderTimeText(start));
        const int left = tip()->geometry().center().x();
        QTest::mouseMove(m_slider, at(0.5));
        QTRY_VERIFY(tip()->geometry().center().x() > left + 100);
        const double pixel = 180.0 / m_slider->width();
        const QStringList near = {recorderTimeText(start + std::chrono::milliseconds(90'000)),
                                  recorderTimeText(start + std::chrono::milliseconds(qRound(90'000 - pixel * 1000)))};
        QVERIFY2(near.contains(tip()->text()), qPrintable(tip()->text()));
        QVERIFY(tip()->geometry().bottom() < m_bar->y() + m_slider->y());
        QTest::mouseMove(m_window.get(), {10, 10});
        QTRY_VERIFY(!tip()->isVisible());
        // Without a clock it tells how far.
        m_bar->setRecording(180, {});
        QTest::mouseMove(m_slider, at(1));
        QTRY_VERIFY(tip()->isVisible());
        QCOMPARE(tip()->text(), u"3:00"_s);
        QVERIFY(m_window->rect().contains(tip()->geometry()));
        m_bar->clear();
        QVERIFY(!tip()->isVisible());
    }

    void draggingSeeksAllTheWay()
    {
        m_bar->setRecording(100, {});
        QSignalSpy sought(m_bar, &TransportBar::seekRequested);
        QTest::mousePress(m_slider, Qt::LeftButton, {}, at(0.2));
        for (const double fraction : {0.4, 0.6, 0.8})
            QTest::mouseMove(m_slider, at(fraction));
        QTRY_COMPARE(sought.size(), 4);
        for (int i = 0; i < 4; ++i)
            QVERIFY(qAbs(sought[i].front().toDouble() - 0.2 * (i + 1)) < 0.005);
        QVERIFY(m_bar->isScrubbing());
        QTest::mouseRelease(m_slider, Qt::LeftButton, {}, at(0.8));
        QVERIFY(!m_bar->isScrubbing());
    }

    void theHandleStaysUnderTheHand()
    {
        m_bar->setRecording(100, {});
        QLabel* elapsed = named<QLabel>(m_window.get(), TransportBar::tr("Elapsed"));
        QTest::mousePress(m_slider, Qt::LeftButton, {}, at(0.75));
        m_bar->setPosition(0.1); // the frame of a former seek
        QVERIFY(m_slider->fraction() > 0.7);
        QVERIFY(elapsed->text() == u"1:14" || elapsed->text() == u"1:15");
        QTest::mouseRelease(m_slider, Qt::LeftButton, {}, at(0.75));
        m_bar->setPosition(0.1);
        QCOMPARE(m_slider->fraction(), 0.1);
        QCOMPARE(elapsed->text(), u"0:10"_s);
        // What is dragged may go away; then nothing moves.
        QTest::mousePress(m_slider, Qt::LeftButton, {}, at(0.75));
        m_bar->clear();
        QVERIFY(!m_bar->isScrubbing());
        QTest::mouseRelease(m_slider, Qt::LeftButton, {}, at(0.75));
        QSignalSpy sought(m_bar, &TransportBar::seekRequested);
        QTest::mouseClick(m_slider, Qt::LeftButton, {}, at(0.5));
        m_bar->setPosition(std::numeric_limits<double>::quiet_NaN());
        QCOMPARE(sought.size(), 0);
        QCOMPARE(m_slider->fraction(), 0.0);
    }

    void theWheelTurnsTheVolume()
    {
        m_bar->setVolume(0.5);
        QSignalSpy asked(m_bar, &TransportBar::volumeRequested);
        QWidget* slider = m_bar->findChild<VolumeSlider*>();
        const auto turn = [](QWidget* widget, int notches) {
            const QPointF middle = QRectF(widget->rect()).center();
            QWheelEvent event(middle, widget->mapToGlobal(middle), {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(widget, &event);
        };
        turn(slider, 2);
        QCOMPARE(asked.takeLast().front().toDouble(), 0.6);
        turn(slider, -100);
        QCOMPARE(asked.takeLast().front().toDouble(), 0.0);
        for (QToolButton* button : m_bar->findChildren<QToolButton*>()) {
            if (button->toolTip() == TransportBar::tr("Mute (M)"))
                turn(button, 1);
        }
        QCOMPARE(asked.takeLast().front().toDouble(), 0.05);
    }

    void showsTheRateOfThePane()
    {
        QAction rate(u"x1"_s);
        rate.setEnabled(false);
        m_bar->setRateAction(&rate);
        auto* button = m_bar->findChild<QToolButton*>(u"rateButton"_s);
        QCOMPARE(button->text(), u"x1"_s);
        QVERIFY(!button->isEnabled());
        rate.setText(u"x1/2"_s);
        rate.setEnabled(true);
        QCOMPARE(button->text(), u"x1/2"_s);
        QSignalSpy triggered(&rate, &QAction::triggered);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(triggered.size(), 1);
    }

private:
    QLabel* tip() const { return m_window->findChild<QLabel*>(u"sliderTip"_s); }
    QPoint at(double fraction) const
    {
        return {static_cast<int>(6 + (m_slider->width() - 12) * fraction), m_slider->height() / 2};
    }

    std::unique_ptr<QWidget> m_window;
    TransportBar* m_bar = nullptr;
    PositionSlider* m_slider = nullptr;
};

int main(int argc, char* argv[])
{
    return runWithWindows<TransportBarTest>(argc, argv);
}

#include "TransportBarTest.moc"

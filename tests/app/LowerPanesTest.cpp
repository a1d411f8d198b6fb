#include "app/LowerPanes.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <cstdlib>

using namespace cardreel;

namespace {

struct Panes
{
    QWidget* graph = new QWidget;
    QWidget* map = new QWidget;
    LowerPanes panes{graph, map};

    explicit Panes(int width = 1001)
    {
        panes.resize(width, 300);
        panes.show();
    }
    void drag(int position)
    {
        QSplitterHandle* handle = panes.handle(1);
        const QPoint grip = handle->rect().center();
        QTest::mousePress(handle, Qt::LeftButton, {}, grip);
        // The handle moves along, so positions are told from where it is.
        QMouseEvent move(QEvent::MouseMove, grip + QPoint(position - handle->x(), 0),
                         handle->mapToGlobal(grip) + QPoint(position - handle->x(), 0), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(handle, &move);
        QTest::mouseRelease(handle, Qt::LeftButton, {}, grip);
    }
};

} // namespace

class LowerPanesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void remembersWhatTheUserDid()
    {
        Panes first;
        QCOMPARE(first.graph->width(), 630);
        first.drag(400);
        QCOMPARE(first.graph->width(), 400);
        first.panes.resize(2001, 300);
        QCOMPARE(first.graph->width(), 800);
        first.panes.swap();
        QCOMPARE(first.graph->width(), 800);
        QVERIFY(first.map->x() < first.graph->x());
        first.drag(500);
        QCOMPARE(first.map->width(), 500);

        Panes second;
        QVERIFY(second.panes.restoreSavedState(first.panes.savedState()));
        QVERIFY(second.map->x() < second.graph->x());
        QCOMPARE(second.map->width(), 250);
        for (const QByteArray& state : {QByteArray(), QByteArray("rubbish"), first.panes.savedState().chopped(1)}) {
            QVERIFY(!second.panes.restoreSavedState(state));
            QCOMPARE(second.map->width(), 250);
        }
    }

    void snapsToTheUsualShare()
    {
        Panes window;
        window.drag(500);
        window.drag(640);
        QCOMPARE(window.graph->width(), 630);
    }

    void hiddenPanesGiveTheirRoom()
    {
        Panes window;
        QSignalSpy changed(&window.panes, &LowerPanes::shownDidChange);
        window.panes.setMapShown(false);
        QCoreApplication::processEvents();
        QCOMPARE(window.graph->width(), 1001);
        window.panes.setMapShown(false);
        QCOMPARE(changed.size(), 1);
        Panes next;
        QVERIFY(next.panes.restoreSavedState(window.panes.savedState()));
        QVERIFY(next.panes.isGraphShown() && !next.panes.isMapShown());
        window.panes.setMapShown(true);
        QVERIFY(std::abs(window.graph->width() - 630) <= 1); // the border itself comes a moment later
    }
};

QTEST_MAIN(LowerPanesTest)
#include "LowerPanesTest.moc"

#include "app/MainWindow.h"

#include "WindowParts.h"
#include "app/LowerPanes.h"
#include "app/MomentDisplay.h"
#include "app/ReadoutBar.h"
#include "app/TransportBar.h"
#include "app/lists/CardItem.h"
#include "media/CardLayout.h"
#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "names/ConstClass.h"
#include "playback/PlayerScrollView.h"
#include "telemetry/CustomLocation.h"
#include "views/graph/GraphViewController.h"
#include "views/map/MapVewController.h"

#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTabBar>
#include <QThreadPool>

#include <sys/stat.h>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

bool isPlain(const QImage& image, QColor color)
{
    QImage plain = image;
    plain.fill(color);
    return image == plain;
}

/// Whether nothing stands in the middle of a pane, where its picture and its messages are.
bool isBlackInTheMiddle(ZoomPlayerViewController* pane)
{
    const QSize size = pane->size();
    return isPlain(pane->grab({{size.width() / 4, size.height() / 4}, size / 2}).toImage(), Qt::black);
}

/// The cards' pictures are dark green.
bool isGreenInTheMiddle(ZoomPlayerViewController* pane)
{
    const QImage image = pane->grab().toImage();
    const QColor color = image.pixelColor(image.rect().center());
    return color.green() > 100 && color.red() < 40 && color.blue() < 40;
}

} // namespace

class MainWindowTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeWindow(); }
    void cleanup() { endWindow(); }

    void saysThatThereIsNothing()
    {
        QVERIFY(!panel()->isVisible());
        QTest::keyClick(m_window.get(), Qt::Key_F);
        QVERIFY(!m_window->isFullScreen());
        QSignalSpy requested(m_window.get(), &MainWindow::openRequested);
        for (QPushButton* button : m_window->findChildren<QPushButton*>()) {
            if (button->text() == MainWindow::tr("Open card…"))
                QTest::mouseClick(button, Qt::LeftButton);
        }
        QCOMPARE(requested.size(), 1);
        // An empty card.
        CardBuilder card;
        card.folder(u"NORMAL"_s);
        QVERIFY(!open(card));
        QVERIFY(panel()->isVisible());
        QVERIFY(!isBlackInTheMiddle(frontPane()));
        QVERIFY(!rearPane()->isVisible());
        QCOMPARE(reading("Time of day"), ConstClass::TIMECOUNT_NO_MEDIA);
        auto* tabs = m_window->findChild<QTabBar*>();
        for (const List which : {Recordings, Events, Pictures}) {
            tabs->setCurrentIndex(which);
            QVERIFY(list(which)->isVisible());
            const QImage image = list(which)->viewport()->grab().toImage();
            QVERIFY(!isPlain(image, image.pixelColor(0, 0))); // it says so
            QVERIFY(tabs->tabText(which).contains(u'0'));
        }
    }

    void openingACardFillsTheLists()
    {
        CardBuilder card(u"my card"_s);
        const QStringList all = {u"NORMAL/200101120000.MP4"_s, u"EVENT/200101120100.MP4"_s,
                                 u"NORMAL/200101120200.MP4"_s, u"PARKING/200101120300.MP4"_s};
        for (const QString& delta : all)
            card.file(delta);
        card.picture(u"PICTURE/200101120130.JPG"_s);
        QVERIFY(open(card));
        QCOMPARE(m_window->cardPath(), card.root());
        QVERIFY(m_window->windowTitle().contains(u"my card"));
        QCOMPARE(texts(Recordings, Qt::ToolTipRole), all);
        QCOMPARE(texts(Events, Qt::ToolTipRole), (QStringList{all[1], all[3]}));
        QCOMPARE(texts(Pictures, Qt::ToolTipRole), QStringList{u"PICTURE/200101120130.JPG"_s});
        const auto* tabs = m_window->findChild<QTabBar*>();
        QVERIFY(tabs->tabText(Recordings).contains(u'4'));
        QVERIFY(tabs->tabText(Events).contains(u'2'));
        QVERIFY(tabs->tabText(Pictures).contains(u'1'));
        QCOMPARE(list(Recordings)->currentRow(), 0);
        QVERIFY(!rearPane()->isVisible());

        card.file(u"REAR/EVENT/200101120100.MP4"_s);
        QVERIFY(open(card));
        QVERIFY(rearPane()->isVisible());
        // Another card takes its place.
        CardBuilder other;
        other.file(u"EVENT/200101120100.MP4"_s);
        list(Pictures)->selectRow(0);
        QVERIFY(open(other));
        QCOMPARE(texts(Recordings, Qt::ToolTipRole), QStringList{u"EVENT/200101120100.MP4"_s});
        QCOMPARE(list(Recordings)->currentRow(), 0);
        QCOMPARE(list(Pictures)->model()->rowCount(), 0);
    }

    void rowsSayWhatTheyStandFor()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101235959.MP4"_s);
        card.file(u"EVENT/200102000000.MP4"_s, QByteArray(2'500'000, 'x'));
        QCOMPARE(chmod(card.file(u"MANUAL/200102000100.MP4"_s).toUtf8(), 0444), 0);
        card.file(u"REAR/EVENT/200102000000.MP4"_s);
        card.picture(u"PICTURE/200102000030.JPG"_s);
        open(card);
        // The recorder's clock, wherever this computer is.
        const QStringList times = texts(Recordings, TitleRole);
        QVERIFY2(times[0].contains(u":59:59"), qPrintable(times[0]));
        QVERIFY(times[1] != times[2]);
        const QStringList days = texts(Recordings, DayRole);
        QVERIFY(!days[0].isEmpty() && !days[1].isEmpty() && days[0] != days[1]);
        QVERIFY(days[2].isEmpty());
        QCOMPARE(texts(Pictures, DayRole).front(), days[1]);
        QVERIFY(texts(Recordings, DetailRole)[1].contains(u"2.5"));
        QVERIFY(texts(Recordings, DetailRole)[1] != texts(Recordings, DetailRole)[0]);
        const QStringList kinds = texts(Recordings, KindTextRole);
        QVERIFY(kinds[0].isEmpty() && !kinds[1].isEmpty() && !kinds[2].isEmpty() && kinds[1] != kinds[2]);
        QCOMPARE(texts(Recordings, LockedRole), (QStringList{u"false"_s, u"false"_s, u"true"_s}));
        QCOMPARE(texts(Pictures, ThumbnailPathRole).front(), card.path(u"PICTURE/200102000030.JPG"_s));
    }

    void picturesAreShownInTheirRecordingOrAlone()
    {
        CardBuilder folder;
        const QString card = folder.path(u"sample"_s);
        QVERIFY(makeSampleCard(card, 2, 20, 2));
        const QString stray = card + u"/PICTURE/990101000000.JPG"_s;
        QVERIFY(QFile::copy(QDir(card + u"/PICTURE"_s).entryInfoList(QDir::Files).front().filePath(), stray));
        setModified(stray, utc(2035, 1, 1, 0, 0));
        QVERIFY(m_window->openCard(card));
        int insideRow = -1;
        int aloneRow = -1;
        for (int row = 0; row < list(Pictures)->model()->rowCount(); ++row) {
            const bool isAlone = controller().pictureTree()[static_cast<size_t>(row)]->parentDCFInfo.expired();
            (isAlone ? aloneRow : insideRow) = row;
        }
        QVERIFY(insideRow >= 0 && aloneRow >= 0);
        const std::shared_ptr<PictureInfo> inside = controller().pictureTree()[static_cast<size_t>(insideRow)];
        const std::shared_ptr<PictureInfo> alone = controller().pictureTree()[static_cast<size_t>(aloneRow)];
        const std::shared_ptr<DCFInfo> parent = inside->parentDCFInfo.lock();
        list(Pictures)->selectRow(insideRow);
        QCOMPARE(controller().currentDCF(), parent);
        WAIT_FOR(frontPane()->originalTotalTime() > 0 && !frontPane()->isPlaying());
        WAIT_FOR(frontPane()->progress() > 0 || inside->parentDCFInfo.expired());
        QCOMPARE(controller().currentPicture(), inside);
        QCOMPARE(reading("Time of day"), inside->pictureDateString);

        list(Pictures)->selectRow(aloneRow);
        QCOMPARE(controller().currentPicture(), alone);
        QVERIFY(!frontPane()->isPlaying());
        QCOMPARE(reading("Time of day"), alone->pictureDateString);
        list(Recordings)->selectRow(1);
        QVERIFY(!controller().currentPicture());
        WAIT_FOR(frontPane()->isPlaying());
    }

    void showsPictures()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101120000.MP4"_s);
        card.file(u"REAR/NORMAL/200101120000.MP4"_s);
        card.pictureAt(u"PICTURE/200101120010.JPG"_s, 35.5, "N", 139.75, "W");
        card.picture(u"REAR/PICTURE/200101120010.JPG"_s);
        card.picture(u"PICTURE/200101120020.JPG"_s);
        open(card);
        QVERIFY(!isGreenInTheMiddle(frontPane()));
        list(Pictures)->selectRow(0);
        WAIT_FOR(isGreenInTheMiddle(frontPane()) && isGreenInTheMiddle(rearPane()));
        QCOMPARE(reading("Time of day"), recordingDateText(u"200101120010"_s));
        QCOMPARE(reading("Position"), u"35.500000, -139.750000"_s);
        list(Pictures)->selectRow(1);
        WAIT_FOR(isGreenInTheMiddle(frontPane()) && !isGreenInTheMiddle(rearPane()));
        QCOMPARE(reading("Position"), MomentDisplay::tr("This picture carries no position."));
        list(Recordings)->selectRow(0);
        WAIT_FOR(!isGreenInTheMiddle(frontPane()));
    }

    void whatIsBrokenOrGoneIsReported()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101120000.MP4"_s, "no video");
        card.link(u"NORMAL/200101120100.MP4"_s, "gone");
        card.file(u"REAR/NORMAL/200101120100.MP4"_s);
        const QString picture = card.picture(u"PICTURE/200101120010.JPG"_s);
        open(card);
        WAIT_FOR(!isBlackInTheMiddle(frontPane()));
        QVERIFY(!isBlackInTheMiddle(rearPane())); // there is none
        panel()->selectNext();
        QVERIFY(isBlackInTheMiddle(frontPane()));
        WAIT_FOR(!isBlackInTheMiddle(frontPane()) && !isBlackInTheMiddle(rearPane()));
        QVERIFY(QFile::remove(picture));
        list(Pictures)->selectRow(0);
        WAIT_FOR(!isBlackInTheMiddle(frontPane()));
        QVERIFY(!isGreenInTheMiddle(frontPane()));
    }

    void theCardIsRemovedAndComesBack()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101120000.MP4"_s);
        card.picture(u"PICTURE/200101120000.JPG"_s);
        open(card);
        list(Pictures)->selectRow(0);
        WAIT_FOR(isGreenInTheMiddle(frontPane()));
        const QString mounted = card.root();
        card.mountAgainAs(u"elsewhere"_s);
        WAIT_FOR(!isGreenInTheMiddle(frontPane()));
        QVERIFY(!isBlackInTheMiddle(frontPane()));
        QCOMPARE(reading("Time of day"), ConstClass::TIMECOUNT_NO_MEDIA);

        card.file(u"NORMAL/200101120100.MP4"_s);
        card.mountAgainAs(u"card"_s);
        QCOMPARE(card.root(), mounted);
        WAIT_FOR(list(Recordings)->model()->rowCount() == 2);
    }

    void rowsFollowTheParseUntilTheWindowGoes()
    {
        CardBuilder card;
        for (int i = 0; i < 60; ++i)
            card.file(u"EVENT/2001011200%1.MP4"_s.arg(i, 2, 10, QLatin1Char('0')));
        open(card);
        QSignalSpy changed(list(Events)->model(), &QAbstractItemModel::dataChanged);
        QVERIFY(texts(Recordings, ThumbnailPathRole).join(QString()).isEmpty());
        WAIT_FOR(changed.size() >= 2);
        QVERIFY(!texts(Recordings, ThumbnailPathRole)[1].isEmpty());
        QCOMPARE(texts(Events, ThumbnailPathRole), texts(Recordings, ThumbnailPathRole));
        m_window.reset();
        // What it had under way ends without being reported.
        QVERIFY(changed.size() < 60);
    }

    void takesDroppedFolders()
    {
        CardBuilder card;
        const QString file = card.file(u"NORMAL/200101120000.MP4"_s);
        QSignalSpy dropped(m_window.get(), &MainWindow::cardDropped);
        const auto drop = [this](const QList<QUrl>& urls) {
            QMimeData data;
            data.setUrls(urls);
            QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            enter.setAccepted(false);
            QCoreApplication::sendEvent(m_window.get(), &enter);
            if (!enter.isAccepted())
                return false;
            QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(m_window.get(), &event);
            return true;
        };
        QVERIFY(!drop({}));
        QVERIFY(!drop({QUrl(u"https://example.org/card"_s)}));
        QVERIFY(!drop({QUrl::fromLocalFile(file)}));
        QVERIFY(dropped.isEmpty());
        QVERIFY(drop({QUrl::fromLocalFile(file), QUrl::fromLocalFile(card.root())}));
        QCOMPARE(dropped.size(), 1);
        QCOMPARE(dropped.front().front().toString(), card.root());
    }

    void playsACard()
    {
        CardBuilder folder;
        const QString card = folder.path(u"sample"_s);
        QVERIFY(makeSampleCard(card, 2, 1));
        QVERIFY(m_window->openCard(card));
        QVERIFY(rearPane()->isVisible());
        WAIT_FOR(!isBlackInTheMiddle(frontPane()) && !isBlackInTheMiddle(rearPane()));
        static const QRegularExpression coordinates(u"^-?\\d+\\.\\d{6}, -?\\d+\\.\\d{6}$"_s);
        WAIT_FOR(reading("Position").contains(coordinates));
        QVERIFY(reading("Time of day") != ConstClass::TIMECOUNT_NO_MEDIA);
        // One recording follows the other, and the first the last.
        WAIT_FOR(list(Recordings)->currentRow() == 1);
        WAIT_FOR(list(Recordings)->currentRow() == 0);
    }

    void graphAndMapCanGo()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101120000.MP4"_s);
        open(card);
        m_window->resize(1024, 640);
        WAIT_FOR(m_window->size() == QSize(1024, 640)); // nothing in it needs more
        auto* panes = m_window->findChild<LowerPanes*>();
        auto* graph = m_window->findChild<GraphViewController*>();
        auto* map = m_window->findChild<MapVewController*>();
        QVERIFY(graph->isVisible() && map->isVisible() && frontPane()->isVisible());
        const int height = frontPane()->height();
        trigger(MainWindow::tr("&Graph"));
        QVERIFY(!graph->isVisible() && map->isVisible());
        trigger(MainWindow::tr("M&ap"));
        QVERIFY(!panes->isVisible());
        WAIT_FOR(frontPane()->height() >= height + panes->minimumHeight());
        // The next window begins as this one ends.
        m_window->close();
        endWindow();
        makeWindow();
        open(card);
        panes = m_window->findChild<LowerPanes*>();
        QVERIFY(!panes->isVisible());
        trigger(MainWindow::tr("&Graph"));
        trigger(MainWindow::tr("M&ap"));
        QVERIFY(panes->isVisible());
        // While the bar is away, too.
        QTest::keyClick(m_window.get(), Qt::Key_F);
        trigger(MainWindow::tr("&Graph"));
        trigger(MainWindow::tr("M&ap"));
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        const auto* bar = m_window->findChild<TransportBar*>();
        WAIT_FOR(!m_window->isFullScreen() && bar->height() >= bar->sizeHint().height());
        QVERIFY(bar->parentWidget()->height() >= bar->height());
    }

private:
    void trigger(const QString& text)
    {
        for (QAction* action : m_window->findChildren<QAction*>()) {
            if (action->text() == text && action->isCheckable())
                return action->trigger();
        }
        QFAIL(qPrintable(text));
    }
    /// What the readout shows under a name.
    QString reading(const char* name) const { return named<QLabel>(m_window.get(), ReadoutBar::tr(name))->text(); }
    QStringList texts(List which, int role) const
    {
        const QAbstractItemModel* model = list(which)->model();
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row)
            result.push_back(model->index(row, 0).data(role).toString());
        return result;
    }
};

int main(int argc, char* argv[])
{
    // As on the smallest computers: painting must not share its threads with jobs that wait for the window.
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    return runWithWindows<MainWindowTest>(argc, argv);
}

#include "MainWindowTest.moc"

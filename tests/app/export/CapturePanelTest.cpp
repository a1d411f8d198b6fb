#include "app/export/CapturePanel.h"

#include "../WindowParts.h"
#include "app/export/TargetPlace.h"
#include "export/ExportDates.h"
#include "media/CustomPointAnnotation.h"
#include "platform/files/Files.h"
#include "platform/image/ImageProperties.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoItem.h"
#include "playback/OptionPopover.h"
#include "views/map/MapVewController.h"

#include <QAbstractButton>
#include <QAction>
#include <QFileDialog>
#include <QMessageBox>

#include <cmath>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// The camera button of a real window with a playable card.
class CapturePanelTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_card = m_folder.filePath(u"card"_s);
        QVERIFY(makeSampleCard(m_card, 2, 4));
    }

    void init()
    {
        m_pictures = std::make_unique<CardBuilder>(u"pictures"_s);
        m_pictures->folder(u""_s);
        UserDefaults::shared().setValue(u"CaptureFolder"_s, m_pictures->root());
        makeWindow();
        QVERIFY(m_window->openCard(m_card));
        WAIT_FOR(frontPane()->isPlaying() && marker() && rearPane()->isPlaying());
    }

    void cleanup() { endWindow(); }

    void names_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("saved");
        const QString jpg = u"jpg"_s;
        QTest::newRow("none") << u"/a.b/c"_s << jpg << u"/a.b/c.jpg"_s;
        QTest::newRow("capitals") << u"/c.JPEG"_s << u"png"_s << u"/c.JPEG"_s;
        QTest::newRow("another") << u"/c.tiff"_s << u"png"_s << u"/c.tiff.png"_s;
        QTest::newRow("a date") << u"/14. Juni 2025"_s << jpg << u"/14. Juni 2025.jpg"_s;
        QTest::newRow("nothing but it") << u"/.jpg"_s << jpg << u"/.jpg.jpg"_s;
    }
    void names()
    {
        QFETCH(QString, name);
        QFETCH(QString, extension);
        QTEST(CapturePanel::withPictureExtension(name, extension), "saved");
    }

    void aPictureIsSaved()
    {
        QFileDialog* dialog = pressed(frontPane());
        QVERIFY(!frontPane()->isPlaying() && !rearPane()->isPlaying());
        const Instant date(std::chrono::milliseconds(std::llround(controller().userDate() * 1000)));
        const QString path = m_pictures->path(asFileName(captureImageFileName(date)) + u".jpg"_s);
        QCOMPARE(dialog->selectedFiles(), QStringList{path});
        const double latitude = std::abs(marker()->coordinate.latitude);
        static_cast<QDialog*>(dialog)->accept();
        // The other camera's picture gets another name at once.
        dialog = pressed(rearPane());
        const QString second = path.chopped(4) + u" 2.jpg"_s;
        QCOMPARE(dialog->selectedFiles(), QStringList{second});
        static_cast<QDialog*>(dialog)->accept();
        WAIT_FOR(QFile::exists(path) && QFile::exists(second));
        WAIT_FOR(m_window->findChild<OptionPopover*>());
        QCOMPARE(QImage(path).size(), QSize(320, 180));
        const QVariantMap gps = imageProperties(path)->value(u"{GPS}"_s).toMap();
        QVERIFY(std::abs(gps.value(u"Latitude"_s).toDouble() - latitude) < 1e-6);
        QCOMPARE(QImage(second).size(), rearPane()->currentItem()->asset()->trackSize());
        dialog = pressed(frontPane());
        QCOMPARE(dialog->selectedFiles(), QStringList{path.chopped(4) + u" 3.jpg"_s});
        dialog->reject();
        QCOMPARE(files::names(m_pictures->root()).size(), 2U);
    }

    void placesThatNeedAWord_data()
    {
        QTest::addColumn<QString>("place"); // in the card or the folder of pictures
        QTest::addColumn<QString>("says");
        QTest::newRow("card") << u"NORMAL/new"_s << CapturePanel::tr("The card is never changed.");
        QTest::newRow("there") << u"old"_s << CapturePanel::tr("“%1” is there already.").arg(u"old.jpg"_s);
        QTest::newRow("gone") << u"gone/new"_s << CapturePanel::tr("The picture couldn't be saved.");
    }
    void placesThatNeedAWord()
    {
        QFETCH(QString, place);
        QFETCH(QString, says);
        const bool isOnCard = place.startsWith(u"NORMAL"_s);
        const bool isThere = QFile::exists(m_pictures->file(u"old.jpg"_s, "old")) && place == u"old";
        const QString path = isOnCard ? m_card + u'/' + place : m_pictures->path(place);
        m_pictures->folder(u"gone"_s);
        QDialog* dialog = pressed(rearPane());
        static_cast<QFileDialog*>(dialog)->selectFile(path);
        QVERIFY(QDir().rmdir(m_pictures->path(u"gone"_s)));
        dialog->accept();
        WAIT_FOR(box());
        QCOMPARE(box()->text(), says);
        box()->reject();
        QVERIFY(!files::exists(path + u".jpg"_s) || isThere);
        dialog = panel();
        QCOMPARE(dialog != nullptr, isOnCard || isThere); // asked again
        if (!dialog)
            return;
        dialog->accept();
        if (isThere) {
            QCOMPARE(QFile(path + u".jpg"_s).size(), 3);
            for (QAbstractButton* button : box()->buttons()) {
                if (button->text() == CapturePanel::tr("Replace"))
                    button->click();
            }
        }
        WAIT_FOR(m_window->findChild<OptionPopover*>());
        QVERIFY(!QImage(m_pictures->path(files::nameOf(path)) + u".jpg"_s).isNull());
    }

private:
    const CustomPointAnnotation* marker() const { return m_window->findChild<MapVewController*>()->userLocation(); }
    QMessageBox* box() const { return visible<QMessageBox>(); }
    QFileDialog* panel() const { return visible<QFileDialog>(); }
    template<typename Dialog>
    Dialog* visible() const
    {
        for (Dialog* dialog : m_window->findChildren<Dialog*>()) {
            if (dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }
    QFileDialog* pressed(ZoomPlayerViewController* pane) const
    {
        pane->snapButton()->trigger();
        return panel();
    }

    QTemporaryDir m_folder;
    QString m_card;
    std::unique_ptr<CardBuilder> m_pictures;
};

int main(int argc, char* argv[])
{
    return runWithWindows<CapturePanelTest>(argc, argv);
}
#include "CapturePanelTest.moc"

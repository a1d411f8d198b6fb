#include "app/export/CardJobs.h"

#include "JobParts.h"
#include "app/export/ExportSheet.h"
#include "app/export/ProgressSheet.h"
#include "platform/files/Files.h"

#include <QAction>
#include <QDir>
#include <QPushButton>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class CardJobsTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        for (int i = 0; i < 3; ++i)
            m_card->file(u"NORMAL/20010112000%1.MP4"_s.arg(i));
        m_disk = std::make_unique<CardBuilder>(u"disk"_s);
        m_disk->folder(u"."_s);
        makeWindow();
    }
    void cleanup() { endWindow(); }

    void onlyWithRecordingsAndWithoutAnotherSheet()
    {
        const QList<QAction*> actions = {jobs().exportAction(), jobs().backUpAction()};
        QVERIFY(!actions[0]->isEnabled() && !actions[1]->isEnabled());
        CardBuilder empty;
        empty.folder(u"NORMAL"_s);
        open(empty);
        QVERIFY(!actions[0]->isEnabled() && !actions[1]->isEnabled());
        open(*m_card);
        for (QAction* action : actions) {
            QVERIFY(action->isEnabled());
            QVERIFY(controller().canReloadMedia());
            action->trigger();
            QVERIFY(jobs().isActive() && !controller().canReloadMedia());
            QVERIFY(!actions[0]->isEnabled() && !actions[1]->isEnabled());
            QTest::keyClick(shownBy<QDialog>(m_window.get()), Qt::Key_Escape);
            QVERIFY(!jobs().isActive() && controller().canReloadMedia());
        }
        QMessageBox other(m_window.get());
        other.open();
        actions[0]->trigger();
        QVERIFY(!jobs().isActive());
    }

    void exportsAndSaysHowItWent_data()
    {
        QTest::addColumn<bool>("works");
        QTest::newRow("works") << true;
        QTest::newRow("fails") << false;
    }
    void exportsAndSaysHowItWent()
    {
        QFETCH(bool, works);
        open(*m_card);
        jobs().exportAction()->trigger();
        auto* sheet = shownBy<ExportSheet>(m_window.get());
        m_disk->folder(u"a"_s);
        sheet->findChild<PathField*>()->setPath(m_disk->path(u"a/b.gpx"_s));
        sheet->accept();
        auto* progress = shownBy<ProgressSheet>(m_window.get());
        QVERIFY(progress);
        if (!works)
            QVERIFY(QDir(m_disk->path(u"a"_s)).removeRecursively());
        WAIT_FOR(!jobs().isJobRunning());
        const QString three = QLocale().toString(3);
        QCOMPARE(progress->countText(), ProgressSheet::tr("%1 of %2", "items").arg(three, three));
        QCOMPARE(progress->problemText().isEmpty(), works);
        QCOMPARE(files::exists(m_disk->path(u"a/b.gpx"_s)), works);
        QCOMPARE(isShown(progress, ProgressSheet::tr("&Show in Folder")), works);
        progress->activateWindow();
        QTest::keyClick(progress, Qt::Key_Return);
        QVERIFY(!progress->isVisible() && !jobs().isActive() && controller().canReloadMedia());
    }

    void cancelAnswersAtOnce()
    {
        open(*m_card);
        beginBackUp(m_window.get(), m_disk->root());
        QVERIFY(!QApplication::activeModalWidget());
        QTest::keyClick(shownBy<ProgressSheet>(m_window.get()), Qt::Key_Return); // which cancels nothing
        QVERIFY(jobs().isJobRunning());
        QTest::keyClick(shownBy<ProgressSheet>(m_window.get()), Qt::Key_Escape);
        QVERIFY(!jobs().isActive() && !jobs().isJobRunning() && controller().canReloadMedia());
        WAIT_FOR(BackgroundQueue::waitForDone(0));
        QVERIFY(files::names(m_disk->root()).empty());
    }

    void closingAsks()
    {
        open(*m_card);
        beginBackUp(m_window.get(), m_disk->root());
        m_window->close();
        m_window->close(); // asks once
        QCOMPARE(m_window->findChildren<QMessageBox*>().size(), 1);
        QTest::keyClick(shownBy<QMessageBox>(m_window.get()), Qt::Key_Escape);
        QVERIFY(m_window->isVisible() && jobs().isJobRunning());
        m_window->close();
        answer(m_window.get(), QMessageBox::DestructiveRole);
        QVERIFY(!m_window->isVisible() && !jobs().isJobRunning() && !jobs().isActive());
    }

    void theQuestionGoesWithTheJob()
    {
        open(*m_card);
        beginBackUp(m_window.get(), m_disk->root());
        m_window->close();
        QVERIFY(shownBy<QMessageBox>(m_window.get()));
        WAIT_FOR(!jobs().isJobRunning());
        QVERIFY(!shownBy<QMessageBox>(m_window.get()) && m_window->isVisible());
        m_window->close(); // nothing to ask
        QVERIFY(!m_window->isVisible() && !jobs().isActive());
    }

    void aCardThatReturnsWaits()
    {
        open(*m_card);
        jobs().exportAction()->trigger();
        QVERIFY(!open(*m_disk)); // and nothing has changed
        QCOMPARE(list(Recordings)->model()->rowCount(), 3);
        m_card->file(u"NORMAL/200101120009.MP4"_s);
        Q_EMIT m_window->findChild<CardWatch*>()->returned(m_card->root());
        QCOMPARE(list(Recordings)->model()->rowCount(), 3);
        shownBy<ExportSheet>(m_window.get())->reject();
        QVERIFY(controller().canReloadMedia());
        QCOMPARE(list(Recordings)->model()->rowCount(), 4);
    }

private:
    CardJobs& jobs() const { return m_window->jobs(); }
    static bool isShown(const QWidget* sheet, const QString& buttonText)
    {
        const QList<QPushButton*> buttons = sheet->findChildren<QPushButton*>();
        return std::any_of(buttons.begin(), buttons.end(), [&](const QPushButton* button) {
            return button->text() == buttonText && button->isVisible();
        });
    }

    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<CardBuilder> m_disk;
};

int main(int argc, char* argv[])
{
    return runWithWindows<CardJobsTest>(argc, argv);
}

#include "CardJobsTest.moc"

#include "app/export/ExportSheet.h"

#include "JobParts.h"
#include "media/DCFInfo.h"
#include "platform/files/Files.h"

#include <QComboBox>
#include <QFileDialog>
#include <QRadioButton>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class ExportSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        m_disk = std::make_unique<CardBuilder>(u"disk"_s);
        m_disk->folder(u"."_s);
        m_recordings.clear();
        for (int i = 0; i < 3; ++i) {
            const QString path = u"NORMAL/2025061423590%1.MP4"_s.arg(i);
            m_card->file(path, "x", utc(2025, 6, 14, 23, 59, i));
            m_recordings.push_back(std::make_shared<DCFInfo>(m_card->root(), path));
        }
        UserDefaults::shared().setValue(keys::exportFolder, m_disk->root());
        m_chosen.clear();
        makeSheet(0);
    }
    void cleanup() { m_sheet.reset(); }

    void presetsTheRecordings_data()
    {
        QTest::addColumn<size_t>("selected");
        QTest::addColumn<bool>("isEnabled");
        QTest::addColumn<size_t>("exported");
        QTest::newRow("none") << size_t(0) << false << size_t(3);
        QTest::newRow("the one in view") << size_t(1) << true << size_t(3);
        QTest::newRow("several") << size_t(2) << true << size_t(2);
    }
    void presetsTheRecordings()
    {
        QFETCH(size_t, selected);
        makeSheet(selected);
        const QList<QRadioButton*> choices = m_sheet->findChildren<QRadioButton*>();
        QTEST(choices[0]->isEnabled(), "isEnabled");
        QVERIFY(choices[0]->text().contains(u'(' + QLocale().toString(selected) + u')'));
        defaultButton(m_sheet.get())->click();
        QTEST(m_chosen.size(), "exported");
        QVERIFY(!m_sheet->isVisible());
    }

    void proposesAFreeName()
    {
        // The day is the recorder's, whatever the zone.
        QCOMPARE(m_sheet->targetPath(), m_disk->path(u"card 2025-06-14.kml"_s));
        m_disk->file(u"card 2025-06-14.kml"_s);
        makeSheet(0);
        QCOMPARE(m_sheet->targetPath(), m_disk->path(u"card 2025-06-14 2.kml"_s));
        defaultButton(m_sheet.get())->click();
        QCOMPARE(m_path, m_disk->path(u"card 2025-06-14 2.kml"_s));
        UserDefaults::shared().setValue(keys::exportFolder, u"/gone"_s);
        makeSheet(0);
        QVERIFY(files::isFolder(files::folderOf(m_sheet->targetPath())));
    }

    void formatAndExtensionAreOne()
    {
        format()->setCurrentIndex(2);
        QCOMPARE(m_sheet->targetPath(), m_disk->path(u"card 2025-06-14.gpx"_s));
        type(u"/b.KMZ"_s);
        QCOMPARE(format()->currentText(), u"KMZ"_s);
        type(u"/b.gp"_s); // while it is being typed
        QCOMPARE(format()->currentText(), u"KMZ"_s);
        QCOMPARE(m_sheet->targetPath(), m_disk->path(u"b.gp.kmz"_s));
        type(u"/b.gpx"_s);
        QCOMPARE(format()->currentText(), u"GPX"_s);
        format()->setCurrentIndex(0);
        QCOMPARE(line()->text(), m_disk->path(u"b.kml"_s));
    }

    void refusesWhatCannotBe()
    {
        m_disk->link(u"card"_s, files::nativePath(m_card->root()));
        for (const QString& name : {u""_s, u"/"_s, u"/gone/a.gpx"_s, u"/card/a.gpx"_s}) {
            type(name);
            if (name.isEmpty())
                line()->clear();
            QVERIFY2(!defaultButton(m_sheet.get())->isEnabled(), qPrintable(name));
            QCOMPARE(problemOf(m_sheet.get()).isEmpty(), name.size() < 2);
            m_sheet->accept(); // as Return does
            QVERIFY(m_path.isEmpty() && m_sheet->isVisible());
        }
        type(u"/a.gpx"_s);
        QVERIFY(problemOf(m_sheet.get()).isEmpty());
        m_sheet->accept();
        QCOMPARE(m_path, m_disk->path(u"a.gpx"_s));
    }

    void asksBeforeReplacing()
    {
        m_disk->file(u"a.kml"_s);
        type(u"/a.kml"_s);
        defaultButton(m_sheet.get())->click();
        QVERIFY(m_path.isEmpty() && m_sheet->isVisible());
        QTest::keyClick(shownBy<QMessageBox>(m_sheet.get()), Qt::Key_Return); // doesn't replace by mistake
        QVERIFY(m_path.isEmpty() && m_sheet->isVisible());
        defaultButton(m_sheet.get())->click();
        answer(m_sheet.get(), QMessageBox::AcceptRole);
        QCOMPARE(m_path, m_disk->path(u"a.kml"_s));
    }

    void asksOnceWhenThePanelDid()
    {
        m_disk->file(u"a.gpx"_s);
        for (QPushButton* button : m_sheet->findChildren<QPushButton*>()) {
            if (button->text() == PathField::tr("&Browse…"))
                button->click();
        }
        auto* panel = m_sheet->findChild<QFileDialog*>();
        QVERIFY(panel && panel->isVisible());
        QCOMPARE(panel->defaultSuffix(), u"kml"_s);
        Q_EMIT panel->fileSelected(m_disk->path(u"a.gpx"_s));
        QCOMPARE(format()->currentText(), u"GPX"_s);
        defaultButton(m_sheet.get())->click();
        QCOMPARE(m_path, m_disk->path(u"a.gpx"_s));
    }

private:
    void makeSheet(size_t selected)
    {
        const auto end = m_recordings.begin() + static_cast<std::ptrdiff_t>(selected);
        m_sheet = std::make_unique<ExportSheet>(MediaLibrary::DCFList(m_recordings.begin(), end), m_recordings,
                                                m_card->root(), nullptr);
        m_sheet->setAttribute(Qt::WA_DeleteOnClose, false);
        m_path.clear();
        connect(m_sheet.get(), &ExportSheet::chosen, this, [this](const auto& recordings, const QString& path) {
            m_chosen = recordings;
            m_path = path;
        });
        m_sheet->open();
    }
    QComboBox* format() const { return m_sheet->findChild<QComboBox*>(); }
    QLineEdit* line() const { return m_sheet->findChild<PathField*>()->line(); }
    void type(const QString& name) { line()->setText(m_disk->root() + name); }
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<CardBuilder> m_disk;
    std::unique_ptr<ExportSheet> m_sheet;
    MediaLibrary::DCFList m_recordings;
    MediaLibrary::DCFList m_chosen;
    QString m_path;
};

int main(int argc, char* argv[])
{
    return runWithWindows<ExportSheetTest>(argc, argv);
}

#include "ExportSheetTest.moc"

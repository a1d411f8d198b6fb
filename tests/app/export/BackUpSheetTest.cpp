#include "app/export/BackUpSheet.h"

#include "JobParts.h"
#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "platform/files/Files.h"
#include "platform/text/UnitText.h"

#include <QCheckBox>
#include <QRadioButton>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

enum Option { AllPicture, NoPicture, OnlyPicture };

} // namespace

class BackUpSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        m_disk = std::make_unique<CardBuilder>(u"disk"_s);
        m_disk->file(u"full/file"_s);
        m_disk->folder(u"empty"_s);
        m_recordings.clear();
        for (int i = 0; i < 2; ++i) {
            m_recordings.push_back(std::make_shared<DCFInfo>(m_card->root(), u"NORMAL/2025061423590%1.MP4"_s.arg(i)));
            m_recordings.back()->fileSize = 1'000'000;
            const QString path = u"PICTURE/2025061423590%1.JPG"_s.arg(i);
            m_card->picture(path);
            auto picture = std::make_shared<PictureInfo>(m_card->root(), path);
            picture->fileSize = 20'000;
            m_recordings.back()->pictures.push_back(picture);
        }
        UserDefaults::shared().setValue(keys::backUpFolder, m_disk->root());
        makeSheet(1);
    }
    void cleanup() { m_sheet.reset(); }

    void optionsDecideWhatIsCopied_data()
    {
        QTest::addColumn<Option>("option");
        QTest::addColumn<size_t>("selected");
        QTest::addColumn<size_t>("items");
        QTest::addColumn<quint64>("bytes");
        QTest::newRow("all pictures") << AllPicture << size_t(1) << size_t(3) << quint64(1'040'000);
        QTest::newRow("no picture, none selected") << NoPicture << size_t(0) << size_t(0) << quint64(0);
        QTest::newRow("only pictures") << OnlyPicture << size_t(2) << size_t(2) << quint64(40'000);
    }
    void optionsDecideWhatIsCopied()
    {
        QFETCH(Option, option);
        QFETCH(size_t, selected);
        QFETCH(size_t, items);
        makeSheet(selected);
        m_sheet->findChildren<QRadioButton*>().at(option)->setChecked(true);
        QFETCH(quint64, bytes);
        QVERIFY(shows(dataSizeText(bytes)));
        QCOMPARE(shows(BackUpSheet::tr("%1 of %2 recordings are selected; Ctrl+A in the list selects all.")
                           .arg(QLocale().toString(selected), QLocale().toString(2))),
                 selected < 2);
        // Nothing is what nobody would want to copy.
        QCOMPARE(execute()->isEnabled(), items > 0);
        QCOMPARE(problemOf(m_sheet.get()) == BackUpSheet::tr("No recording is selected."), items == 0);
        m_sheet->accept();
        QCOMPARE(m_items.size(), items);
        QCOMPARE(m_sheet->isVisible(), items == 0);
    }

    void whatDoesNotFitIsNotBegun()
    {
        m_recordings[0]->fileSize = quint64(1) << 60;
        makeSheet(1);
        QVERIFY(!execute()->isEnabled());
        m_sheet->accept();
        QVERIFY(m_items.empty() && m_sheet->isVisible());
        QCOMPARE(reds().size(), 1);
        QVERIFY(reds().front()->toolTip().contains(u"1 MiB"_s));
        m_sheet->findChildren<QRadioButton*>().at(OnlyPicture)->setChecked(true);
        QVERIFY(reds().isEmpty());
        execute()->click();
        QCOMPARE(m_items.size(), size_t(2));
    }

    void proposesANewFolder()
    {
        const QString plain = files::nameOf(m_sheet->targetPath());
        QCOMPARE(m_sheet->targetPath(), m_disk->path(plain));
        m_disk->folder(u"empty/"_s + plain);
        m_disk->folder(u"other/own"_s);
        const auto nameIn = [&](const QString& folder) {
            folderField()->setPath(m_disk->path(folder));
            return files::nameOf(m_sheet->targetPath());
        };
        QCOMPARE(nameIn(u"empty"_s), plain + u" 2"_s);
        QCOMPARE(nameIn(u"other"_s), plain);
        nameField()->setText(u"own"_s);
        QCOMPARE(nameIn(u"empty"_s), u"own"_s);
        QCOMPARE(nameIn(u"other"_s), u"own"_s);
    }

    void keepsWhatIsChosen()
    {
        auto* readBack = m_sheet->findChild<QCheckBox*>();
        QVERIFY(!readBack->isChecked());
        readBack->setChecked(true);
        place(m_disk->root(), u"new"_s);
        execute()->click();
        QCOMPARE(m_path, m_disk->path(u"new"_s));
        QCOMPARE(m_readBack, ReadBack::Compare);
        makeSheet(1);
        QVERIFY(m_sheet->findChild<QCheckBox*>()->isChecked());
        UserDefaults::shared().setValue(keys::backUpReadBack, false);
    }

    void refusesAndAllows_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isAllowed");
        QTest::addColumn<bool>("isExplained");
        QTest::newRow("no name") << u"disk"_s << QString() << false << false;
        QTest::newRow("two names") << u"disk"_s << u"a/b"_s << false << true;
        QTest::newRow("the card") << u"."_s << u"card"_s << false << true;
        QTest::newRow("a new one") << u"disk"_s << u"new"_s << true << false;
        QTest::newRow("an empty one") << u"disk"_s << u"empty"_s << true << false;
    }
    void refusesAndAllows()
    {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(bool, isAllowed);
        m_card->folder(u"NORMAL"_s);
        m_disk->link(u"disk"_s, ".");
        QVERIFY(QFile::link(m_card->root(), m_disk->path(u"card"_s)));
        place(m_disk->path(folder), name);
        QCOMPARE(execute()->isEnabled(), isAllowed);
        QTEST(!problemOf(m_sheet.get()).isEmpty(), "isExplained");
        m_sheet->accept(); // as Return does
        QCOMPARE(m_items.empty(), !isAllowed);
    }

    void asksBeforeAFilledFolderIsUsed()
    {
        place(m_disk->root(), u"full"_s);
        for (const bool agrees : {false, true}) {
            execute()->click();
            const auto* box = shownBy<QMessageBox>(m_sheet.get());
            QVERIFY(box && m_items.empty() && m_sheet->isVisible());
            QVERIFY(!box->informativeText().isEmpty()); // what a failure would do
            QCOMPARE(box->buttonRole(box->defaultButton()), QMessageBox::RejectRole);
            answer(m_sheet.get(), agrees ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
        }
        QCOMPARE(m_path, m_disk->path(u"full"_s));
    }

private:
    void makeSheet(size_t selected)
    {
        const auto end = m_recordings.begin() + static_cast<std::ptrdiff_t>(selected);
        m_sheet = std::make_unique<BackUpSheet>(MediaLibrary::DCFList(m_recordings.begin(), end), m_recordings,
                                                m_card->root(), nullptr);
        m_sheet->setAttribute(Qt::WA_DeleteOnClose, false);
        m_items.clear();
        m_path.clear();
        connect(m_sheet.get(), &BackUpSheet::chosen, this,
                [this](const BackUpList& items, const QString& path, ReadBack readBack) {
                    m_items = items;
                    m_path = path;
                    m_readBack = readBack;
                });
        m_sheet->open();
    }
    void place(const QString& folder, const QString& name)
    {
        folderField()->setPath(folder);
        nameField()->setText(name);
    }
    PathField* folderField() const { return m_sheet->findChild<PathField*>(); }
    QLineEdit* nameField() const
    {
        const QList<QLineEdit*> lines = m_sheet->findChildren<QLineEdit*>();
        return lines.front() == folderField()->line() ? lines.back() : lines.front();
    }
    bool shows(const QString& text) const
    {
        const QList<QLabel*> labels = m_sheet->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->text() == text; });
    }
    QList<QLabel*> reds() const
    {
        QList<QLabel*> result;
        for (QLabel* label : m_sheet->findChildren<QLabel*>()) {
            if (label->foregroundRole() == QPalette::BrightText && label != m_sheet->findChild<ProblemLabel*>())
                result.push_back(label);
        }
        return result;
    }
    QPushButton* execute() const { return defaultButton(m_sheet.get()); }

    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<CardBuilder> m_disk;
    std::unique_ptr<BackUpSheet> m_sheet;
    MediaLibrary::DCFList m_recordings;
    BackUpList m_items;
    QString m_path;
    ReadBack m_readBack = ReadBack::No;
};

int main(int argc, char* argv[])
{
    return runWithWindows<BackUpSheetTest>(argc, argv);
}

#include "BackUpSheetTest.moc"

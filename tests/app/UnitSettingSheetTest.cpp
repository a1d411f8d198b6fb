#include "app/settings/UnitSettingSheet.h"

#include "WindowParts.h"
#include "app/settings/RecorderSettings.h"
#include "app/settings/SettingRow.h"
#include "app/settings/SettingTexts.h"
#include "app/settings/VolumeChooser.h"
#include "platform/files/Files.h"
#include "platform/text/Localization.h"
#include "platform/text/UnitText.h"
#include "settings/SettingRecords.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>
#include <QWheelEvent>

#include <algorithm>

namespace cardreel::test {

using namespace Qt::StringLiterals;

namespace {

const QString binFile = u"SYSTEM/settings.bin"_s;

/// What a menu or a row of buttons shows.
QString selectedIn(const QWidget* control)
{
    if (const auto* menu = qobject_cast<const QComboBox*>(control))
        return menu->currentText();
    for (const QPushButton* step : control->findChildren<QPushButton*>()) {
        if (step->isChecked())
            return step->text();
    }
    return {};
}

MountedVolume volume(const QString& name, qint64 bytesTotal = -1, qint64 bytesFree = -1)
{
    MountedVolume made;
    made.name = name;
    made.rootPath = u"/media/"_s + name;
    made.bytesTotal = bytesTotal;
    made.bytesFree = bytesFree;
    return made;
}

} // namespace

class UnitSettingSheetTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<RecorderSettings> m_settings;

    /// Whether the sheet came.
    bool edit(const SettingFileInfo& info)
    {
        QByteArray bytes = fileOf(info);
        if (info.modelID == SettingModel::model1000)
            bytes.append(2304 - bytes.size(), '\0'); // as long as the camera's own
        m_card->file(binFile, bytes);
        m_settings->edit(m_card->root());
        return QTest::qWaitFor([this] { return sheet() != nullptr; }, patienceMs) &&
               QTest::qWaitForWindowActive(sheet());
    }
    UnitSettingSheet* sheet() const { return m_window->findChild<UnitSettingSheet*>(); }
    VolumeChooser* chooser() const { return m_window->findChild<VolumeChooser*>(); }
    QMessageBox* box() const { return m_window->findChild<QMessageBox*>(); }
    /// A key for one of the settings.
    void press(QStringView field, Qt::Key key)
    {
        control(field)->setFocus();
        QTest::keyClick(sheet()->focusWidget(), key);
    }
    QWidget* control(QStringView field) const { return sheet()->row(field)->control(); }
    QAbstractButton* button(QDialogButtonBox::ButtonRole role) const
    {
        const auto* buttons = sheet()->findChild<QDialogButtonBox*>();
        for (QAbstractButton* each : buttons->buttons()) {
            if (buttons->buttonRole(each) == role)
                return each;
        }
        return nullptr;
    }
    /// Waits for the next alert and answers it. What it said.
    QString answer(Qt::Key key)
    {
        if (!QTest::qWaitFor([this] { return box() && box()->isVisible(); }, patienceMs))
            return u"nothing was asked"_s;
        const QPointer<QMessageBox> asked = box();
        const QString text = asked->text();
        QTest::keyClick(asked, key);
        return QTest::qWaitFor([&] { return !asked; }, patienceMs) ? text : u"it wasn't answered"_s;
    }

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        m_window = std::make_unique<QWidget>();
        m_window->resize(1000, 700);
        m_window->show();
        m_settings = std::make_unique<RecorderSettings>(*m_window);
    }
    void cleanup()
    {
        m_settings.reset();
        m_window.reset();
    }

    void everySettingHasItsPlace()
    {
        QStringList shown;
        for (const SettingTexts::Group& group : SettingTexts::groups()) {
            for (const SettingField* field : group.fields) {
                QVERIFY2(field, qPrintable(group.title));
                shown += QString::fromLatin1(field->name);
            }
        }
        QStringList known;
        for (const SettingField& field : settingFields())
            known += QString::fromLatin1(field.name);
        std::sort(shown.begin(), shown.end());
        std::sort(known.begin(), known.end());
        QCOMPARE(shown, known);
    }

    void aModelsSettings_data()
    {
        QTest::addColumn<QString>("missing");
        QTest::addColumn<QString>("onlyShown");
        QTest::newRow("1234")
            << u"overwriteSaveJunction parkingRecording parkingRecordingPlus playbackVolume childLock "
               "batteryConnect isPasswordReset version"_s
            << QString();
        QTest::newRow("0D00") << u"overwriteSaveJunction parkingRecording parkingRecordingPlus isPasswordReset"_s
                              << u"playbackVolume childLock batteryConnect"_s;
        const QString common =
            u"overwriteSaveJunction parkingRecording parkingRecordingPlus childLock batteryConnect"_s;
        QTest::newRow("0E00") << common << u"playbackVolume"_s;
        QTest::newRow("0F00") << common << u"playbackVolume"_s;
        QTest::newRow("1000") << u"parkingRecordingPlus playbackVolume childLock batteryConnect"_s
                              << u"overwriteSaveJunction parkingRecording"_s;
    }
    void aModelsSettings()
    {
        const QString model = QString::fromLatin1(QTest::currentDataTag());
        QVERIFY(edit(numberedRecord(model.toUShort(nullptr, 16))));
        QStringList missing, onlyShown;
        for (const SettingTexts::Group& group : SettingTexts::groups()) {
            for (const SettingField* field : group.fields) {
                const SettingRow* row = sheet()->row(QString::fromLatin1(field->name));
                if (!row->control())
                    missing += QString::fromLatin1(field->name);
                else if (!row->control()->isEnabled())
                    onlyShown += QString::fromLatin1(field->name);
            }
        }
        QTEST(missing.join(u' '), "missing");
        QTEST(onlyShown.join(u' '), "onlyShown");
        QVERIFY(sheet()->findChild<QLabel*>()->text().contains(model));
        QCOMPARE(selectedIn(control(u"timeZone")), u"UTC 00:00"_s);
    }

    void aValueThatIsNotKnownIsOfferedAndKept()
    {
        QVERIFY(edit(numberedRecord(SettingModel::model0E00))); // most of its values are none that a menu has
        QCOMPARE(selectedIn(control(u"videoQuality")), SettingTexts::unknownValue(10));
        QCOMPARE(selectedIn(control(u"sensitivityMovie")), SettingTexts::unknownValue(7));
        QCOMPARE(selectedIn(control(u"sensitivityParking")), u"4"_s);

        // Chosen away and back again.
        const QByteArray before = contentOf(m_card->path(binFile));
        press(u"videoQuality", Qt::Key_Home);
        QCOMPARE(selectedIn(control(u"videoQuality")), UnitSettingViewModel().videoQualityChoises.at(0));
        press(u"videoQuality", Qt::Key_End);
        QVERIFY(!sheet()->row(u"videoQuality")->isMarkedAsChanged());
        press(u"recordingStartTime", Qt::Key_Home);
        QTest::keyClick(sheet(), Qt::Key_Return);
        QCOMPARE(answer(Qt::Key_Return), localizedText("Save the settings?"));
        QCOMPARE(answer(Qt::Key_Return), localizedText("saved the setting"));
        QByteArray expected = before.mid(16, 11);
        expected[3] = 0; // recordingStartTime
        QCOMPARE(contentOf(m_card->path(binFile)).mid(16, 11), expected);
    }

    void whatIsEditedByKeyboardIsMarkedAndSaved()
    {
        const QSignalSpy finished(m_settings.get(), &RecorderSettings::finished);
        SettingFileInfo info;
        info.modelID = SettingModel::model0D00;
        info.sensitivityMovie = 1;
        info.notificationVolume = 3;
        info.playbackVolume = 4;
        info.version = u"1.04"_s;
        info.reserve = QByteArray(28, 'r');
        QVERIFY(edit(info));
        QCOMPARE(selectedIn(control(u"playbackVolume")), u"4"_s);
        press(u"videoQuality", Qt::Key_Down);
        press(u"overwriteSaveEvent", Qt::Key_Space);
        press(u"sensitivityMovie", Qt::Key_Right);
        press(u"notificationVolume", Qt::Key_Left);
        press(u"notificationVolume", Qt::Key_Left);
        QCOMPARE(selectedIn(control(u"sensitivityMovie")), u"3"_s);

        QStringList marked;
        for (const SettingField& field : settingFields()) {
            const SettingRow* row = sheet()->row(QString::fromLatin1(field.name));
            if (row->isMarkedAsChanged())
                marked += QString::fromLatin1(field.name);
        }
        QCOMPARE(marked, QStringList({u"sensitivityMovie"_s, u"overwriteSaveEvent"_s, u"videoQuality"_s,
                                      u"notificationVolume"_s}));
        const QWidget* step = control(u"sensitivityMovie")->focusProxy();
        QVERIFY(step->accessibleName().contains(SettingTexts::name(*settingField(u"sensitivityMovie"))));
        QVERIFY(step->accessibleDescription().contains(u"2")); // what it was

        QTest::keyClick(sheet(), Qt::Key_Return);
        QCOMPARE(answer(Qt::Key_Return), localizedText("Save the settings?"));
        QCOMPARE(answer(Qt::Key_Return), localizedText("saved the setting"));
        const QByteArray bytes = contentOf(m_card->path(binFile));
        QCOMPARE(bytes.mid(16, 12).toHex(' '), "00 00 00 00 00 00 02 00 01 01 01 04");
        QCOMPARE(bytes.mid(132, 28), info.reserve);
        WAIT_FOR(!sheet());
        QCOMPARE(finished.count(), 1);
        QVERIFY(!m_settings->isActive());
    }

    void leavingSavesNothing()
    {
        QVERIFY(edit(numberedRecord(SettingModel::model0F00)));
        const QByteArray before = contentOf(m_card->path(binFile));
        press(u"audioRecording", Qt::Key_Home);
        button(QDialogButtonBox::ResetRole)->click();
        QCOMPARE(answer(Qt::Key_Return), localizedText("Reset the setting to the initial value?"));
        QCOMPARE(selectedIn(control(u"sensitivityMovie")), u"4"_s);
        QCOMPARE(selectedIn(control(u"audioRecording")), UnitSettingViewModel().audioRecordingChoises.at(1));
        QTest::keyClick(sheet(), Qt::Key_Return);
        QCOMPARE(answer(Qt::Key_Escape), localizedText("Save the settings?"));
        QTest::keyClick(sheet(), Qt::Key_Escape);
        WAIT_FOR(!sheet());
        QVERIFY(!m_settings->isActive());
        QCOMPARE(contentOf(m_card->path(binFile)), before);
    }

    void aCardWithoutSettingsGetsTheFactorys()
    {
        m_settings->edit(m_card->root());
        QCOMPARE(answer(Qt::Key_Return), localizedText("Failed to load configuration file"));
        WAIT_FOR(sheet());
        QCOMPARE(selectedIn(control(u"notificationVolume")), u"2"_s);
        QTest::keyClick(sheet(), Qt::Key_Return);
        answer(Qt::Key_Return);
        QCOMPARE(answer(Qt::Key_Return), localizedText("Could not write to the configuration file"));
        QCOMPARE(answer(Qt::Key_Return), localizedText("saved the setting"));
        WAIT_FOR(!sheet());
    }

    void theKeyboardReachesWhatCanBeChanged()
    {
        QVERIFY(edit(numberedRecord(SettingModel::model1000)));
        QVERIFY(sheet()->frameGeometry().height() <= sheet()->screen()->availableSize().height());
        QList<const QWidget*> awaited; // from top to bottom
        for (const SettingTexts::Group& group : SettingTexts::groups()) {
            for (const SettingField* field : group.fields) {
                const QWidget* reached = sheet()->row(QString::fromLatin1(field->name))->control();
                if (reached && reached->isEnabled() && field->isEditable())
                    awaited += reached->focusProxy() ? reached->focusProxy() : reached;
            }
        }
        for (const QWidget* next : awaited) {
            QCOMPARE(sheet()->focusWidget(), next);
            QVERIFY2(next->visibleRegion().boundingRect() == next->rect(), qPrintable(next->accessibleName()));
            QTest::keyClick(sheet()->focusWidget(), Qt::Key_Tab);
        }
    }

    void theWheelChangesNothing()
    {
        QVERIFY(edit(numberedRecord(SettingModel::model0D00)));
        QWidget* menu = control(u"parkingRecordingTime");
        const QString before = selectedIn(menu);
        QWheelEvent down(menu->rect().center(), menu->mapToGlobal(menu->rect().center()), {}, {0, -120}, Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(menu, &down);
        QCOMPARE(selectedIn(menu), before);
        QVERIFY(!down.isAccepted());
    }

    void theChooserFollowsTheCards()
    {
        VolumeChooser chooser({}, m_window.get());
        const QAbstractButton* ok = chooser.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        QVERIFY(!ok->isEnabled());
        const MountedVolume first = volume(u"FIRST"_s, 32'000'000'000, 21'400'000'000);
        const MountedVolume second = volume(u"SECOND"_s);
        chooser.setVolumes({first});
        QCOMPARE(chooser.selectedPath(), first.rootPath);
        QVERIFY(ok->isEnabled());
        const auto* list = chooser.findChild<QTreeWidget*>();
        QCOMPARE(list->topLevelItem(0)->text(0), first.name);
        QCOMPARE(list->topLevelItem(0)->text(1), dataSizeText(32'000'000'000));
        QCOMPARE(list->topLevelItem(0)->text(2), dataSizeText(21'400'000'000));

        chooser.setVolumes({second, first});
        QCOMPARE(chooser.selectedPath(), first.rootPath);
        chooser.setVolumes({second});
        QCOMPARE(chooser.selectedPath(), second.rootPath);
        chooser.addFolder(u"/copied"_s);
        QCOMPARE(chooser.selectedPath(), u"/copied"_s);
        chooser.addFolder(second.rootPath); // is offered already
        QCOMPARE(chooser.selectedPath(), second.rootPath);
        QCOMPARE(chooser.entries().size(), 2);
        QVERIFY(chooser.entries().at(0) == second);
        chooser.setVolumes({});
        QVERIFY(ok->isEnabled()); // the folders are still there
    }

    void theChosenCardsSettingsOpen()
    {
        m_card->file(binFile, fileOf(numberedRecord(SettingModel::model0D00)));
        m_settings->chooseCard(m_card->root());
        QVERIFY(chooser());
        QCOMPARE(chooser()->selectedPath(), m_card->root());
        QVERIFY(QTest::qWaitForWindowActive(chooser()));
        QTest::keyClick(chooser()->focusWidget(), Qt::Key_Return);
        WAIT_FOR(sheet() && !chooser());
        m_settings->edit(u"/elsewhere"_s); // not while these are open
        QCOMPARE(m_window->findChildren<UnitSettingSheet*>().size(), 1);
        QVERIFY(sheet()->windowTitle().contains(files::nameOf(m_card->root())));
    }

    void theWindowMayGoAtAnyTime_data()
    {
        QTest::addColumn<int>("steps");
        QTest::newRow("card chosen") << 0;
        QTest::newRow("card read") << 1;
        QTest::newRow("sheet open") << 2;
        QTest::newRow("question asked") << 3;
        QTest::newRow("card written") << 4;
    }
    void theWindowMayGoAtAnyTime()
    {
        QFETCH(int, steps);
        m_card->file(binFile, fileOf(numberedRecord(SettingModel::model0D00)));
        m_settings->chooseCard(m_card->root());
        if (steps > 0)
            QTest::keyClick(chooser(), Qt::Key_Return);
        if (steps > 1)
            WAIT_FOR(sheet());
        if (steps > 2)
            QTest::keyClick(sheet(), Qt::Key_Return);
        if (steps > 3)
            QCOMPARE(answer(Qt::Key_Return), localizedText("Save the settings?"));
        m_settings.reset();
        QVERIFY(!sheet() && !chooser());
        m_window.reset();
        QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }, patienceMs));
        QVERIFY(contentOf(m_card->path(binFile)).size() == 256);
    }
};

} // namespace cardreel::test

int main(int argc, char* argv[])
{
    return cardreel::test::runWithWindows<cardreel::test::UnitSettingSheetTest>(argc, argv);
}

#include "UnitSettingSheetTest.moc"

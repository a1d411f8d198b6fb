#include "settings/SettingSession.h"

#include "platform/BackgroundThread.h"
#include "platform/files/Files.h"
#include "settings/SettingRecords.h"
#include "support/CardBuilder.h"
#include "support/Waiting.h"

#include <QFile>
#include <QTest>

#include <deque>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

using Answer = AlertPresenter::Answer;
constexpr Answer ok = Answer::FirstButton;
constexpr Answer cancel = Answer::SecondButton;

const QString bin = u"SYSTEM/settings.bin"_s;

/// Notes every alert and answers it as told, "OK" when told nothing; or keeps it open until answerLater().
class ScriptedPresenter : public AlertPresenter
{
public:
    explicit ScriptedPresenter(QStringList& log)
        : m_log(log)
    {
    }
    std::deque<Answer> answers;
    bool isHolding = false;

    void show(const Alert& alert, Answered answered) override
    {
        const QString parts =
            alert.informativeText.isEmpty() ? alert.message : alert.message + u'/' + alert.informativeText;
        m_log += u"%1 %2 [%3]"_s.arg(QChar(u"QCN"[static_cast<int>(alert.kind)]), parts, alert.buttons.join(u','));
        m_held = std::move(answered);
        if (isHolding)
            return;
        if (answers.empty())
            answers.push_back(ok);
        const Answer answer = answers.front();
        answers.pop_front();
        answerLater(answer);
    }
    void answerLater(Answer answer) { std::exchange(m_held, nullptr)(answer); }

private:
    QStringList& m_log;
    Answered m_held;
};

const QString askSave = u"Q Save the settings? [OK,Cancel]"_s;
const QString askReset = u"Q Reset the setting to the initial value? [OK,Cancel]"_s;
const QString askOverwrite =
    u"Q The settings on the card were changed by another program. Overwrite them? [OK,Cancel]"_s;
const QString loadFailed = u"C Failed to load configuration file/Apply the default settings [OK]"_s;
const QString writeFailed = u"C Could not write to the configuration file [OK]"_s;
const QString saved = u"N saved the setting [OK]"_s;

/// What happens to the settings on a card.
void alter(CardBuilder& card, const QByteArray& how)
{
    if (how == "removed" || how == "spoilt")
        QFile::remove(card.path(bin));
    if (how == "spoilt")
        card.folder(bin);
    if (how == "changed")
        card.file(bin, "another program's");
    if (how == "pulled")
        card.mountAgainAs(u"elsewhere"_s);
}

/// A visit to a card, everything at once.
struct Visit
{
    explicit Visit(const QByteArray& howFound = "ordinary")
        : presenter(log)
    {
        card.file(bin, fileOf(numberedRecord(0x0D00)));
        alter(card, howFound);
        SettingSession::Callbacks callbacks;
        callbacks.openEditor = [this](UnitSettingViewController&) { log += u"open"_s; };
        callbacks.closeEditor = [this] { log += u"close"_s; };
        callbacks.finished = [this](SettingSession::Outcome outcome) {
            log += u"end %1"_s.arg(static_cast<int>(outcome));
        };
        session = std::make_unique<SettingSession>(card.root(), presenter, callbacks, SettingSession::inlineRunner(),
                                                   SettingStore::Surroundings{stillClock, nullptr});
    }
    UnitSettingViewController& open()
    {
        session->open();
        return *session->controller();
    }

    QStringList log;
    ScriptedPresenter presenter;
    CardBuilder card;
    std::unique_ptr<SettingSession> session;
};

} // namespace

class SettingSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { BackgroundThread::wait(); }
    void recordIsCopiedBothWays()
    {
        QStringList log;
        ScriptedPresenter presenter(log);
        SettingFileInfo info = numberedRecord(0x0E00); // its bytes are no choices, and stay where nothing changes them
        info.timeZone = 540;
        info.passwordReset = 0xFF;
        UnitSettingViewController controller(presenter, nullptr, info);
        controller.viewDidLoad();
        UnitSettingViewModel& model = controller.viewModel();
        QCOMPARE(model.parkingRecordingTime, 1); // the file's recording time
        QCOMPARE(model.notificationVolume, 11);
        QCOMPARE(model.timeZone, 8);
        QVERIFY(model.isPasswordReset);
        QCOMPARE(model.version, u"1.04"_s);
        QCOMPARE(model.playbackVolume, 0); // not the record's
        model.parkingRecordingTime = 3;
        model.overwriteSaveEvent = false;
        model.timeZone = 13;
        model.isPasswordReset = false;
        model.version = UnitSettingViewModel::unknownVersion();
        model.playbackVolume = 1;
        model.overwriteSaveJunction = false;
        controller.currentSettingApplyToInfo();
        info.recordingTime = 3;
        info.overwriteSaveEvent = 0;
        info.timeZone = 3600;
        info.passwordReset = 0;
        info.version = u""_s;
        QVERIFY(controller.settingFileInfo() == info);
        QCOMPARE(model.version, QString());
    }

    void visitGoesThroughItsSteps_data()
    {
        QTest::addColumn<QByteArray>("howFound");
        QTest::addColumn<QByteArray>("meanwhile");
        QTest::addColumn<QByteArray>("buttons"); // save, cancel, reset
        QTest::addColumn<QByteArray>("answers"); // yes, no
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<bool>("isWritten");
        const QByteArray fine = "ordinary";
        const auto row = [](const char* what, const QByteArray& howFound, const QByteArray& meanwhile,
                            const char* buttons, const char* answers, const QStringList& expected,
                            bool isWritten = false) {
            QTest::newRow(what) << howFound << meanwhile << QByteArray(buttons) << QByteArray(answers) << expected
                                << isWritten;
        };
        const QString open = u"open"_s;
        const QString close = u"close"_s;
        const QStringList told{close, saved, u"end 0"_s};
        const QStringList failed{writeFailed, close, saved, u"end 1"_s};
        row("saved", fine, fine, "s", "y", QStringList{open, askSave} + told, true);
        row("not saved after all", fine, fine, "s", "n", {open, askSave});
        row("cancelled", fine, fine, "c", "", {open, close, u"end 2"_s});
        row("reset and cancelled", fine, fine, "rc", "y", {open, askReset, close, u"end 2"_s});
        row("nothing loaded", "removed", fine, "s", "yy", QStringList{loadFailed, open, askSave} + told, true);
        row("can't be written", "spoilt", fine, "s", "yy", QStringList{loadFailed, open, askSave} + failed);
        row("overwritten", fine, "changed", "s", "yy", QStringList{open, askSave, askOverwrite} + told, true);
        row("not overwritten", fine, "changed", "s", "yn", {open, askSave, askOverwrite});
        row("appeared", "removed", "changed", "s", "yyn", {loadFailed, open, askSave, askOverwrite});
        row("vanished", fine, "removed", "s", "yy", QStringList{open, askSave, askOverwrite} + told, true);
        row("pulled", fine, "pulled", "s", "y", QStringList{open, askSave} + failed);
    }

    void visitGoesThroughItsSteps()
    {
        QFETCH(QByteArray, howFound);
        QFETCH(QByteArray, meanwhile);
        QFETCH(QByteArray, buttons);
        QFETCH(QByteArray, answers);
        QFETCH(QStringList, expected);
        QFETCH(bool, isWritten);
        Visit visit(howFound);
        for (const char answer : answers)
            visit.presenter.answers.push_back(answer == 'y' ? ok : cancel);
        UnitSettingViewController& controller = visit.open();
        controller.viewModel().sensitivityMovie = 0;
        alter(visit.card, meanwhile);
        const QByteArray before = contentOf(visit.card.path(bin));
        for (const char button : buttons)
            button == 's'   ? controller.settingFinish()
            : button == 'c' ? controller.settingCancel()
                            : controller.settingReset();
        QCOMPARE(visit.log, expected);
        QVERIFY(visit.presenter.answers.empty());
        const QByteArray after = contentOf(visit.card.path(bin));
        QCOMPARE(after != before, isWritten);
        QVERIFY(!isWritten || after.at(22) == 0); // the sensitivity
    }

    void resetTouchesTheModelOnly()
    {
        Visit visit;
        UnitSettingViewController& controller = visit.open();
        const SettingFileInfo before = controller.settingFileInfo();
        visit.presenter.answers = {cancel, ok};
        controller.settingReset();
        QVERIFY(controller.viewModel() == controller.initialViewModel());
        controller.settingReset();
        QCOMPARE(controller.viewModel().notificationVolume, 2);
        QVERIFY(controller.settingFileInfo() == before);
    }

    void emptyRecordIsWrittenAfterAFailedLoad()
    {
        Visit visit("removed");
        visit.open().settingFinish();
        const auto written =
            QByteArray::fromHex("53455444 0000 00 1A0719 10053B 2B 0000 00 01 03 01 01 01 03 01 01 02 02");
        QCOMPARE(contentOf(visit.card.path(bin)).toHex(' '), written.toHex(' '));
    }

    void answersMayComeLate()
    {
        const QStringList asked{u"open"_s, askSave, askOverwrite, askOverwrite};
        for (int answered = 0; answered < 3; ++answered) {
            Visit visit;
            visit.presenter.isHolding = true;
            visit.open().settingFinish();
            for (int i = 0; i < answered; ++i) {
                visit.card.file(bin, i == 0 ? "once" : "twice");
                visit.presenter.answerLater(ok);
            }
            const QByteArray before = contentOf(visit.card.path(bin));
            visit.session.reset();
            visit.presenter.answerLater(ok);
            QCOMPARE(visit.log, asked.first(2 + answered));
            QCOMPARE(contentOf(visit.card.path(bin)), before);
        }
    }

    void cardIsReadAndWrittenInTheBackground()
    {
        CardBuilder card;
        card.file(bin, fileOf(numberedRecord(0x0E00)));
        QStringList log;
        ScriptedPresenter presenter(log);
        std::unique_ptr<SettingSession> session;
        QList<bool> busy;
        SettingSession::Callbacks callbacks;
        callbacks.busyDidChange = [&busy](bool isBusy) { busy += isBusy; };
        callbacks.openEditor = [&log](UnitSettingViewController&) { log += u"open"_s; };
        callbacks.finished = [&session](SettingSession::Outcome) { session.reset(); };
        session = std::make_unique<SettingSession>(card.root(), presenter, callbacks);
        session->open();
        QVERIFY(!session->controller()); // not from within the call
        WAIT_FOR(session->controller());
        session->controller()->viewModel().audioRecording = 0;
        session->controller()->settingFinish();
        QVERIFY(session->isBusy());
        session->controller()->settingCancel(); // too late
        session->controller()->settingFinish();
        WAIT_FOR(!session);
        QCOMPARE(log, (QStringList{u"open"_s, askSave, askSave, saved}));
        QCOMPARE(busy, (QList<bool>{true, false, true, false}));
        QCOMPARE(contentOf(card.path(bin)).at(21), '\0');
    }

    void writeIsCompletedWithoutItsSession()
    {
        CardBuilder card;
        card.file(bin, fileOf(numberedRecord(0x0E00)));
        QStringList log;
        ScriptedPresenter presenter(log);
        auto session = std::make_unique<SettingSession>(card.root(), presenter, SettingSession::Callbacks());
        session->open();
        WAIT_FOR(session->controller());
        session->controller()->viewModel().audioRecording = 0;
        session->controller()->settingFinish();
        session.reset();
        BackgroundThread::wait();
        QCoreApplication::processEvents();
        QCOMPARE(contentOf(card.path(bin)).at(21), '\0');
        QCOMPARE(log, QStringList{askSave});
    }
};

QTEST_GUILESS_MAIN(SettingSessionTest)
#include "SettingSessionTest.moc"

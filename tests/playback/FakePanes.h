#pragma once

#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "playback/Panes.h"
#include "telemetry/CustomLocation.h"

#include <QHash>
#include <QPointer>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace cardreel::test {

/// What the panes of a window were told, in order, one line a call: "front.play", "graph.updateProgress 0.5".
class CallLog
{
public:
    /// Runs once, at the next call of that name ("front.pause"), from within it.
    void during(const QString& call, std::function<void()> action) { m_actions.insert(call, std::move(action)); }
    /// Runs once, from within the call that comes after so many others.
    void after(int calls, std::function<void()> action)
    {
        m_countdown = calls;
        m_counted = std::move(action);
    }

    void add(const QString& pane, const char* operation, const QString& argument = {})
    {
        const QString call = pane + QLatin1Char('.') + QLatin1StringView(operation);
        m_lines.push_back(argument.isEmpty() ? call : call + QLatin1Char(' ') + argument);
        if (const std::function<void()> action = m_actions.take(call))
            action();
        if (m_counted && m_countdown-- == 0)
            std::exchange(m_counted, nullptr)();
    }
    void add(const QString& pane, const char* operation, double argument)
    {
        add(pane, operation, QString::number(argument, 'g', 12));
    }

    /// What came since the last time.
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    QStringList m_lines;
    QHash<QString, std::function<void()>> m_actions;
    std::function<void()> m_counted;
    int m_countdown = 0;
};

/// A player without a clock: a test sets its fields and runs its callbacks.
class FakePlayer : public PlayerPane
{
public:
    FakePlayer(CallLog& log, const QString& name)
        : m_log(log)
        , m_name(name)
    {
    }

    double length = 0;
    double fraction = 0;
    double rate = 1;
    bool playing = false;
    Callback willStartPlay;
    Callback progressed;
    Callback didStopPlaying;

    void playWithPath(const QString& path, Callback willStart, Callback progress, Callback didStop) override
    {
        willStartPlay = std::move(willStart);
        progressed = std::move(progress);
        didStopPlaying = std::move(didStop);
        fraction = 0;
        m_log.add(m_name, "playWithPath", path.section(QLatin1Char('/'), -2));
    }
    void showImageWithPath(const QString& path) override
    {
        m_log.add(m_name, "showImageWithPath", path.section(QLatin1Char('/'), -2));
    }
    void play() override
    {
        playing = true;
        m_log.add(m_name, "play");
    }
    void mutePlay() override
    {
        playing = true;
        m_log.add(m_name, "mutePlay");
    }
    void pause() override
    {
        playing = false;
        m_log.add(m_name, "pause");
    }
    bool isPlaying() const override { return playing; }
    void setCurrentProgress(double newFraction) override
    {
        fraction = newFraction;
        m_log.add(m_name, "setCurrentProgress", newFraction);
    }
    double progress() const override { return fraction; }
    double playbackRate() const override { return rate; }
    void updatePlaybackRate(double newRate) override
    {
        rate = newRate;
        m_log.add(m_name, "updatePlaybackRate", newRate);
    }
    double totalTime() const override { return rate == 0 ? length : length / rate; }
    double originalTotalTime() const override { return length; }
    double originalCurrentTime() const override { return length * fraction; }
    void audioMuteEnable(bool) override { m_log.add(m_name, "audioMuteEnable"); }

private:
    CallLog& m_log;
    QString m_name;
};

class FakeGraph : public GraphPane
{
public:
    explicit FakeGraph(CallLog& log)
        : m_log(log)
    {
    }

    bool dragging = false;

    void setProgressMax(double fraction) override { m_log.add(m_name, "setProgressMax", fraction); }
    void setProgressMin(double fraction) override { m_log.add(m_name, "setProgressMin", fraction); }
    void updateProgress(double fraction) override { m_log.add(m_name, "updateProgress", fraction); }
    void drawGraphWithCurrentDCFInfo(const std::shared_ptr<DCFInfo>& dcf) override
    {
        m_log.add(m_name, "draw", dcf ? dcf->deltaPath : QStringLiteral("none"));
    }
    void setCurrentSpeed(double speed) override { m_log.add(m_name, "setCurrentSpeed", speed); }
    bool userControlIsActive() const override { return dragging; }

private:
    CallLog& m_log;
    QString m_name = QStringLiteral("graph");
};

class FakeMap : public MapPane
{
public:
    explicit FakeMap(CallLog& log)
        : m_log(log)
    {
    }

    /// The fix that it shows; without coordinates, none.
    CustomLocation shown;

    void updateDCF(const std::shared_ptr<DCFInfo>& dcf, double currentDCFTime, double totalDCFTime) override
    {
        m_log.add(
            m_name, "updateDCF",
            QStringLiteral("%1 %2 %3")
                .arg(dcf->deltaPath, QString::number(currentDCFTime, 'g', 10), QString::number(totalDCFTime, 'g', 10)));
    }
    void upDateWithCenterLocation(const CustomLocation& location) override
    {
        m_log.add(m_name, "center", location.latitude);
    }
    const CustomLocation* userLocation() const override { return shown.isValid() ? &shown : nullptr; }

private:
    CallLog& m_log;
    QString m_name = QStringLiteral("map");
};

/// A list that shows the recordings in the order it is given them, and answers a selection at once.
class FakeList : public RecordingsList
{
public:
    FakeList(CallLog& log, MediaController& controller)
        : m_log(log)
        , m_controller(&controller)
    {
    }

    MediaLibrary::DCFList arranged;

    void selectCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override
    {
        m_log.add(m_name, "select", dcf ? dcf->deltaPath : QStringLiteral("none"));
        select(dcf);
    }
    void selectNextDCFWithCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override
    {
        m_log.add(m_name, "selectNext", dcf ? dcf->deltaPath : QStringLiteral("none"));
        if (arranged.empty())
            return;
        const auto at = std::find(arranged.begin(), arranged.end(), dcf);
        if (arranged.size() == 1)
            select(nullptr);
        select(at == arranged.end() || at + 1 == arranged.end() ? arranged.front() : *(at + 1));
    }

private:
    void select(const std::shared_ptr<DCFInfo>& dcf)
    {
        if (m_controller)
            m_controller->updateCurrentDCF(dcf, true, nullptr);
    }

    CallLog& m_log;
    QPointer<MediaController> m_controller;
    QString m_name = QStringLiteral("list");
};

/// A window's panes and their controller, which a test may destroy before them.
struct FakeWindow
{
    CallLog log;
    FakePlayer front{log, QStringLiteral("front")};
    FakePlayer rear{log, QStringLiteral("rear")};
    FakeGraph graph{log};
    FakeMap map{log};
    std::unique_ptr<MediaController> controller = std::make_unique<MediaController>();
    FakeList list{log, *controller};

    FakeWindow()
    {
        controller->setDcfListVC(&list);
        controller->setPlayerVC(&front);
        controller->setPlayerVCSecondary(&rear);
        controller->setGraphVC(&graph);
        controller->setMapVC(&map);
    }

    /// Reads a card; its recordings count as parsed, so that nothing runs in the background.
    void open(const QString& root)
    {
        controller->mediaTreeSyncAtRootPath(root);
        for (const std::shared_ptr<DCFInfo>& dcf : controller->mediaTree())
            dcf->thumbnailPath = QStringLiteral("thumbnail");
        list.arranged = controller->mediaTree();
    }
    const std::shared_ptr<DCFInfo>& recording(size_t index) const { return controller->mediaTree().at(index); }
    /// Selects a recording as the user does and lets both players start, each file so many seconds long.
    void play(size_t index, double seconds)
    {
        controller->updateCurrentDCF(recording(index), true, nullptr);
        front.length = rear.length = seconds;
        front.willStartPlay();
        rear.playing = true;
        log.take();
    }
};

} // namespace cardreel::test

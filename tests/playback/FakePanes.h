#pragma once

#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "playback/Panes.h"
#include "support/CardBuilder.h"
#include "telemetry/CustomLocation.h"

#include <QHash>
#include <QPointer>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
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
    void play() override { setPlaying("play", true); }
    void mutePlay() override { setPlaying("mutePlay", true); }
    void pause() override { setPlaying("pause", false); }
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
    void setPlaying(const char* operation, bool plays)
    {
        playing = plays;
        m_log.add(m_name, operation);
    }

    CallLog& m_log;
    QString m_name;
};

struct FakeGraph : GraphPane
{
    CallLog& log;
    bool dragging = false;

    explicit FakeGraph(CallLog& callLog)
        : log(callLog)
    {
    }
    void setProgressMax(double fraction) override { log.add(name, "setProgressMax", fraction); }
    void setProgressMin(double fraction) override { log.add(name, "setProgressMin", fraction); }
    void updateProgress(double fraction) override { log.add(name, "updateProgress", fraction); }
    void drawGraphWithCurrentDCFInfo(const std::shared_ptr<DCFInfo>& dcf) override
    {
        log.add(name, "draw", dcf ? dcf->deltaPath : QStringLiteral("none"));
    }
    void setCurrentSpeed(double speed) override { log.add(name, "setCurrentSpeed", speed); }
    bool userControlIsActive() const override { return dragging; }

    const QString name = QStringLiteral("graph");
};

struct FakeMap : MapPane
{
    CallLog& log;
    std::optional<CustomPointAnnotation> shown; ///< the marker of the vehicle's place

    explicit FakeMap(CallLog& callLog)
        : log(callLog)
    {
    }
    void updateDCF(const std::shared_ptr<DCFInfo>& dcf, double currentDCFTime, double totalDCFTime) override
    {
        const auto number = [](double value) { return QLatin1Char(' ') + QString::number(value, 'g', 10); };
        log.add(name, "updateDCF", dcf->deltaPath + number(currentDCFTime) + number(totalDCFTime));
    }
    void upDateWithCenterLocation(const CustomLocation& location) override
    {
        log.add(name, "center", location.latitude);
    }
    const CustomPointAnnotation* userLocation() const override { return shown ? &*shown : nullptr; }

    const QString name = QStringLiteral("map");
};

struct FakeProgress : ProgressPane
{
    CallLog& log;

    explicit FakeProgress(CallLog& callLog)
        : log(callLog)
    {
    }
    void setProgress(double fraction) override { log.add(name, "setProgress", QString::number(fraction, 'g', 3)); }
    void setItem(const QString& itemName) override { log.add(name, "setItem", itemName); }
    void setInfoText(const QString& text) override { log.add(name, "setInfoText", text); }
    void jobDidEnd(const QString& path, const QString& problem) override
    {
        log.add(name, "jobDidEnd", path + (problem.isEmpty() ? QString() : QStringLiteral("failed")));
    }
    void dismiss() override { log.add(name, "dismiss"); }

    const QString name = QStringLiteral("sheet");
};

/// A list that shows a card's recordings in their order and answers a selection at once.
struct FakeList : RecordingsList
{
    CallLog& log;
    QPointer<MediaController> controller;

    FakeList(CallLog& callLog, MediaController& mediaController)
        : log(callLog)
        , controller(&mediaController)
    {
    }
    void selectCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override { select("select", dcf, dcf); }
    void selectNextDCFWithCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override
    {
        const MediaLibrary::DCFList& all = controller->mediaTree();
        const auto at = std::find(all.begin(), all.end(), dcf);
        select("selectNext", dcf, at == all.end() || at + 1 == all.end() ? all.front() : *(at + 1));
    }

private:
    void select(const char* operation, const std::shared_ptr<DCFInfo>& asked, std::shared_ptr<DCFInfo> answer)
    {
        log.add(QStringLiteral("list"), operation, asked->deltaPath);
        if (controller)
            controller->updateCurrentDCF(std::move(answer), true, nullptr);
    }
};

inline const Instant noon = utc(2020, 1, 1, 12, 0);
inline const double noonSeconds = secondsSince1970(noon);

/// Three recordings of a minute from noon on, the first with a rear video, and a picture.
struct DriveCard : CardBuilder
{
    explicit DriveCard(Instant pictureDate = noon + std::chrono::seconds(90))
    {
        for (int i = 0; i < 3; ++i)
            file(QStringLiteral("NORMAL/20010112000%1.MP4").arg(i), "x", noon + std::chrono::minutes(i + 1));
        file(QStringLiteral("REAR/NORMAL/200101120000.MP4"));
        const QString picture = QStringLiteral("PICTURE/200101120009.JPG");
        setModified(pictureAt(picture, 35, "N", 139, "E"), pictureDate);
    }
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

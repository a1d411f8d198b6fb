#pragma once

#include "playback/Panes.h"
#include "views/graph/GraphPaneLayout.h"
#include "views/graph/ProgressThrottle.h"
#include "views/graph/TelemetryMoment.h"
#include "views/graph/WarningTimer.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace cardreel {

class GraphLayerView;
class MediaController;
class NeedleView;
class ReadoutView;
class PaneTip;
class WarningChip;

/// The graph pane: the curves of the recording in view with the moving position, and below them speedometer, figures
/// and the warning of the moment. Clicking and dragging on the curves seeks. Owned by the window, whose controller may
/// end before it; interface thread.
class GraphViewController : public QWidget, public GraphPane
{
    Q_OBJECT

public:
    explicit GraphViewController(MediaController& controller, QWidget* parent = nullptr);
    ~GraphViewController() override;

    /// Seconds of a clock that only goes forward; tests pass their own.
    void setClock(std::function<double()> clock) { m_clock = std::move(clock); }

    void setProgressMax(double fraction) override { m_progressMax = fraction; }
    void setProgressMin(double fraction) override { m_progressMin = fraction; }
    /// Thinned out at every rate but 1; what was left out last follows when the pause is over.
    void updateProgress(double fraction) override;
    /// Goes back to the beginning, and ends a drag.
    void drawGraphWithCurrentDCFInfo(const std::shared_ptr<DCFInfo>& dcf) override;
    /// The readouts come from the recording's own records; the argument isn't used.
    void setCurrentSpeed(double speed) override;
    bool userControlIsActive() const override { return m_isDragged; }

    /// A recording's telemetry was read: if it is the one in view it is drawn, and the position stays.
    void recordingDidParse(const std::shared_ptr<DCFInfo>& dcf);

    const std::shared_ptr<DCFInfo>& currentInfo() const { return m_currentInfo; }
    /// What the slider of time stands at, 0 to 1.
    double progress() const { return m_progress; }
    /// The records of the moment; none at the very end and without a recording.
    std::optional<CustomLocation> currentLocation() const { return moment().location; }
    std::optional<MotionData> currentMotion() const { return moment().motion; }
    const DriveSupportData* currentDriveSupport() const;

    GraphLayerView* graphView() const { return m_graph; }
    NeedleView* needleView() const { return m_needle; }
    ReadoutView* readoutView() const { return m_readouts; }
    WarningChip* warningChip() const { return m_warning; }

    QSize sizeHint() const override { return {720, 400}; }
    QSize minimumSizeHint() const override { return {300, 180}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void arrange();
    void readTelemetry();
    QString stateText() const;
    void updateLabelsWithMaxSpeed(double maxSpeed, double maxMotionABS);
    void updateDrawerWithDCFInfo(std::shared_ptr<const Telemetry> telemetry, double maxSpeed, double maxMotionABS);
    void updateCurrentPositionWithProgress(double progress);
    void applyProgress(double fraction);
    TelemetryMoment moment() const;
    void showMoment();
    void showWarning(std::optional<std::size_t> record);
    bool isPlaying() const;
    void beginDrag(double fraction);
    void drag(double fraction);
    void endDrag();
    void showTip(double fraction, const QPoint& place);

    QPointer<MediaController> m_controller;
    GraphLayerView* m_graph;
    NeedleView* m_needle;
    ReadoutView* m_readouts;
    WarningChip* m_warning;
    PaneTip* m_tip;
    GraphPaneLayout m_layout;
    std::function<double()> m_clock;
    std::shared_ptr<DCFInfo> m_currentInfo;
    std::shared_ptr<const Telemetry> m_telemetry; ///< of the recording; null while there is nothing to show
    double m_progress = 0;
    double m_progressMin = 0;
    double m_progressMax = 1;
    ProgressThrottle m_throttle;
    std::optional<double> m_leftOut; ///< the last update that the throttle held back
    QTimer m_catchUp;
    WarningTimer m_warningTimer;
    std::optional<std::size_t> m_shownWarning;
    bool m_isDragged = false;
    bool m_playsAfterDrag = false;
};

} // namespace cardreel

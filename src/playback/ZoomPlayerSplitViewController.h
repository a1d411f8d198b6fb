#pragma once

#include "playback/RearFollower.h"

#include <QSplitter>

#include <array>

class QVariantAnimation;

namespace cardreel {

class ZoomPlayerViewController;

/// The two panes of a window side by side, the front one at the left. The divider stays in the middle until it is
/// dragged elsewhere and snaps back near it; the rear pane can be folded away. Its picture is kept with the front one's
/// to the frame. Owned by its window; interface thread.
class ZoomPlayerSplitViewController : public QSplitter
{
    Q_OBJECT

public:
    enum class Animation { Animated, None };

    /// Its objectName() and the key under which the window keeps saveState().
    static constexpr auto autosaveName = "ZoomPlayerSplitViewControllerAutosaveName";
    static constexpr int snapDistance = 50;

    /// Takes both panes over; the primary becomes one.
    ZoomPlayerSplitViewController(ZoomPlayerViewController* primary, ZoomPlayerViewController* secondary,
                                  QWidget* parent = nullptr);

    ZoomPlayerViewController* primaryPlayerItem() const { return m_playerVCs[0]; }
    ZoomPlayerViewController* secondaryPlayerItem() const { return m_playerVCs[1]; }
    /// Primary first.
    const std::array<ZoomPlayerViewController*, 2>& playerVCs() const { return m_playerVCs; }

    /// Whether the rear pane is there or coming; true at first.
    bool secondaryPlayerEnable() const { return m_secondaryPlayerEnable; }
    void setSecondaryPlayerEnable(bool enable, Animation animation = Animation::Animated);

    /// Where the user left the divider. Whether the rear pane is there is not part of it.
    QByteArray saveState() const;
    /// False, with nothing changed, for what saveState() didn't write.
    bool restoreState(const QByteArray& state);

    /// Where a divider proposed at some place goes: to the middle when that is near.
    static int constrainedPosition(int proposed, int width, int dividerThickness);

Q_SIGNALS:
    void secondaryPlayerEnableChanged(bool enable);

protected:
    QSplitterHandle* createHandle() override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend class SnappingHandle;
    /// The user dragged the divider to a place, after snapping.
    void dividerMoved(int position);
    void arrange();
    /// Ends where an animation leads.
    void settle();

    std::array<ZoomPlayerViewController*, 2> m_playerVCs;
    RearFollower m_follower;
    QVariantAnimation* m_animation;
    bool m_secondaryPlayerEnable = true;
    double m_fraction = 0.5; ///< of the width without the divider that is the primary's
    double m_shownFraction = 0.5;
};

} // namespace cardreel

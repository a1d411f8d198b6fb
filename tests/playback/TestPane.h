#pragma once

#include "platform/video/VideoItem.h"
#include "playback/ZoomPlayerViewController.h"
#include "support/Waiting.h"

#include <cmath>

namespace cardreel::test {

/// A front pane that counts its callbacks, and those that come before its file is in.
struct Pane : ZoomPlayerViewController
{
    int starts = 0, ticks = 0, ends = 0, early = 0;

    Pane()
        : ZoomPlayerViewController(QStringLiteral("Front"), VideoPlayer::AudioOutput::None)
    {
        resize(320, 180);
        becomePrimaryPlayer();
        show();
    }
    void open(const QString& path)
    {
        const auto counter = [this](int Pane::*count) {
            return [this, count] {
                ++(this->*count);
                early += isLoading();
            };
        };
        playWithPath(path, counter(&Pane::starts), counter(&Pane::ticks), counter(&Pane::ends));
    }
    bool opens(const QString& path)
    {
        open(path);
        return QTest::qWaitFor([this] { return isReady(); }, patienceMs);
    }
    bool isReady() const
    {
        return !isLoading() && currentItem() && currentItem()->status() == VideoItem::Status::ReadyToPlay;
    }
    QImage shown() const { return playerScrollView()->grab().toImage(); }
    bool standsAt(double seconds) const { return isReady() && !player()->isSeeking() && isNearTo(seconds); }
    bool isNearTo(double seconds) const { return std::abs(originalCurrentTime() - seconds) < 0.05; }
    bool isEnabled() const { return segmentAction(1)->isEnabled() && mirrorButton()->isEnabled(); }
    QPointF origin() const { return playerScrollView()->geometryNow().origin; }
    double magnification() const { return playerScrollView()->magnification(); }
};

} // namespace cardreel::test

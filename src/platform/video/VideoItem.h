#pragma once

#include <QString>

#include <memory>

namespace cardreel {

class VideoAsset;
class VideoComposition;

/// One thing for a VideoPlayer to play: an asset as it is or a composition. Shared between the player, which tells here
/// how it fares, and the pane; interface thread.
class VideoItem
{
public:
    enum class Status { Unknown, ReadyToPlay, Failed };

    explicit VideoItem(std::shared_ptr<const VideoAsset> asset);
    explicit VideoItem(const VideoComposition& composition);

    const std::shared_ptr<const VideoAsset>& asset() const { return m_asset; }
    /// Seconds that playing it takes; 0 when unknown.
    double duration() const { return m_duration; }
    /// Seconds of the file that go by in one of the item.
    double speed() const { return m_speed; }
    bool hasAudio() const { return m_hasAudio; }
    /// Whether faster rates make sense: its length is known.
    bool canPlayFastForward() const { return m_duration > 0; }

    Status status() const { return m_status; }
    /// One sentence for the user when it failed; else empty.
    const QString& errorText() const { return m_errorText; }

    // For the player.
    void setReady() { m_status = Status::ReadyToPlay; }
    void setFailed(const QString& errorText);

private:
    std::shared_ptr<const VideoAsset> m_asset;
    double m_duration = 0;
    double m_speed = 1;
    bool m_hasAudio = true;
    Status m_status = Status::Unknown;
    QString m_errorText;
};

} // namespace cardreel

#pragma once

#include <memory>

namespace cardreel {

class VideoAsset;

/// An editable timeline made of one asset: its range put in, its sound perhaps taken out, its time stretched or
/// squeezed. A value; any thread.
class VideoComposition
{
public:
    /// Puts the asset's whole range [0, duration) at time 0. False, with nothing changed, for an asset without a
    /// readable video track or without a length.
    bool insertTimeRange(std::shared_ptr<const VideoAsset> asset);
    void removeAudioTracks() { m_hasAudio = false; }
    /// Makes what takes `fromSeconds` from time 0 on take `toSeconds`. Only the whole range can be scaled: false, with
    /// nothing changed, for any other and for lengths that aren't above 0.
    bool scaleTimeRange(double fromSeconds, double toSeconds);

    /// Null while nothing was put in.
    const std::shared_ptr<const VideoAsset>& asset() const { return m_asset; }
    /// Seconds that playing it takes; 0 while nothing was put in.
    double duration() const { return m_duration; }
    bool hasAudio() const { return m_hasAudio; }
    /// Seconds of the file that go by in one of the composition.
    double speed() const;

private:
    std::shared_ptr<const VideoAsset> m_asset;
    double m_duration = 0;
    bool m_hasAudio = true;
};

} // namespace cardreel

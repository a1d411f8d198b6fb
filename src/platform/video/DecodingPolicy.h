#pragma once

#include <array>

namespace cardreel {

/// How much of a file is decoded while it plays, the most careful first.
enum class Decoding {
    Full,
    Coarse,    ///< only frames that others depend on, their block edges left unsmoothed
    KeyFrames, ///< only frames that stand alone, a few in each second of the file
};

/// Decides how much can be decoded in time. It begins with what two players manage side by side on a small machine, and
/// learns from those that fall behind. One for all players; interface thread.
class DecodingPolicy
{
public:
    /// `processors` as the system counts them.
    explicit DecodingPolicy(int processors);

    static DecodingPolicy& shared();

    /// For a file of so many pixels a second (width x height x frames), played at a speed.
    Decoding decoding(double pixelsPerSecond, double speed) const;
    /// A file that was decoded so did not keep its speed.
    void fellBehind(Decoding decoding, double pixelsPerSecond, double speed);
    /// A decoder of the graphics card or the like turned out to be there, or not to be there any more.
    void setHardware(bool isHardware) { m_isHardware = isHardware; }

private:
    bool m_isHardware = false;
    std::array<double, 2> m_mostPixels{};         ///< a second, for Full and Coarse
    std::array<double, 2> m_mostHardwarePixels{}; ///< the same; as much as there is until it fell behind
};

} // namespace cardreel

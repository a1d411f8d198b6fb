// Numbers a video frame with a row of black and white blocks, and reads the number back from a rendered picture. Tests
// and benchmarks use it to tell which frame a pane shows. Stateless; any thread.
#pragma once

#include <QRect>
#include <QSize>

#include <optional>

class QImage;
class QPainter;

namespace cardreel {

// Numbers wrap here: a frame's number is its place in its file, modulo this.
inline constexpr int FRAME_NUMBER_LIMIT = 65536;

// The band that the pattern takes of a frame of this size: its lowest twelfth, over the whole width.
QRect frameNumberBand(QSize frameSize);

// Paints the number into the band of a frame of the given size. A number outside 0..FRAME_NUMBER_LIMIT - 1 wraps.
void paintFrameNumber(QPainter& painter, QSize frameSize, int number);

// The number in a picture of a whole frame at any scale (from about 120 pixels of width), or nothing when the band
// holds no pattern, or one that is blurred or mixed of two frames.
std::optional<int> readFrameNumber(const QImage& picture);

} // namespace cardreel

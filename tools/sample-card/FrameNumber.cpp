#include "sample-card/FrameNumber.h"

#include <QColor>
#include <QImage>
#include <QPainter>

#include <array>
#include <cstdint>

namespace cardreel {

namespace {

// From left to right: white, black; 16 bits of the number; 8 bits of its checksum; black, white. The ends differ from
// their neighbours so that a frame that is cropped, mirrored or plain is told from a number.
constexpr int SYNC_CELLS = 2;
constexpr int NUMBER_BITS = 16;
constexpr int CHECK_BITS = 8;
constexpr int CELLS = SYNC_CELLS + NUMBER_BITS + CHECK_BITS + SYNC_CELLS;

// A cell between these is neither black nor white: two frames mixed, or a picture that only looks like a pattern. Wide
// enough for a limited-range picture shown as full range (black 16, white 235) with compression noise on top.
constexpr int DARKEST_WHITE = 160;
constexpr int BRIGHTEST_BLACK = 95;

std::uint8_t checksum(std::uint16_t number)
{
    std::uint32_t crc = 0xff;
    for (const int shift : {8, 0}) {
        crc ^= (std::uint32_t{number} >> shift) & 0xffU;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x80U) != 0 ? ((crc << 1U) ^ 0x07U) & 0xffU : (crc << 1U) & 0xffU;
    }
    return static_cast<std::uint8_t>(crc);
}

std::array<bool, CELLS> cellsOf(std::uint16_t number)
{
    std::array<bool, CELLS> cells{};
    std::size_t next = 0;
    const auto put = [&](std::uint32_t value, int bits) {
        for (int bit = bits - 1; bit >= 0; --bit)
            cells.at(next++) = ((value >> bit) & 1U) != 0;
    };
    put(0b10, SYNC_CELLS);
    put(number, NUMBER_BITS);
    put(checksum(number), CHECK_BITS);
    put(0b01, SYNC_CELLS);
    return cells;
}

// Mean luminance of the middle of a cell: its borders hold the blur of scaling and compression.
int cellLuminance(const QImage& band, int cell)
{
    const double width = static_cast<double>(band.width()) / CELLS;
    const int left = static_cast<int>((cell + 0.3) * width);
    const int right = std::max(left + 1, static_cast<int>((cell + 0.7) * width));
    const int top = band.height() * 3 / 10;
    const int bottom = std::max(top + 1, band.height() * 7 / 10);
    int sum = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            sum += qGray(band.pixel(x, y));
    return sum / ((right - left) * (bottom - top));
}

} // namespace

QRect frameNumberBand(QSize frameSize)
{
    const int height = frameSize.height() / 12;
    return {0, frameSize.height() - height, frameSize.width(), height};
}

void paintFrameNumber(QPainter& painter, QSize frameSize, int number)
{
    const QRect band = frameNumberBand(frameSize);
    painter.fillRect(band, QColor(Qt::black));
    const auto cells = cellsOf(static_cast<std::uint16_t>(number));
    for (int cell = 0; cell < CELLS; ++cell) {
        const int left = band.width() * cell / CELLS;
        const int right = band.width() * (cell + 1) / CELLS;
        if (cells.at(static_cast<std::size_t>(cell)))
            painter.fillRect(left, band.top(), right - left, band.height(), QColor(Qt::white));
    }
}

std::optional<int> readFrameNumber(const QImage& picture)
{
    const QImage band = picture.copy(frameNumberBand(picture.size()));
    if (band.width() < CELLS || band.height() < 3)
        return std::nullopt;

    std::uint32_t bits = 0;
    for (int cell = 0; cell < CELLS; ++cell) {
        const int luminance = cellLuminance(band, cell);
        if (luminance > BRIGHTEST_BLACK && luminance < DARKEST_WHITE)
            return std::nullopt;
        bits = (bits << 1U) | (luminance >= DARKEST_WHITE ? 1U : 0U);
    }

    const auto number = static_cast<std::uint16_t>((bits >> (CHECK_BITS + SYNC_CELLS)) & 0xffffU);
    std::uint32_t expected = 0;
    for (const bool cell : cellsOf(number))
        expected = (expected << 1U) | (cell ? 1U : 0U);
    return bits == expected ? std::optional<int>(number) : std::nullopt;
}

} // namespace cardreel

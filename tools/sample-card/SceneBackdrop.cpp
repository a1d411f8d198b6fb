#include "sample-card/SceneBackdrop.h"

#include "sample-card/Random.h"

#include <QFont>
#include <QFontMetrics>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

// The panorama repeats so often in a full turn; a whole one would be far wider than anything else in memory.
constexpr int REPEATS = 3;

struct Sky
{
    QRgb zenith;
    QRgb haze;
    QRgb farHills;
    QRgb nearHills;
};

constexpr std::array FRONT_SKIES = {Sky{0xff7ea7cd, 0xffe3edf2, 0xff8aa9a0, 0xff5d7f60},
                                    Sky{0xff8794c0, 0xfff4d9c0, 0xff9c98a0, 0xff66786a}};
constexpr std::array REAR_SKIES = {Sky{0xff8e99aa, 0xffd3d6da, 0xff97a3a0, 0xff66806a},
                                   Sky{0xff6f7893, 0xffd9c3bd, 0xff8a8891, 0xff5a6860}};

// A ridge of hills whose ends join, as heights in pixels above the horizon.
QPainterPath ridge(int width, int horizon, double highest, Random& random)
{
    constexpr int WAVES = 6;
    std::array<double, WAVES> amplitude{};
    std::array<double, WAVES> phase{};
    std::array<int, WAVES> count{};
    for (std::size_t wave = 0; wave < WAVES; ++wave) {
        count.at(wave) = 2 + static_cast<int>(wave) * 2 + static_cast<int>(random.between(0, 2));
        amplitude.at(wave) = random.between(0.4, 1.0) / (static_cast<double>(wave) + 1.5);
        phase.at(wave) = random.between(0, 2 * std::numbers::pi);
    }
    QPainterPath path(QPointF(0, horizon));
    const int step = std::max(2, width / 240);
    for (int x = 0; x < width + step; x += step) {
        const double turn = 2 * std::numbers::pi * std::min(x, width) / width;
        double height = 0;
        for (std::size_t wave = 0; wave < WAVES; ++wave)
            height += amplitude.at(wave) * (1 + std::sin(count.at(wave) * turn + phase.at(wave)));
        path.lineTo(x, horizon - highest * (0.15 + height / 4));
    }
    path.lineTo(width, horizon);
    path.closeSubpath();
    return path;
}

} // namespace

SceneBackdrop::SceneBackdrop(QSize frameSize, CameraSide side, int trip, std::uint64_t seed)
    : size(frameSize)
{
    paintPanorama(side, trip, seed);
    paintLetters();
}

int SceneBackdrop::horizon(QSize frameSize)
{
    return frameSize.height() * 45 / 100;
}

double SceneBackdrop::focalLength(QSize frameSize)
{
    return frameSize.width() * 0.8;
}

void SceneBackdrop::paintPanorama(CameraSide side, int trip, std::uint64_t seed)
{
    const int width = static_cast<int>(std::lround(2 * std::numbers::pi * focalLength(size) / REPEATS));
    const int height = horizon(size);
    const auto& skies = side == CameraSide::Front ? FRONT_SKIES : REAR_SKIES;
    const Sky& sky = skies.at(static_cast<std::size_t>(trip) % skies.size());
    panorama = QImage(width, height, QImage::Format_RGB32);
    QPainter painter(&panorama);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(0, 0, 0, height);
    gradient.setColorAt(0, QColor(sky.zenith));
    gradient.setColorAt(1, QColor(sky.haze));
    painter.fillRect(panorama.rect(), gradient);
    Random random(seed + (side == CameraSide::Front ? 0U : 7U));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(sky.farHills));
    painter.drawPath(ridge(width, height, size.height() * 0.17, random));
    painter.setBrush(QColor(sky.nearHills));
    painter.drawPath(ridge(width, height, size.height() * 0.09, random));
}

void SceneBackdrop::paintLetters()
{
    QFont font(u"DejaVu Sans"_s);
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(9, size.height() / 28));
    font.setBold(true);
    const QFontMetrics metrics(font);
    const int edge = std::max(1, font.pixelSize() / 12);
    letterHeight = metrics.height() + 2 * edge;
    // One width for all digits, so that the stamp doesn't jitter.
    const int digitWidth = metrics.horizontalAdvance(u'0');
    for (const QChar letter : u"0123456789-:/. FRONTEAkmhGP"_s) {
        const int advance = letter.isDigit() ? digitWidth : metrics.horizontalAdvance(letter);
        QImage image(advance + 2 * edge, letterHeight, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath outline;
        outline.addText(edge, edge + metrics.ascent(), font, QString(letter));
        painter.strokePath(outline, QPen(QColor(20, 24, 28, 200), 2.0 * edge));
        painter.fillPath(outline, QColor(Qt::white));
        letters.insert(letter, image);
    }
}

void SceneBackdrop::paintSky(QPainter& painter, double course) const
{
    // Turning right moves the hills left.
    const double turned = course / 360 * REPEATS;
    const int offset = static_cast<int>(std::lround((turned - std::floor(turned)) * panorama.width()));
    for (int left = -offset; left < size.width(); left += panorama.width())
        painter.drawImage(left, 0, panorama);
}

void SceneBackdrop::paintText(QPainter& painter, QPoint at, const QString& text) const
{
    const int overlap = std::max(1, letterHeight / 14);
    for (const QChar letter : text) {
        const auto found = letters.constFind(letter);
        if (found == letters.constEnd())
            continue;
        painter.drawImage(at, *found);
        at.rx() += found->width() - 2 * overlap;
    }
}

} // namespace cardreel

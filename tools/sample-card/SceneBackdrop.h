// What is painted once for a card and shared by all its scenes: the sky with its hills and the letters of the stamp.
// Built on the main thread, where fonts may be used; read-only afterwards, on any thread.
#pragma once

#include <QHash>
#include <QImage>
#include <QSize>
#include <QString>

#include <cstdint>

class QPainter;
class QPoint;

namespace cardreel {

enum class CameraSide { Front, Rear };

class SceneBackdrop
{
public:
    // Trips take turns with two skies, so that two days look like two days.
    SceneBackdrop(QSize frameSize, CameraSide side, int trip, std::uint64_t seed);

    // Row of the horizon in a frame of this size.
    static int horizon(QSize frameSize);
    // Pixels at a distance of one: how wide the lens is.
    static double focalLength(QSize frameSize);

    // Paints everything above the horizon, as seen when looking to `course` (degrees).
    void paintSky(QPainter& painter, double course) const;

    // Writes text in white with a dark edge, its upper left corner at `at`; unknown letters leave a gap.
    void paintText(QPainter& painter, QPoint at, const QString& text) const;
    int textHeight() const { return letterHeight; }

private:
    void paintPanorama(CameraSide side, int trip, std::uint64_t seed);
    void paintLetters();

    QSize size;
    QImage panorama; // its ends join
    QHash<QChar, QImage> letters;
    int letterHeight = 0;
};

} // namespace cardreel

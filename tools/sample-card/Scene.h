// Paints what a camera sees at a moment of a drive, as a flat drawing: sky, hills, road, the car ahead or behind, a
// stamp of the time and speed. One object a video, on the thread that paints it.
#pragma once

#include "sample-card/Drive.h"
#include "sample-card/SceneBackdrop.h"

#include <QDateTime>
#include <QPolygonF>

#include <vector>

class QPainter;

namespace cardreel {

class Scene
{
public:
    // `backdrop` and `log` must outlive the scene; `start` is the recording's beginning.
    Scene(const SceneBackdrop& backdrop, const DriveLog& log, RecordingKind kind, QDateTime start, QSize frameSize,
          CameraSide side);

    // Fills the whole frame with the moment `seconds` into the recording.
    void paint(QPainter& painter, double seconds) const;

private:
    // A point of the ground (metres to the right and ahead) on the frame, with the road's bend.
    QPointF project(double right, double ahead, double up = 0) const;
    // A strip of the ground between two distances, all along its bend.
    QPolygonF strip(double left, double right, double nearest, double farthest) const;

    // Distances to the things that stand along the road every `period` metres, the first one just behind the camera.
    std::vector<double> alongRoad(double period, int farthest) const;

    void paintGround(QPainter& painter) const;
    void paintRoad(QPainter& painter) const;
    void paintPosts(QPainter& painter) const;
    void paintTunnel(QPainter& painter) const;
    void paintOtherCar(QPainter& painter, double seconds) const;
    void paintCar(QPainter& painter, double right, double ahead, QRgb body, bool brakeLights) const;
    void paintStamp(QPainter& painter, double seconds) const;

    const SceneBackdrop& backdrop;
    const DriveLog& log;
    RecordingKind kind;
    QDateTime start;
    QSize size;
    CameraSide side;
    double mirror;  // the rear camera sees the road's right on its left
    double nearest; // metres to the ground at the lower edge
    mutable DriveState now;
};

} // namespace cardreel

#include "sample-card/Scene.h"

#include "sample-card/FrameNumber.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

constexpr double CAMERA_HEIGHT = 1.4; // metres
constexpr double FARTHEST = 260;

// Two lanes in one direction; the car keeps to the left one, whose middle is 0.
constexpr double LANE = 3.5;
constexpr double LEFT_EDGE = -LANE / 2;
constexpr double RIGHT_EDGE = LANE * 1.5;
constexpr double SHOULDER = 1.3;
constexpr double LINE_WIDTH = 0.16;
constexpr double DASH = 6;
constexpr double DASH_PERIOD = 15;
constexpr double POST_PERIOD = 30;
constexpr double LAMP_PERIOD = 12;

constexpr QRgb GRASS_FRONT = 0xff6f8f60;
constexpr QRgb GRASS_REAR = 0xff7c8a68;
constexpr QRgb ROAD = 0xff4a4b4e;
constexpr QRgb ROADSIDE = 0xff5f6165;
constexpr QRgb PAINT = 0xffe8e8e0;
constexpr QRgb POST = 0xffd5d8da;
constexpr QRgb TUNNEL_WALL = 0xff34373c;
constexpr QRgb TUNNEL_CEILING = 0xff26282c;
constexpr QRgb TUNNEL_LAMP = 0xffffdf9a;
constexpr QRgb LEAD_CAR = 0xff8f2f2f;
constexpr QRgb FOLLOWING_CAR = 0xffeceeee;
constexpr QRgb PASSING_CAR = 0xff2f5f8f;
constexpr QRgb CAR_GLASS = 0xff232a33;

} // namespace

Scene::Scene(const SceneBackdrop& backdrop_, const DriveLog& log_, RecordingKind kind_, QDateTime start_,
             QSize frameSize, CameraSide side_)
    : backdrop(backdrop_)
    , log(log_)
    , kind(kind_)
    , start(std::move(start_))
    , size(frameSize)
    , side(side_)
    , mirror(side_ == CameraSide::Front ? 1 : -1)
    , nearest(SceneBackdrop::focalLength(frameSize) * CAMERA_HEIGHT /
              (frameNumberBand(frameSize).top() - SceneBackdrop::horizon(frameSize)))
{
}

QPointF Scene::project(double right, double ahead, double up) const
{
    // A gentle bend is a parabola; beyond what a camera sees of a sharp one it would leave the frame for good.
    const double bend = std::clamp(static_cast<double>(now.curvature), -0.02, 0.02) * ahead * ahead / 2;
    const double scale = SceneBackdrop::focalLength(size) / ahead;
    return {size.width() / 2.0 + (right + bend) * mirror * scale,
            SceneBackdrop::horizon(size) + (CAMERA_HEIGHT - up) * scale};
}

QPolygonF Scene::strip(double left, double right, double from, double to) const
{
    // Even steps on the frame rather than on the road.
    constexpr int STEPS = 14;
    QPolygonF polygon;
    polygon.reserve(2 * STEPS + 2);
    const auto distance = [&](int step) { return 1 / (1 / from + (1 / to - 1 / from) * step / STEPS); };
    const int steps = std::abs(now.curvature) < 1e-5F ? 1 : STEPS;
    for (int step = 0; step <= steps; ++step)
        polygon << project(left, distance(step * STEPS / steps));
    for (int step = steps; step >= 0; --step)
        polygon << project(right, distance(step * STEPS / steps));
    return polygon;
}

void Scene::paint(QPainter& painter, double seconds) const
{
    now = log.at(seconds);
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (now.inTunnel)
        painter.fillRect(0, 0, size.width(), SceneBackdrop::horizon(size), QColor(TUNNEL_CEILING));
    else
        backdrop.paintSky(painter, static_cast<double>(now.course) + (side == CameraSide::Front ? 0 : 180));
    paintGround(painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    paintRoad(painter);
    if (now.inTunnel)
        paintTunnel(painter);
    else
        paintPosts(painter);
    paintOtherCar(painter, seconds);
    painter.setRenderHint(QPainter::Antialiasing, false);
    paintStamp(painter, seconds);
}

void Scene::paintGround(QPainter& painter) const
{
    const int top = SceneBackdrop::horizon(size);
    const QRgb grass = side == CameraSide::Front ? GRASS_FRONT : GRASS_REAR;
    painter.fillRect(0, top, size.width(), size.height() - top, QColor(now.inTunnel ? TUNNEL_WALL : grass));
}

std::vector<double> Scene::alongRoad(double period, int farthest) const
{
    // Ahead things come nearer, behind they run away.
    const double travelled = side == CameraSide::Front ? now.distance : -now.distance;
    const double first = -std::fmod(travelled, period) - (travelled < 0 ? period : 0);
    std::vector<double> distances;
    for (int i = 0; first + i * period < farthest; ++i)
        distances.push_back(first + i * period);
    return distances;
}

void Scene::paintRoad(QPainter& painter) const
{
    painter.setBrush(QColor(ROADSIDE));
    painter.drawPolygon(strip(LEFT_EDGE - SHOULDER, RIGHT_EDGE + SHOULDER, nearest, FARTHEST));
    painter.setBrush(QColor(ROAD));
    painter.drawPolygon(strip(LEFT_EDGE, RIGHT_EDGE, nearest, FARTHEST));
    painter.setBrush(QColor(PAINT));
    painter.drawPolygon(strip(LEFT_EDGE - LINE_WIDTH, LEFT_EDGE, nearest, FARTHEST));
    painter.drawPolygon(strip(RIGHT_EDGE, RIGHT_EDGE + LINE_WIDTH, nearest, FARTHEST));

    const double middle = LANE / 2;
    for (const double dash : alongRoad(DASH_PERIOD, 90)) {
        const double from = std::max(nearest, dash);
        if (dash + DASH > from)
            painter.drawPolygon(strip(middle - LINE_WIDTH, middle + LINE_WIDTH, from, dash + DASH));
    }
}

void Scene::paintPosts(QPainter& painter) const
{
    painter.setBrush(QColor(POST));
    for (const double ahead : alongRoad(POST_PERIOD, 150)) {
        if (ahead < nearest)
            continue;
        for (const double right : {LEFT_EDGE - SHOULDER - 1, RIGHT_EDGE + SHOULDER + 1}) {
            const QPointF foot = project(right, ahead);
            const QPointF head = project(right, ahead, 6);
            const double width = SceneBackdrop::focalLength(size) / ahead * 0.14;
            painter.drawRect(QRectF(QPointF(foot.x() - width / 2, head.y()), QPointF(foot.x() + width / 2, foot.y())));
        }
    }
}

void Scene::paintTunnel(QPainter& painter) const
{
    painter.setBrush(QColor(TUNNEL_LAMP));
    for (const double ahead : alongRoad(LAMP_PERIOD, 120)) {
        if (ahead < nearest)
            continue;
        for (const double right : {LEFT_EDGE - 0.4, RIGHT_EDGE + 0.2}) {
            QPolygonF lamp;
            lamp << project(right, ahead, 4.8) << project(right + 0.5, ahead, 4.8)
                 << project(right + 0.5, ahead + 2, 4.8) << project(right, ahead + 2, 4.8);
            painter.drawPolygon(lamp);
        }
    }
}

void Scene::paintOtherCar(QPainter& painter, double seconds) const
{
    const double speed = static_cast<double>(now.speed);
    if (kind == RecordingKind::Parking) {
        // Nothing moves but one car that passes by.
        const double passed = (seconds - static_cast<double>(log.states.size()) / (2.0 * SAMPLES_PER_SECOND)) * 7;
        const double ahead = side == CameraSide::Front ? passed : -passed;
        if (ahead > nearest && ahead < 120)
            paintCar(painter, LANE, ahead, PASSING_CAR, false);
        return;
    }
    const double sway = 0.25 * std::sin(seconds * 0.7);
    if (side == CameraSide::Front)
        paintCar(painter, sway, 6.5 + speed * 0.85, LEAD_CAR, now.acceleration < -0.6F || speed < 0.5);
    else
        paintCar(painter, LANE + sway, 9 + speed * 0.5 + 3 * std::sin(seconds * 0.4), FOLLOWING_CAR, false);
}

void Scene::paintCar(QPainter& painter, double right, double ahead, QRgb body, bool brakeLights) const
{
    const double metre = SceneBackdrop::focalLength(size) / ahead;
    const QPointF foot = project(right, ahead);
    const auto box = [&](double left, double bottom, double width, double height) {
        return QRectF(foot.x() + left * metre, foot.y() - (bottom + height) * metre, width * metre, height * metre);
    };
    painter.setBrush(QColor(0xff1c1d1f));
    painter.drawRect(box(-0.8, 0, 0.3, 0.4));
    painter.drawRect(box(0.5, 0, 0.3, 0.4));
    painter.setBrush(QColor(body));
    painter.drawRoundedRect(box(-0.9, 0.2, 1.8, 0.75), 0.12 * metre, 0.12 * metre);
    painter.drawRoundedRect(box(-0.75, 0.6, 1.5, 0.85), 0.2 * metre, 0.2 * metre);
    painter.setBrush(QColor(CAR_GLASS));
    painter.drawRoundedRect(box(-0.62, 0.9, 1.24, 0.42), 0.1 * metre, 0.1 * metre);
    const bool headlights = side == CameraSide::Rear;
    painter.setBrush(QColor(headlights ? 0xfffff2c8 : brakeLights ? 0xffff3b30 : 0xff5c1a1a));
    painter.drawRect(box(-0.85, 0.6, 0.3, 0.16));
    painter.drawRect(box(0.55, 0.6, 0.3, 0.16));
}

void Scene::paintStamp(QPainter& painter, double seconds) const
{
    const QDateTime moment = start.addMSecs(static_cast<qint64>(seconds * 1000));
    const QString text = u"%1  %2 km/h  %3"_s.arg(moment.toString(u"yyyy-MM-dd HH:mm:ss"_s))
                             .arg(std::lround(static_cast<double>(now.speed) * 3.6))
                             .arg(side == CameraSide::Front ? u"FRONT"_s : u"REAR"_s);
    const int margin = size.height() / 60;
    backdrop.paintText(painter, {margin, frameNumberBand(size).top() - backdrop.textHeight() - margin / 2}, text);
}

} // namespace cardreel

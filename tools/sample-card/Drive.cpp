#include "sample-card/Drive.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numbers>

namespace cardreel {

namespace {

constexpr double CENTRE_LATITUDE = 35.6777;
constexpr double CENTRE_LONGITUDE = 139.7548;
constexpr double METRES_PER_DEGREE = 111'195.0;
constexpr double TOWN_RADIUS = 2500; // metres; beyond it the car turns back
constexpr double GRAVITY = 9.80665;
constexpr double STEP = 1.0 / SAMPLES_PER_SECOND;

constexpr double CRUISE_SPEED = 50 / 3.6;
constexpr double TURN_SPEED = 20 / 3.6;
constexpr double TURN_RADIUS = 15;
constexpr double COMFORTABLE = 1.9; // m/s2
constexpr double HARD = 7.6;        // m/s2
constexpr double IMPROVISE_BEFORE_PLAN = 20;
constexpr double NEVER = std::numeric_limits<double>::infinity();

// A quick ramp and a slow one: how fast a hard and an ordinary foot move the pedal, in seconds.
constexpr double HARD_FOOT = 0.12;
constexpr double SOFT_FOOT = 0.45;

double approach(double value, double goal, double timeConstant)
{
    return value + (goal - value) * std::min(1.0, STEP / timeConstant);
}

} // namespace

DriveState DriveLog::at(double seconds) const
{
    if (states.empty())
        return {};
    const double position = std::clamp(seconds * SAMPLES_PER_SECOND, 0.0, static_cast<double>(states.size() - 1));
    const auto index = static_cast<std::size_t>(position);
    const auto after = std::min(index + 1, states.size() - 1);
    const auto part = static_cast<float>(position - static_cast<double>(index));
    const DriveState& from = states[index];
    const DriveState& to = states[after];
    DriveState between = from;
    between.distance = from.distance + (to.distance - from.distance) * double{part};
    between.speed = std::lerp(from.speed, to.speed, part);
    between.acceleration = std::lerp(from.acceleration, to.acceleration, part);
    between.curvature = std::lerp(from.curvature, to.curvature, part);
    // The short way round: 359 degrees lies beside 1.
    const float turn = std::remainder(to.course - from.course, 360.0F);
    between.course = from.course + turn * part;
    return between;
}

Drive::Drive(std::uint64_t seed)
    : random(seed)
    , heading(random.between(0, 2 * std::numbers::pi))
    , speedLimit(CRUISE_SPEED)
{
}

void Drive::park()
{
    speed = 0;
    acceleration = 0;
    curvature = 0;
    phase = Phase::Cruise;
    wantedCurvature = 0;
    inTunnel = false;
}

DriveLog Drive::record(RecordingKind kind, int ordinal, int seconds)
{
    if (kind == RecordingKind::Parking)
        park();
    parked = kind == RecordingKind::Parking;
    distance = 0;
    phaseSince = 0;
    knockSince = -100;
    inTunnel = false;
    planRecording(kind, ordinal, seconds);

    DriveLog log;
    const int steps = seconds * SAMPLES_PER_SECOND;
    log.states.reserve(static_cast<std::size_t>(steps) + 1);
    for (int i = 0; i < steps; ++i)
        step(i * STEP, log);
    log.states.push_back(state());
    return log;
}

void Drive::planRecording(RecordingKind kind, int ordinal, double seconds)
{
    plans.clear();
    nextImprovisation = random.between(4, 9);
    switch (kind) {
    case RecordingKind::Normal:
        if (ordinal % 2 == 0)
            plans = {{0.25 * seconds, Act::RedLight}};
        else
            plans = {{0.05 * seconds, Act::Turn}, {0.55 * seconds, Act::TunnelIn}, {0.85 * seconds, Act::TunnelOut}};
        break;
    case RecordingKind::Event:
        plans = {{0.5 * seconds, Act::HardBraking}};
        break;
    case RecordingKind::Manual:
        plans = {{0.1 * seconds, Act::Bend},
                 {0.3 * seconds, Act::DriftLeft},
                 {0.5 * seconds, Act::Bend},
                 {0.7 * seconds, Act::DriftRight}};
        break;
    case RecordingKind::Parking:
        plans = {{0.5 * seconds, Act::Knock}};
        nextImprovisation = NEVER;
        break;
    }
}

bool Drive::shouldTurnRight()
{
    if (std::hypot(east, north) < TOWN_RADIUS)
        return random.chance(0.5);
    const double home = std::atan2(-east, -north);
    return std::remainder(home - heading, 2 * std::numbers::pi) > 0;
}

void Drive::enter(Phase next, double now)
{
    phase = next;
    phaseSince = now;
}

void Drive::begin(Act act, double now, DriveLog& log)
{
    switch (act) {
    case Act::Bend: {
        const double side = shouldTurnRight() ? 1 : -1;
        enter(Phase::Bending, now);
        wantedCurvature = side / random.between(70, 160);
        headingGoal = heading + side * random.between(0.5, 1.0);
        break;
    }
    case Act::Turn:
        enter(Phase::Slowing, now);
        break;
    case Act::RedLight:
        enter(Phase::Stopping, now);
        wantedCurvature = 0;
        waitSeconds = random.between(3, 5);
        break;
    case Act::HardBraking:
        enter(Phase::Braking, now);
        wantedCurvature = 0;
        // Even a car that hardly moves gets its event: somebody runs into it.
        knockSince = now + 0.3;
        knockG = speed > 8 ? -0.2 : -0.9;
        log.warnings.push_back({std::max(0.0, now - 0.4), WarningKind::ForwardCollision, 6.5 + speed * 0.4, 1.2});
        log.warnings.push_back({now, WarningKind::External, 0, 0});
        break;
    case Act::Knock:
        knockSince = now;
        knockG = 0.55;
        break;
    case Act::DriftLeft:
        log.warnings.push_back({now, WarningKind::LaneDepartureLeft, 0, 0});
        break;
    case Act::DriftRight:
        log.warnings.push_back({now, WarningKind::LaneDepartureRight, 0, 0});
        break;
    case Act::TunnelIn:
        inTunnel = true;
        break;
    case Act::TunnelOut:
        inTunnel = false;
        break;
    }
}

// Long recordings would be dull with what is planned alone.
void Drive::improvise(double now, DriveLog& log)
{
    nextImprovisation = now + random.between(10, 24);
    const bool planSoon = !plans.empty() && plans.front().time - now < IMPROVISE_BEFORE_PLAN;
    if (phase != Phase::Cruise || planSoon || inTunnel)
        return;
    const double dice = random.between(0, 1);
    if (dice < 0.45)
        begin(Act::Bend, now, log);
    else if (dice < 0.65)
        begin(Act::Turn, now, log);
    else if (dice < 0.85)
        begin(Act::RedLight, now, log);
    else
        speedLimit = random.between(40, 62) / 3.6;
}

// Sets the wanted acceleration and curvature from the phase.
void Drive::control(double now, DriveLog& log)
{
    const double inPhase = now - phaseSince;
    double goal = speedLimit;
    double wanted = 0;
    switch (phase) {
    case Phase::Cruise:
        wantedCurvature = 0.0012 * std::sin(now * 0.35);
        break;
    case Phase::Bending:
        goal = std::min(speedLimit, std::sqrt(2.2 / std::abs(wantedCurvature)));
        if ((headingGoal - heading) * wantedCurvature <= 0)
            enter(Phase::Cruise, now);
        break;
    case Phase::Slowing:
        goal = TURN_SPEED;
        if (speed < TURN_SPEED + 0.8 && (speed > 2 || inPhase > 2)) {
            const double side = shouldTurnRight() ? 1 : -1;
            wantedCurvature = side / TURN_RADIUS;
            headingGoal = heading + side * (std::numbers::pi / 2 - 0.25); // the wheel takes a while to come back
            enter(Phase::Turning, now);
        }
        break;
    case Phase::Turning:
        goal = TURN_SPEED;
        if ((headingGoal - heading) * wantedCurvature <= 0)
            enter(Phase::Cruise, now);
        break;
    case Phase::Stopping:
        goal = 0;
        if (speed < 0.05)
            enter(Phase::Waiting, now);
        break;
    case Phase::Waiting:
        goal = 0;
        if (inPhase > waitSeconds) {
            log.warnings.push_back({now, WarningKind::StartDelay, 0, 0});
            enter(Phase::Cruise, now);
        }
        break;
    case Phase::Braking:
        goal = 0;
        if (speed < 2 || inPhase > 1.9)
            enter(Phase::Cruise, now);
        break;
    }

    if (phase == Phase::Braking)
        wanted = -HARD;
    else if (goal == 0)
        wanted = speed > 0.8 ? -COMFORTABLE : -0.7;
    else
        wanted = std::clamp((goal - speed) * 0.9, -COMFORTABLE, COMFORTABLE * std::max(0.2, 1 - speed / 28));
    acceleration = approach(acceleration, wanted, phase == Phase::Braking ? HARD_FOOT : SOFT_FOOT);
}

void Drive::step(double now, DriveLog& log)
{
    while (!plans.empty() && plans.front().time <= now + 1e-9) {
        const Act act = plans.front().act;
        plans.pop_front();
        begin(act, now, log);
    }
    if (now >= nextImprovisation)
        improvise(now, log);
    if (!parked)
        control(now, log);

    DriveState current = state();
    const double sinceKnock = now - knockSince;
    if (sinceKnock >= 0 && sinceKnock < 0.6) {
        const double ring = std::exp(-sinceKnock * 7) * std::cos(sinceKnock * 16);
        current.gx += static_cast<float>(knockG * ring);
        current.gy += static_cast<float>(knockG * 0.4 * ring);
        current.gz += static_cast<float>(std::abs(knockG) * 0.5 * ring);
    }
    log.states.push_back(current);

    if (parked)
        return;
    speed = std::max(0.0, speed + acceleration * STEP);
    if (speed == 0 && acceleration < 0)
        acceleration = 0;
    curvature = approach(curvature, wantedCurvature, 0.6);
    const double way = speed * STEP;
    heading += way * curvature;
    east += way * std::sin(heading);
    north += way * std::cos(heading);
    distance += way;
}

DriveState Drive::state()
{
    DriveState now;
    now.latitude = CENTRE_LATITUDE + north / METRES_PER_DEGREE;
    now.longitude = CENTRE_LONGITUDE + east / (METRES_PER_DEGREE * std::cos(CENTRE_LATITUDE * std::numbers::pi / 180));
    now.distance = distance;
    now.speed = static_cast<float>(speed);
    const double degrees = std::fmod(heading * 180 / std::numbers::pi, 360);
    now.course = static_cast<float>(degrees < 0 ? degrees + 360 : degrees);
    now.acceleration = static_cast<float>(acceleration);
    now.curvature = static_cast<float>(curvature);
    // The faster, the rougher the road feels; an engine at rest still trembles.
    const double rough = 0.008 + 0.0035 * speed;
    now.gx = static_cast<float>(acceleration / GRAVITY + random.noise(rough));
    now.gy = static_cast<float>(speed * speed * curvature / GRAVITY + random.noise(rough));
    now.gz = static_cast<float>(random.noise(rough * 1.5));
    now.inTunnel = inTunnel;
    return now;
}

} // namespace cardreel

// Drives a car through a made-up town: bends, crossings, red lights, a hard braking, a tunnel. The car keeps its place
// and speed from one recording to the next, so that the recordings of a trip join on the map. One thread.
#pragma once

#include "sample-card/Random.h"

#include <QtGlobal>

#include <cstdint>
#include <deque>
#include <vector>

namespace cardreel {

enum class RecordingKind { Normal, Event, Manual, Parking };

// The car at one tenth of a second.
struct DriveState
{
    double latitude = 0; // degrees
    double longitude = 0;
    double distance = 0;    // metres since the beginning of the recording
    float speed = 0;        // m/s
    float course = 0;       // degrees clockwise from north, 0..360
    float acceleration = 0; // m/s2 along the road
    float curvature = 0;    // 1/m, positive to the right
    float gx = 0;           // G along the car, gravity taken out as the recorder does
    float gy = 0;           // G to the right
    float gz = 0;           // G upwards
    bool inTunnel = false;  // no GPS fix
};

enum class WarningKind { StartDelay, LaneDepartureLeft, LaneDepartureRight, ForwardCollision, External };

struct DriveWarning
{
    double time = 0; // seconds into the recording
    WarningKind kind = WarningKind::StartDelay;
    double distance = 0; // forward collision: metres to the car ahead
    double preTime = 0;  // forward collision: seconds until it would be hit
};

struct DriveLog
{
    std::vector<DriveState> states; // ten a second, from the beginning to the end of the recording, both included
    std::vector<DriveWarning> warnings;

    DriveState at(double seconds) const; // interpolated
};

inline constexpr int SAMPLES_PER_SECOND = 10;

class Drive
{
public:
    explicit Drive(std::uint64_t seed);

    // Drives on for one recording, with what its kind asks for in it. `ordinal` counts the recordings of the card and
    // varies the ordinary ones.
    DriveLog record(RecordingKind kind, int ordinal, int seconds);

    // The car stands still, as between two trips.
    void park();

private:
    enum class Act { Bend, Turn, RedLight, HardBraking, Knock, DriftLeft, DriftRight, TunnelIn, TunnelOut };
    enum class Phase { Cruise, Bending, Slowing, Turning, Stopping, Waiting, Braking };
    struct Plan
    {
        double time;
        Act act;
    };

    void planRecording(RecordingKind kind, int ordinal, double seconds);
    void begin(Act act, double now, DriveLog& log);
    void enter(Phase next, double now);
    void improvise(double now, DriveLog& log);
    void step(double now, DriveLog& log);
    void control(double now, DriveLog& log);
    bool shouldTurnRight();
    DriveState state();

    Random random;
    double east = 0; // metres from the town's centre
    double north = 0;
    double heading; // radians clockwise from north
    double speed = 0;
    double acceleration = 0;
    double curvature = 0;
    double distance = 0;

    Phase phase = Phase::Cruise;
    double speedLimit;
    double wantedCurvature = 0;
    double headingGoal = 0;
    double phaseSince = 0;
    double waitSeconds = 0;
    double nextImprovisation = 0;
    double knockSince = -100;
    double knockG = 0;
    bool parked = false;
    bool inTunnel = false;
    std::deque<Plan> plans; // ascending by time
};

} // namespace cardreel

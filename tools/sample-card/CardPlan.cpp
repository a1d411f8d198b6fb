#include "sample-card/CardPlan.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

// Nobody drives longer in a day; a card with more recordings holds more days, and at least two, so that a route's
// colour changes.
constexpr int SECONDS_PER_TRIP = 4 * 3600;
constexpr int SECONDS_BETWEEN_TRIPS = 24 * 3600 + 1260;
constexpr int SECONDS_BEFORE_PARKING = 600;
constexpr int SMALLEST_TRIP_WITH_PARKING = 3;

constexpr std::array DRIVING = {RecordingKind::Normal, RecordingKind::Event, RecordingKind::Normal,
                                RecordingKind::Manual};

} // namespace

QString recorderStem(const QDateTime& moment)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    QString stem;
    for (const int part : {date.year() % 100, date.month(), date.day(), time.hour(), time.minute(), time.second()})
        stem += u"%1"_s.arg(part, 2, 10, QLatin1Char('0'));
    return stem;
}

QString PlannedRecording::stem() const
{
    return recorderStem(start);
}

QString PlannedRecording::folder() const
{
    switch (kind) {
    case RecordingKind::Event:
        return u"EVENT"_s;
    case RecordingKind::Manual:
        return u"MANUAL"_s;
    case RecordingKind::Parking:
        return u"PARKING"_s;
    case RecordingKind::Normal:
        break;
    }
    return u"NORMAL"_s;
}

// Recorders differ in where they put it; the card shows every place at once.
QString PlannedRecording::sideFilePath() const
{
    switch (kind) {
    case RecordingKind::Event:
        return u"EVENT/%1.NMEA"_s.arg(stem());
    case RecordingKind::Manual:
        return u"MANUAL/%1.CED"_s.arg(stem());
    case RecordingKind::Normal:
    case RecordingKind::Parking:
        break;
    }
    return u"SYSTEM/NMEA/%1/%2.NMEA"_s.arg(folder(), stem());
}

QString PlannedRecording::tripID() const
{
    return u"%1"_s.arg(trip + 1, 8, 10, QLatin1Char('0'));
}

CardPlan planCard(const Options& options)
{
    CardPlan plan;
    const qint64 allSeconds = static_cast<qint64>(options.recordings) * options.seconds;
    const auto days = static_cast<int>((allSeconds + SECONDS_PER_TRIP - 1) / SECONDS_PER_TRIP);
    const int trips = std::max(options.recordings > 1 ? 2 : 1, days);

    std::array<int, 4> ordinals{};
    std::size_t driving = 0;
    int left = options.recordings;
    for (int trip = 0; trip < trips; ++trip) {
        const int count = (left + trips - trip - 1) / (trips - trip);
        left -= count;
        QDateTime clock = options.start.addSecs(static_cast<qint64>(trip) * SECONDS_BETWEEN_TRIPS);
        for (int i = 0; i < count; ++i) {
            const bool parking = count >= SMALLEST_TRIP_WITH_PARKING && i == count - 1;
            PlannedRecording recording;
            recording.kind = parking ? RecordingKind::Parking : DRIVING.at(driving++ % DRIVING.size());
            if (parking)
                clock = clock.addSecs(SECONDS_BEFORE_PARKING);
            recording.start = clock;
            recording.trip = trip;
            recording.ordinal = ordinals.at(static_cast<std::size_t>(recording.kind))++;
            recording.startsTrip = i == 0;
            recording.hasRear = options.rear == RearCamera::Fitted &&
                                static_cast<int>(plan.recordings.size()) < options.recordings - options.missingRear;
            recording.isProtected = recording.kind == RecordingKind::Event;
            plan.recordings.push_back(recording);
            clock = clock.addSecs(options.seconds);
        }
    }

    // Spread evenly, the first one a good way into its recording; a second that is taken already passes its picture on
    // to the next one.
    std::set<std::pair<std::size_t, int>> taken;
    for (int i = 0; i < options.pictures; ++i) {
        const qint64 moment =
            std::min(allSeconds - 1, (2 * qint64{i} + 1) * allSeconds / (2 * qint64{std::max(1, options.pictures)}));
        for (qint64 probe = 0; probe < allSeconds; ++probe) {
            const qint64 second = (moment + probe) % allSeconds;
            if (taken
                    .insert({static_cast<std::size_t>(second / options.seconds),
                             static_cast<int>(second % options.seconds)})
                    .second)
                break;
        }
    }
    for (const auto& [recording, second] : taken) {
        const auto ordinal = plan.pictures.size();
        const bool hasRear = plan.recordings.at(recording).hasRear && ordinal % 2 == 0;
        plan.pictures.push_back({recording, second, hasRear, ordinal == 0});
    }
    return plan;
}

} // namespace cardreel

// What goes on the card, decided before anything is written: which recordings and pictures, when, and how each is kept.
#pragma once

#include "sample-card/Drive.h"
#include "sample-card/Options.h"

#include <QDateTime>
#include <QString>

#include <vector>

namespace cardreel {

struct PlannedRecording
{
    RecordingKind kind = RecordingKind::Normal;
    QDateTime start; // what the recorder's clock showed, kept as UTC
    int trip = 0;    // from 0
    int ordinal = 0; // among the recordings of its kind, from 0
    bool startsTrip = false;
    bool hasRear = true;
    bool isProtected = false;

    QString stem() const;         // YYMMDDhhmmss
    QString folder() const;       // NORMAL, EVENT, ...
    QString sideFilePath() const; // relative to the card
    QString tripID() const;
};

struct PlannedPicture
{
    std::size_t recording = 0; // during which it was taken
    int second = 0;            // into that recording
    bool hasRear = false;
    bool isProtected = false;
};

struct CardPlan
{
    std::vector<PlannedRecording> recordings; // ascending by start
    std::vector<PlannedPicture> pictures;     // ascending by moment; no two in one second
};

CardPlan planCard(const Options& options);

// The name that the recorder gives to a file of this moment.
QString recorderStem(const QDateTime& moment);

} // namespace cardreel

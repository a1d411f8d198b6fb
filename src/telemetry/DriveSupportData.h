#pragma once

#include "telemetry/ADASLineData.h"

#include <QColor>
#include <QString>

#include <span>
#include <string_view>
#include <vector>

namespace cardreel {

/// One sentence of the driver-assistance unit, and how the views show it. The recorder's own unit is decoded; of the
/// external one the presentation rules are known but its sentence isn't, so its records stay of unknown type. A plain
/// value. Positions count tenths of the interval between two groups of pictures, 5 being the group's own point; an
/// empty text means no warning.
struct DriveSupportData
{
    /// Nothing set, type unknown.
    DriveSupportData();
    /// From the trimmed fields of one sentence, its tag included, in UTF-8.
    explicit DriveSupportData(std::span<const std::string_view> QVDSAComponents);

    QString QVDSAType; ///< one of ConstClass::QVDSA_TYPE_…
    double delayStartPosition = 0;
    QString delayStart;
    double laneDeparturePosition = 0;
    QString laneDepartureLebel;
    QString laneDepartureDirection; ///< "L" or "R"
    double collisionDetectPosition = 0;
    QString collisionDetect;
    double collisionDetectDistance = 0; ///< in the recorder's unit
    double collisionDetectPreTime = 0;  ///< in the recorder's unit
    double longRunningStartPosition = 0;
    QString longRunningStart;
    double wobbleStartPosition = 0;
    QString wobbleStart;
    double rapidAccelerationStartPosition = 0;
    QString rapidAccelerationStart;
    double rapidDecelerationStartPosition = 0;
    QString rapidDecelerationStart;
    double reverseRunStartPosition = 0;
    QString reverseRunStart;
    double viorationOfSignsStartPosition = 0;
    QString viorationOfSignsStart;
    double pedestrianCollisionWarningStartPosition = 0;
    QString pedestrianCollisionWarningStart;
    double abruptHandleLeftStartPosition = 0;
    QString abruptHandleLeftStart;
    double abruptHandleRightStartPosition = 0;
    QString abruptHandleRightStart;

    // Computed from the fields at each call.
    QString appearanceImageName() const; ///< name of an icon; empty when there is nothing to show
    QColor appearanceColor() const;      ///< fully transparent when there is nothing to show
    std::vector<ADASLineData> appearanceLineInfos() const;
    QString appearanceEventName() const; ///< warning text in the user's language; empty when there is nothing to say

    bool operator==(const DriveSupportData& other) const = default;
};

} // namespace cardreel

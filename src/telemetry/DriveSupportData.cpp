#include "telemetry/DriveSupportData.h"

#include "names/ConstClass.h"
#include "platform/text/Localization.h"
#include "telemetry/FieldText.h"

#include <QtGlobal>

#include <array>

namespace cardreel {

namespace {

double number(std::string_view field)
{
    return decimalNumber(field).value_or(0);
}

QString toText(std::string_view field)
{
    return QString::fromUtf8(field.data(), static_cast<qsizetype>(field.size()));
}

bool isOwnUnit(const DriveSupportData& data)
{
    return data.QVDSAType == ConstClass::QVDSA_TYPE_QVCAM;
}

bool isExternalUnit(const DriveSupportData& data)
{
    return data.QVDSAType == ConstClass::QVDSA_TYPE_STRIX;
}

bool isLaneDeparture(const DriveSupportData& data)
{
    return data.laneDepartureDirection == ConstClass::QVDSA_FLAG_STRIX_DEPERTURE_L ||
           data.laneDepartureDirection == ConstClass::QVDSA_FLAG_STRIX_DEPERTURE_R;
}

QString ownUnitEventName(const DriveSupportData& data)
{
    QString name;
    if (!data.delayStart.isEmpty())
        name = localizedText(QT_TRANSLATE_NOOP("Keys", "発進遅れ"));
    if (!data.laneDepartureLebel.isEmpty()) {
        // The unit warns of both sides with the left one's text.
        if (isLaneDeparture(data))
            name = localizedText(QT_TRANSLATE_NOOP("Keys", "左車線注意"));
    }
    if (!data.collisionDetect.isEmpty())
        name = localizedText(QT_TRANSLATE_NOOP("Keys", "前方衝突注意"));
    return name;
}

QString externalUnitEventName(const DriveSupportData& data)
{
    QString name;
    if (data.delayStart == ConstClass::QVDSA_FLAG_STRIX_DELAY)
        name = ConstClass::QVDSA_MESSAGE_STRIX_DELAY();
    if (data.laneDepartureDirection == ConstClass::QVDSA_FLAG_STRIX_DEPERTURE_L)
        name += ConstClass::QVDSA_MESSAGE_STRIX_DEPERTURE_L();
    if (data.laneDepartureDirection == ConstClass::QVDSA_FLAG_STRIX_DEPERTURE_R)
        name += ConstClass::QVDSA_MESSAGE_STRIX_DEPERTURE_R();
    if (data.collisionDetect == ConstClass::QVDSA_FLAG_STRIX_COLLISION)
        name += ConstClass::QVDSA_MESSAGE_STRIX_COLLISION();
    if (data.longRunningStart == ConstClass::QVDSA_FLAG_STRIX_LONGRUNNING)
        name += ConstClass::QVDSA_MESSAGE_STRIX_LONGRUNNING();
    if (data.wobbleStart == ConstClass::QVDSA_FLAG_STRIX_WOBBLE)
        name += ConstClass::QVDSA_MESSAGE_STRIX_WOBBLE();
    if (data.rapidAccelerationStart == ConstClass::QVDSA_FLAG_STRIX_RAPIDACCEL)
        name += ConstClass::QVDSA_MESSAGE_STRIX_RAPIDACCEL();
    if (data.rapidDecelerationStart == ConstClass::QVDSA_FLAG_STRIX_RAPIDDECEL)
        name += ConstClass::QVDSA_MESSAGE_STRIX_RAPIDDECEL();
    if (data.reverseRunStart == ConstClass::QVDSA_FLAG_STRIX_REVERSERUN)
        name += ConstClass::QVDSA_MESSAGE_STRIX_REVERSERUN();
    if (data.viorationOfSignsStart == ConstClass::QVDSA_FLAG_STRIX_VIORATION)
        name += ConstClass::QVDSA_MESSAGE_STRIX_VIORATION();
    if (data.pedestrianCollisionWarningStart == ConstClass::QVDSA_FLAG_STRIX_PEDCOLLISION)
        name += ConstClass::QVDSA_MESSAGE_STRIX_PEDCOLLISION();
    // One text for both sides, even when both are reported.
    if (data.abruptHandleLeftStart == ConstClass::QVDSA_FLAG_STRIX_ABRUPTLEFT ||
        data.abruptHandleRightStart == ConstClass::QVDSA_FLAG_STRIX_ABRUPTRIGHT)
        name += ConstClass::QVDSA_MESSAGE_STRIX_ABRUPTLEFT();
    return name;
}

} // namespace

DriveSupportData::DriveSupportData()
    : QVDSAType(ConstClass::QVDSA_TYPE_UNKNOWN)
{
}

DriveSupportData::DriveSupportData(std::span<const std::string_view> QVDSAComponents)
    : DriveSupportData()
{
    if (QVDSAComponents.size() != ConstClass::QVDSA_COUNT_QVCAM)
        return;
    QVDSAType = ConstClass::QVDSA_TYPE_QVCAM;
    delayStartPosition = number(QVDSAComponents[1]);
    delayStart = toText(QVDSAComponents[2]);
    laneDeparturePosition = number(QVDSAComponents[3]);
    laneDepartureLebel = toText(QVDSAComponents[4]);
    laneDepartureDirection = toText(QVDSAComponents[5]);
    collisionDetectPosition = number(QVDSAComponents[6]);
    collisionDetect = toText(QVDSAComponents[7]);
    collisionDetectDistance = number(QVDSAComponents[8]);
    collisionDetectPreTime = number(QVDSAComponents[9]);
}

QString DriveSupportData::appearanceImageName() const
{
    struct Rule
    {
        bool applies;
        const QString& image;
    };
    QString name;
    // From the least urgent to the most: the last one that applies is shown.
    if (isOwnUnit(*this)) {
        const std::array<Rule, 3> rules = {
            Rule{!delayStart.isEmpty(), ConstClass::QVDSA_ICONIMAGE_NAME_DELAY},
            Rule{!laneDepartureLebel.isEmpty(), ConstClass::QVDSA_ICONIMAGE_NAME_DEPERTURE},
            Rule{!collisionDetect.isEmpty(), ConstClass::QVDSA_ICONIMAGE_NAME_COLLISION},
        };
        for (const Rule& rule : rules)
            name = rule.applies ? rule.image : name;
    } else if (isExternalUnit(*this)) {
        const std::array<Rule, 12> rules = {
            Rule{delayStart == ConstClass::QVDSA_FLAG_STRIX_DELAY, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_DELAY},
            Rule{longRunningStart == ConstClass::QVDSA_FLAG_STRIX_LONGRUNNING,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_LONGRUNNING},
            Rule{wobbleStart == ConstClass::QVDSA_FLAG_STRIX_WOBBLE, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_WOBBLE},
            Rule{viorationOfSignsStart == ConstClass::QVDSA_FLAG_STRIX_VIORATION,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_VIORATION},
            Rule{pedestrianCollisionWarningStart == ConstClass::QVDSA_FLAG_STRIX_PEDCOLLISION,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_PEDCOLLISION},
            Rule{abruptHandleRightStart == ConstClass::QVDSA_FLAG_STRIX_ABRUPTRIGHT,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTRIGHT},
            Rule{abruptHandleLeftStart == ConstClass::QVDSA_FLAG_STRIX_ABRUPTLEFT,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTLEFT},
            Rule{rapidAccelerationStart == ConstClass::QVDSA_FLAG_STRIX_RAPIDACCEL,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_RAPIDACCEL},
            Rule{rapidDecelerationStart == ConstClass::QVDSA_FLAG_STRIX_RAPIDDECEL,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_RAPIDDECEL},
            Rule{collisionDetect == ConstClass::QVDSA_FLAG_STRIX_COLLISION,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_COLLISION},
            Rule{isLaneDeparture(*this), ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_DEPERTURE},
            Rule{reverseRunStart == ConstClass::QVDSA_FLAG_STRIX_REVERSERUN,
                 ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_REVERSERUN},
        };
        for (const Rule& rule : rules)
            name = rule.applies ? rule.image : name;
    }
    return name;
}

QColor DriveSupportData::appearanceColor() const
{
    if (isExternalUnit(*this))
        return adasSTRIXColor;
    QColor color(Qt::transparent);
    if (isOwnUnit(*this)) {
        if (!delayStart.isEmpty())
            color = adasDelayColor;
        if (!laneDepartureLebel.isEmpty())
            color = adasLaneDepartureColor;
        if (!collisionDetect.isEmpty())
            color = adasForwardCollisionColor;
    }
    return color;
}

std::vector<ADASLineData> DriveSupportData::appearanceLineInfos() const
{
    std::vector<ADASLineData> lines;
    const auto addIf = [&lines](bool applies, double position, const QColor& color) {
        if (applies)
            lines.emplace_back(position, color);
    };
    if (isOwnUnit(*this)) {
        addIf(!delayStart.isEmpty(), delayStartPosition, adasDelayColor);
        addIf(!laneDepartureLebel.isEmpty(), laneDeparturePosition, adasLaneDepartureColor);
        addIf(!collisionDetect.isEmpty(), collisionDetectPosition, adasForwardCollisionColor);
    } else if (isExternalUnit(*this)) {
        // The start delay has no marker: the vehicle isn't moving yet.
        addIf(isLaneDeparture(*this), laneDeparturePosition, adasSTRIXColor);
        addIf(collisionDetect == ConstClass::QVDSA_FLAG_STRIX_COLLISION, collisionDetectPosition, adasSTRIXColor);
        addIf(longRunningStart == ConstClass::QVDSA_FLAG_STRIX_LONGRUNNING, longRunningStartPosition, adasSTRIXColor);
        addIf(wobbleStart == ConstClass::QVDSA_FLAG_STRIX_WOBBLE, wobbleStartPosition, adasSTRIXColor);
        addIf(rapidAccelerationStart == ConstClass::QVDSA_FLAG_STRIX_RAPIDACCEL, rapidAccelerationStartPosition,
              adasSTRIXColor);
        addIf(rapidDecelerationStart == ConstClass::QVDSA_FLAG_STRIX_RAPIDDECEL, rapidDecelerationStartPosition,
              adasSTRIXColor);
        addIf(reverseRunStart == ConstClass::QVDSA_FLAG_STRIX_REVERSERUN, reverseRunStartPosition, adasSTRIXColor);
        addIf(viorationOfSignsStart == ConstClass::QVDSA_FLAG_STRIX_VIORATION, viorationOfSignsStartPosition,
              adasSTRIXColor);
        addIf(pedestrianCollisionWarningStart == ConstClass::QVDSA_FLAG_STRIX_PEDCOLLISION,
              pedestrianCollisionWarningStartPosition, adasSTRIXColor);
        addIf(abruptHandleLeftStart == ConstClass::QVDSA_FLAG_STRIX_ABRUPTLEFT, abruptHandleLeftStartPosition,
              adasSTRIXColor);
        addIf(abruptHandleRightStart == ConstClass::QVDSA_FLAG_STRIX_ABRUPTRIGHT, abruptHandleRightStartPosition,
              adasSTRIXColor);
    }
    return lines;
}

QString DriveSupportData::appearanceEventName() const
{
    if (isOwnUnit(*this))
        return ownUnitEventName(*this);
    if (isExternalUnit(*this))
        return externalUnitEventName(*this);
    return {};
}

} // namespace cardreel

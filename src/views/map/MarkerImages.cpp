#include "views/map/MarkerImages.h"

#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "names/ConstClass.h"
#include "platform/image/ApplicationImage.h"

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int placeSize = 32; ///< points; what marks the present position
constexpr int pinSize = 36;   ///< points; what marks a recording

} // namespace

QString recordingImageName(const QString& eventName)
{
    if (eventName == ConstClass::DCF_EVENTNAME_NORMAL)
        return u"fileStartMarker"_s;
    if (eventName == ConstClass::DCF_EVENTNAME_EVENT)
        return u"Accident"_s;
    if (eventName == ConstClass::DCF_EVENTNAME_MANUAL)
        return u"manual"_s;
    if (eventName == ConstClass::DCF_EVENTNAME_PARKING)
        return u"Parking"_s;
    return {};
}

QString annotationImageName(const CustomPointAnnotation& marker)
{
    if (marker.isUserLocation)
        return marker.GPSEnable ? u"CurrentPos_Gmap"_s : u"CurrentPos_Gmap_Disable"_s;
    const std::shared_ptr<DCFInfo> dcf = marker.info.lock();
    return dcf ? recordingImageName(dcf->eventName()) : QString();
}

double annotationRotation(const CustomPointAnnotation& marker)
{
    return marker.isUserLocation && marker.direction >= 0 ? marker.direction : 0;
}

QImage annotationImage(const QString& name, double devicePixelRatio)
{
    const int points = name.startsWith(u"CurrentPos") ? placeSize : pinSize;
    QImage image = applicationImage(name, QSize(points, points) * devicePixelRatio);
    image.setDevicePixelRatio(devicePixelRatio);
    return image;
}

} // namespace cardreel

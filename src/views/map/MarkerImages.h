#pragma once

#include <QImage>
#include <QString>

namespace cardreel {

struct CustomPointAnnotation;

/// Which drawing marks recordings of this kind (ConstClass::DCF_EVENTNAME_…); empty for none.
QString recordingImageName(const QString& eventName);

/// Which drawing marks it: the present position's with or without GPS, or that of the recording's kind; empty for none.
/// Interface thread, because it asks the recording.
QString annotationImageName(const CustomPointAnnotation& marker);

/// How far the drawing is turned clockwise, in degrees: the present position's to its direction, others and unknown
/// directions not at all.
double annotationRotation(const CustomPointAnnotation& marker);

/// The drawing in device pixels; a null picture when there is none of that name. Any thread.
QImage annotationImage(const QString& name, double devicePixelRatio);

} // namespace cardreel

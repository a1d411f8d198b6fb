#include "names/ConstClass.h"

#include "platform/text/Localization.h"

#include <QtGlobal>

using namespace Qt::StringLiterals;

namespace cardreel {

const QString ConstClass::OPENLAYERS_DEFAULT_URL = u"https://openlayers.org/api/OpenLayers.js"_s;
const QString ConstClass::OPENLAYERS_DEFAULT_TILE_URL = u"https://tile.openstreetmap.jp/${z}/${x}/${y}.png"_s;
const QString ConstClass::GOOGLEMAP_DEFAULT_URL =
    u"https://maps.googleapis.com/maps/api/js?v=3.18&sensor=false&region=JP&language=ja"_s;
const QString ConstClass::GPS_TYPE = u"WGS84"_s;

const QString ConstClass::TIMECOUNT_NO_MEDIA = u"----/--/-- --:--:--"_s;
const QString ConstClass::PATH_APPDATA = u"VeldrinTarvolux_J"_s;
const QString ConstClass::PATH_THUMBS = u"thumbs"_s;
const QString ConstClass::EXEC_FFMPEG = u"ffmpeg.exe"_s;

const QString ConstClass::DIRECTORY_INFO_FILE_LM90 = u"../SYSTEM/NMEA/"_s;
const QString ConstClass::DIRECTORY_INFO_FILE = u"../../PRIVATE/MORVEX/CLPEXT/"_s;
const QString ConstClass::PIC_FILE_EXT = u".JPG"_s;
const QString ConstClass::INFO_FILE_EXT_LM90 = u".NMEA"_s;
const QString ConstClass::INFO_FILE_EXT = u".CED"_s;
const QString ConstClass::INFO_FILE_FORMAT = u"{0:D3}_{1:D4}.CED"_s;

const QString ConstClass::DCF_EVENTNAME_NORMAL = u"EVENTNAME_NORMAL"_s;
const QString ConstClass::DCF_EVENTNAME_EVENT = u"EVENTNAME_EVENT"_s;
const QString ConstClass::DCF_EVENTNAME_MANUAL = u"EVENTNAME_MANUAL"_s;
const QString ConstClass::DCF_EVENTNAME_PARKING = u"EVENTNAME_PARKING"_s;

const QString ConstClass::QVDSA_TYPE_QVCAM = u"QVDSA_TYPE_QVCAM"_s;
const QString ConstClass::QVDSA_TYPE_STRIX = u"QVDSA_TYPE_STRIX"_s;
const QString ConstClass::QVDSA_TYPE_UNKNOWN = u"QVDSA_TYPE_UNKNOWN"_s;

const QString ConstClass::REG_LM90_FOLDER_NORMAL = u"NORMAL"_s;
const QString ConstClass::REG_LM90_FOLDER_MANUAL = u"MANUAL"_s;
const QString ConstClass::REG_LM90_FOLDER_EVENT = u"EVENT"_s;
const QString ConstClass::REG_LM90_FOLDER_PARKING = u"PARKING"_s;
const QString ConstClass::REG_LM90_FOLDER_PICTURE = u"PICTURE"_s;
const QString ConstClass::REG_LM90_FOLDER_SYSTEM = u"SYSTEM"_s;
const QString ConstClass::REG_LM90_FOLDER = u"(NORMAL|MANUAL|EVENT|PARKING|PICTURE)"_s;
const QString ConstClass::REG_ALTER_FOLDER_REAR = u"REAR"_s;
const QString ConstClass::REG_ALTER_FOLDER = u"(NORMAL|MANUAL|EVENT|PARKING|PICTURE|REAR)"_s;
const QString ConstClass::REG_00_99 = u"([\\d][\\d])"_s;
const QString ConstClass::REG_01_12 = u"(0[1-9]|1[0-2])"_s;
const QString ConstClass::REG_01_31 = u"(0[1-9]|[1-2][\\d]|3[0-1])"_s;
const QString ConstClass::REG_00_23 = u"([0-1][\\d]|2[0-3])"_s;
const QString ConstClass::REG_00_59 = u"([0-5][\\d])"_s;
const QString ConstClass::REG_100_999 = u"[1-9][\\d][\\d]"_s;
const QString ConstClass::REG_0001_0009 = u"(000[1-9])"_s;
const QString ConstClass::REG_0010_0099 = u"((00[1-9][\\d]))"_s;
const QString ConstClass::REG_0100_0999 = u"(0[1-9][\\d][\\d])"_s;
const QString ConstClass::REG_1000_9999 = u"([1-9][\\d][\\d][\\d])"_s;
const QString ConstClass::REG_0001_9999 =
    u'(' + REG_0001_0009 + u'|' + REG_0010_0099 + u'|' + REG_0100_0999 + u'|' + REG_1000_9999 + u')';
const QString ConstClass::REG_LM90_FILE = REG_00_99 + REG_01_12 + REG_01_31 + REG_00_23 + REG_00_59 + REG_00_59;
const QString ConstClass::REG_LM90_FILE_VIDEO = REG_LM90_FILE + u".(mp4|MP4|mov|MOV)"_s;
const QString ConstClass::REG_LM90_FILE_PIC = REG_LM90_FILE + u".(jpg|JPG)"_s;
const QString ConstClass::REG_DCF_ROOT_FOLDER = u"DCIM"_s;
const QString ConstClass::REG_DCF_FOLDER = REG_100_999 + u".{5}"_s;
const QString ConstClass::REG_DCF_FILE = u".{4}"_s + REG_0001_9999;
const QString ConstClass::REG_DCF_FILE_VIDEO = REG_DCF_FILE + u"/.(mp4|MP4|mov|MOV)"_s;
const QString ConstClass::REG_DCF_FILE_PIC = REG_DCF_FILE + u"/.(jpg|JPG)"_s;

const QString ConstClass::QVDSA_ICONIMAGE_NAME_DELAY = u"adas_start_delay"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_DEPERTURE = u"adas_lane_departure"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_COLLISION = u"adas_forward_collision"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_DELAY = u"adas_strix_start_delay"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_DEPERTURE = u"adas_strix_lane_departure"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_COLLISION = u"adas_strix_forward_collision"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_LONGRUNNING = u"adas_strix_longrunning"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_WOBBLE = u"adas_strix_wobble"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_RAPIDACCEL = u"adas_strix_speedup"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_RAPIDDECEL = u"adas_strix_speeddown"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_REVERSERUN = u"adas_strix_reverse"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_VIORATION = u"adas_strix_vioration"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_PEDCOLLISION = u"adas_strix_pedcollision"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTLEFT = u"adas_strix_handle"_s;
const QString ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTRIGHT = u"adas_strix_handle"_s;

#define CARDREEL_MESSAGE(name, key)                                                                                    \
    const QString& ConstClass::name()                                                                                  \
    {                                                                                                                  \
        static const QString text = localizedText(key);                                                                \
        return text;                                                                                                   \
    }

CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_DELAY, QT_TRANSLATE_NOOP("Keys", "発進遅れ,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_DEPERTURE_L, QT_TRANSLATE_NOOP("Keys", "左車線注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_DEPERTURE_R, QT_TRANSLATE_NOOP("Keys", "右車線注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_COLLISION, QT_TRANSLATE_NOOP("Keys", "衝突注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_LONGRUNNING, QT_TRANSLATE_NOOP("Keys", "長時間走行注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_WOBBLE, QT_TRANSLATE_NOOP("Keys", "ふらつき注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_RAPIDACCEL, QT_TRANSLATE_NOOP("Keys", "急加速注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_RAPIDDECEL, QT_TRANSLATE_NOOP("Keys", "急減速注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_REVERSERUN, QT_TRANSLATE_NOOP("Keys", "逆走,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_VIORATION, QT_TRANSLATE_NOOP("Keys", "一時停止注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_PEDCOLLISION, QT_TRANSLATE_NOOP("Keys", "歩行者衝突注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_ABRUPTLEFT, QT_TRANSLATE_NOOP("Keys", "急ハンドル注意,"))
CARDREEL_MESSAGE(QVDSA_MESSAGE_STRIX_ABRUPTRIGHT, QT_TRANSLATE_NOOP("Keys", "急ハンドル注意,"))

#undef CARDREEL_MESSAGE

const QString ConstClass::QVDSA_FLAG_STRIX_DELAY = u"M"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_DEPERTURE_L = u"L"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_DEPERTURE_R = u"R"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_COLLISION = u"F"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_LONGRUNNING = u"L"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_WOBBLE = u"W"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_RAPIDACCEL = u"A"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_RAPIDDECEL = u"D"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_REVERSERUN = u"G"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_VIORATION = u"V"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_PEDCOLLISION = u"PE"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_ABRUPTLEFT = u"HL"_s;
const QString ConstClass::QVDSA_FLAG_STRIX_ABRUPTRIGHT = u"HR"_s;

} // namespace cardreel

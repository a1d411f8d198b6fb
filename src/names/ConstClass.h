#pragma once

#include <QString>

#include <cstdint>

namespace cardreel {

/// The one table of names, patterns, limits and keys: nothing else in the program spells a folder name or a pattern of
/// a card. Patterns are in ICU's syntax and match whole names (platform/text/Pattern.h). Constant; any thread.
class ConstClass
{
public:
    ConstClass() = delete;

    // Window message codes of the recorder maker's tools.
    static constexpr int64_t WM_KEYDOWN = 256;
    static constexpr int64_t WM_LBUTTONDOWN = 513;

    static constexpr int64_t MAX_THUMB_CACHE = 5000; ///< thumbnails kept in the cache folder
    static constexpr double MAP_INIT_X = 139.754813; ///< longitude of the map's first centre, degrees
    static constexpr double MAP_INIT_Y = 35.67773;   ///< latitude of the map's first centre, degrees
    static constexpr int64_t MAP_INIT_ZOOM = 13;
    static constexpr int64_t DATA_ENTRY_INTERVAL = 100;
    static constexpr int64_t TIMER_SLIDER_INTERVAL = 200;
    static constexpr int64_t THUMB_WIDTH = 192;  ///< pixels
    static constexpr int64_t THUMB_HEIGHT = 108; ///< pixels

    // How many fields, tag included, the two kinds of driver-assistance unit write.
    static constexpr int64_t QVDSA_COUNT_QVCAM = 17;
    static constexpr int64_t QVDSA_COUNT_STRIX = 28;

    // Endpoints of map pages. The hosts are examples of their kind; the map's own tile source is configured elsewhere.
    static const QString OPENLAYERS_DEFAULT_URL;
    static const QString OPENLAYERS_DEFAULT_TILE_URL;
    static const QString GOOGLEMAP_DEFAULT_URL;
    static const QString GPS_TYPE;

    static const QString TIMECOUNT_NO_MEDIA; ///< the clock when nothing is loaded
    static const QString PATH_APPDATA;
    static const QString PATH_THUMBS;
    static const QString EXEC_FFMPEG;

    static const QString DIRECTORY_INFO_FILE_LM90; ///< side files of the recorder layout, from a recording's folder
    static const QString DIRECTORY_INFO_FILE;      ///< side files of the DCF layout, from a recording's folder
    static const QString PIC_FILE_EXT;
    static const QString INFO_FILE_EXT_LM90;
    static const QString INFO_FILE_EXT;
    static const QString INFO_FILE_FORMAT; ///< {0} the folder's number, {1} the file's

    // Kinds of recording; keys of user-visible texts too.
    static const QString DCF_EVENTNAME_NORMAL;
    static const QString DCF_EVENTNAME_EVENT;
    static const QString DCF_EVENTNAME_MANUAL;
    static const QString DCF_EVENTNAME_PARKING;

    // Kinds of driver-assistance record.
    static const QString QVDSA_TYPE_QVCAM;
    static const QString QVDSA_TYPE_STRIX;
    static const QString QVDSA_TYPE_UNKNOWN;

    static const QString REG_LM90_FOLDER_NORMAL;
    static const QString REG_LM90_FOLDER_MANUAL;
    static const QString REG_LM90_FOLDER_EVENT;
    static const QString REG_LM90_FOLDER_PARKING;
    static const QString REG_LM90_FOLDER_PICTURE;
    static const QString REG_LM90_FOLDER_SYSTEM;
    static const QString REG_LM90_FOLDER;
    static const QString REG_ALTER_FOLDER_REAR;
    static const QString REG_ALTER_FOLDER;
    static const QString REG_00_99;
    static const QString REG_01_12;
    static const QString REG_01_31;
    static const QString REG_00_23;
    static const QString REG_00_59;
    static const QString REG_100_999;
    static const QString REG_0001_0009;
    static const QString REG_0010_0099;
    static const QString REG_0100_0999;
    static const QString REG_1000_9999;
    static const QString REG_0001_9999;
    static const QString REG_LM90_FILE; ///< YYMMDDhhmmss
    static const QString REG_LM90_FILE_VIDEO;
    static const QString REG_LM90_FILE_PIC;
    static const QString REG_DCF_ROOT_FOLDER;
    static const QString REG_DCF_FOLDER;
    static const QString REG_DCF_FILE;
    static const QString REG_DCF_FILE_VIDEO;
    static const QString REG_DCF_FILE_PIC;

    // Names of the warnings' icons.
    static const QString QVDSA_ICONIMAGE_NAME_DELAY;
    static const QString QVDSA_ICONIMAGE_NAME_DEPERTURE;
    static const QString QVDSA_ICONIMAGE_NAME_COLLISION;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_DELAY;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_DEPERTURE;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_COLLISION;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_LONGRUNNING;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_WOBBLE;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_RAPIDACCEL;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_RAPIDDECEL;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_REVERSERUN;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_VIORATION;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_PEDCOLLISION;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTLEFT;
    static const QString QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTRIGHT;

    // The warnings' texts in the user's language, looked up once, at the first use. Each ends in a comma of its own,
    // for they are joined one after another.
    static const QString& QVDSA_MESSAGE_STRIX_DELAY();
    static const QString& QVDSA_MESSAGE_STRIX_DEPERTURE_L();
    static const QString& QVDSA_MESSAGE_STRIX_DEPERTURE_R();
    static const QString& QVDSA_MESSAGE_STRIX_COLLISION();
    static const QString& QVDSA_MESSAGE_STRIX_LONGRUNNING();
    static const QString& QVDSA_MESSAGE_STRIX_WOBBLE();
    static const QString& QVDSA_MESSAGE_STRIX_RAPIDACCEL();
    static const QString& QVDSA_MESSAGE_STRIX_RAPIDDECEL();
    static const QString& QVDSA_MESSAGE_STRIX_REVERSERUN();
    static const QString& QVDSA_MESSAGE_STRIX_VIORATION();
    static const QString& QVDSA_MESSAGE_STRIX_PEDCOLLISION();
    static const QString& QVDSA_MESSAGE_STRIX_ABRUPTLEFT();
    static const QString& QVDSA_MESSAGE_STRIX_ABRUPTRIGHT();

    // The letters by which the external unit names its warnings.
    static const QString QVDSA_FLAG_STRIX_DELAY;
    static const QString QVDSA_FLAG_STRIX_DEPERTURE_L;
    static const QString QVDSA_FLAG_STRIX_DEPERTURE_R;
    static const QString QVDSA_FLAG_STRIX_COLLISION;
    static const QString QVDSA_FLAG_STRIX_LONGRUNNING; ///< the same letter as the left lane departure's
    static const QString QVDSA_FLAG_STRIX_WOBBLE;
    static const QString QVDSA_FLAG_STRIX_RAPIDACCEL;
    static const QString QVDSA_FLAG_STRIX_RAPIDDECEL;
    static const QString QVDSA_FLAG_STRIX_REVERSERUN;
    static const QString QVDSA_FLAG_STRIX_VIORATION;
    static const QString QVDSA_FLAG_STRIX_PEDCOLLISION;
    static const QString QVDSA_FLAG_STRIX_ABRUPTLEFT;
    static const QString QVDSA_FLAG_STRIX_ABRUPTRIGHT;
};

} // namespace cardreel

#pragma once

#include <qnamespace.h>

namespace cardreel {

/// What a list's delegate asks of a row, whatever the row stands for.
enum CardItemRole {
    TitleRole = Qt::UserRole, ///< QString: the time of day
    DetailRole,               ///< QString: size and cameras
    DayRole,                  ///< QString: set on the first row of a day, which carries a header
    KindTextRole,             ///< QString: the kind in the user's words; empty for ordinary recordings
    KindRole,                 ///< QString: one of ConstClass::DCF_EVENTNAME_…; empty for a picture
    LockedRole,               ///< bool
    ThumbnailPathRole,        ///< QString: empty while there is none
};

} // namespace cardreel

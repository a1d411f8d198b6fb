#include "export/EventNames.h"

#include "names/ConstClass.h"
#include "platform/text/Localization.h"

namespace cardreel {

QString eventRecordName(const QString& eventName)
{
    if (eventName == ConstClass::DCF_EVENTNAME_MANUAL)
        //: 手動記録 プレースマーク名称
        return localizedText(QT_TRANSLATE_NOOP("Keys", "MANUAL RECORD"));
    if (eventName == ConstClass::DCF_EVENTNAME_PARKING)
        //: 駐車記録 プレースマーク名称
        return localizedText(QT_TRANSLATE_NOOP("Keys", "PARKING RECORD"));
    //: イベント記録 プレースマーク名称
    return localizedText(QT_TRANSLATE_NOOP("Keys", "EVENT RECORD"));
}

} // namespace cardreel

#pragma once

#include "export/DCFAsyncBackUp.h"

#include <QString>

#include <memory>
#include <vector>

/// What the choices for a backup come to: which items, how large, and whether they fit. For the panel and the command
/// alike. The interface thread, which owns the records.
namespace cardreel {

/// Which of the three choices is on; the first that is decides, none is possible.
struct BackUpOptionState
{
    bool backUpOptionAllPicture = false;  ///< all pictures of the listed recordings, then the selected recordings
    bool backUpOptionNoPicture = false;   ///< the selected recordings
    bool backUpOptionOnlyPicture = false; ///< all pictures of the listed recordings
};

using DCFInfoList = std::vector<std::shared_ptr<DCFInfo>>;

/// `arranged`: the recordings that the list shows; `selected`: those of them that are selected.
BackUpList selectedObjectsForOptionState(const BackUpOptionState& state, const DCFInfoList& arranged,
                                         const DCFInfoList& selected);

/// Bytes.
quint64 totalSelectedFileSizeForInfos(const BackUpList& infos);

/// Free bytes where the folder is, or will be once it is made; 0 when that can't be told.
quint64 freeSizeAtVolume(const QString& path);

/// Whether so many bytes fit with more than a mebibyte left.
bool volumeAtPathHasFreeForTargetSize(const QString& path, quint64 targetSize);
/// The same for a known free size.
bool hasFreeForTargetSize(quint64 freeSize, quint64 targetSize);

/// For people, in the unit that fits.
QString freeSizeDisplayAtPath(const QString& path);
QString selectedFileSizeDisplay(const BackUpList& infos);

} // namespace cardreel

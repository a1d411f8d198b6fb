#pragma once

#include "media/CardLayout.h"
#include "media/ThumbnailCache.h"

#include <QObject>

#include <memory>
#include <vector>

namespace cardreel {

class DCFAsyncParser;
class DCFInfo;
class PictureInfo;

/// The library of one open card: its recordings and pictures in order, and the background parse that fills them with
/// telemetry. Belongs to a card's window and lives on the interface thread; it announces and calls nobody.
class MediaLibrary : public QObject, public CardLayout, public ThumbnailCache
{
    Q_OBJECT

public:
    using DCFList = std::vector<std::shared_ptr<DCFInfo>>;
    using PictureList = std::vector<std::shared_ptr<PictureInfo>>;

    explicit MediaLibrary(QObject* parent = nullptr);
    /// Cancels a running parse.
    ~MediaLibrary() override;

    /// Whether a scan may run; true at first.
    bool canReloadMedia() const { return m_canReloadMedia; }
    void setCanReloadMedia(bool can) { m_canReloadMedia = can; }

    /// The recordings by their recorder's clock, earliest first.
    const DCFList& mediaTree() const { return m_mediaTree; }
    const PictureList& pictureTree() const { return m_pictureTree; }
    /// The recordings that the recorder kept for a reason, in the same order.
    DCFList eventTree() const;
    /// Whether any recording has a rear video.
    bool hasSecondary() const { return m_hasSecondary; }
    /// Where the open card is mounted; empty before the first scan.
    const QString& rootPath() const { return m_rootPath; }

    /// The recording in view; null when there is none.
    const std::shared_ptr<DCFInfo>& currentDCF() const { return m_currentDCF; }
    void setCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) { m_currentDCF = dcf; }

    /// Reads the card's folders and announces the outcome; recordings come without telemetry. False, with nothing
    /// changed, when canReloadMedia() is false.
    bool mediaTreeSyncAtRootPath(const QString& rootPath);
    /// Cancels a running parse and starts a new one at this place of mediaTree().
    void reparseAtIndex(size_t index);
    /// The card's volume has a new name: brings every path along and parses anew.
    void volumeRenameToPath(const QString& newRoot, const QString& fromPath);
    /// Ends the background parse for good; what it had under way is not reported.
    void cancelParse();

    // The walks. A file counts when its name matches and the last folder met before it was one whose whole path below
    // the root matches; so the rear camera's own folders (REAR/NORMAL) end what a top-level folder began.
    static DCFList resultDCFs(const QString& rootPath, const QString& foldernameRegexPattern,
                              const QString& videoFilenameRegexPattern);
    /// Files that can't be opened are passed over.
    static PictureList pictures(const QString& rootPath, const QString& foldernameRegexPattern,
                                const QString& pictureFilenameRegexPattern);
    /// The recordings, each with the pictures taken before its end and after the end of the one before.
    static DCFList getFileListAtRootPath(const QString& rootPath, const QString& foldernameRegexPattern,
                                         const QString& videoFilenameRegexPattern, const PictureList& pictureInfos);

Q_SIGNALS:
    /// A scan is over; `active` when the card holds anything.
    void mediaTreeDidSync(bool active);
    /// The running background jobs on this card have to end.
    void jobsShouldCancel();
    /// The recordings live under another root now.
    void didChangeRoot();
    /// A recording's thumbnail, route, marker and telemetry are there.
    void recordingDidParse(const std::shared_ptr<cardreel::DCFInfo>& dcf);
    /// All are, and the routes have their days' colours.
    void parseDidFinish();

private:
    QString m_rootPath;
    DCFList m_mediaTree;
    PictureList m_pictureTree;
    std::shared_ptr<DCFInfo> m_currentDCF;
    std::shared_ptr<DCFAsyncParser> m_currentParser;
    bool m_canReloadMedia = true;
    bool m_hasSecondary = false;
};

} // namespace cardreel

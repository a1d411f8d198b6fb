#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace cardreel {

/// One video whose frames carry their numbers, made with the ffmpeg program.
struct SampleVideo
{
    QString path;
    std::vector<double> starts; ///< each frame's start in seconds, in order
    double duration = 0;
    int rotation = 0; ///< clockwise degrees by which it is shown turned

    /// The number of the frame that is on screen at a time.
    int frameAt(double seconds) const;
    /// The number in a shown picture, turned back before it is read.
    std::optional<int> numberIn(const QImage& picture) const;
};

/// Small videos, good and bad, in a folder that goes with this object. Frames are 320x180, at 30 a second unless said
/// otherwise.
class SampleVideos
{
public:
    static constexpr int frameCount = 100;
    static constexpr int width = 320;
    static constexpr int height = 180;

    /// Of a kind that kinds() lists, or "raw", which has no times and no length, "27.5" (frames a second) or "shorter"
    /// (83 frames). Made once; an empty path when ffmpeg failed.
    const SampleVideo& good(const QByteArray& kind);
    static QList<QByteArray> kinds();

    /// Of a kind that badKinds() lists.
    QString bad(const QByteArray& kind);
    static QList<QByteArray> badKinds();

    /// Whole at first sight, cut off after six tenths.
    const SampleVideo& cut();

    QString folder() const { return m_folder.path(); }

private:
    bool encode(const QString& path, const QStringList& encoder, const QStringList& filters);
    QString file(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    std::map<QByteArray, SampleVideo> m_made;
};

} // namespace cardreel

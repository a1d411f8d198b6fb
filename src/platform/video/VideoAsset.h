#pragma once

#include "platform/video/FrameGenerator.h"

#include <QSize>
#include <QString>

namespace cardreel {

/// A video file as its head describes it. Immutable and shared; any thread.
class VideoAsset
{
public:
    /// Reads the file's head, which takes as long as the card needs: not for the interface thread.
    explicit VideoAsset(const QString& path);

    const QString& path() const { return m_path; }
    /// Whether there is a file at all.
    bool exists() const { return m_exists; }
    /// Seconds; 0 when the file doesn't say. A cut file still claims its full length.
    double duration() const { return m_duration; }
    /// In pixels as shown, pixel shape and rotation applied; empty when there is no readable video track.
    QSize trackSize() const { return m_trackSize; }
    /// Clockwise degrees by which the track is turned when shown: 0, 90, 180 or 270.
    int rotation() const { return m_rotation; }
    /// Average frames per second; 0 when unknown.
    double frameRate() const { return m_frameRate; }
    FrameError error() const { return m_error; }
    /// One sentence for the user, naming the file; empty without an error.
    const QString& errorText() const { return m_errorText; }

private:
    QString m_path;
    bool m_exists = false;
    double m_duration = 0;
    QSize m_trackSize;
    int m_rotation = 0;
    double m_frameRate = 0;
    FrameError m_error = FrameError::None;
    QString m_errorText;
};

} // namespace cardreel

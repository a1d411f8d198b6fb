#pragma once

#include "platform/NewestJob.h"

#include <QImage>
#include <QSize>
#include <QString>

namespace cardreel {

/// A frame that is to be kept as a picture, decoded in the background while the user still names the file. Owned by a
/// pane; interface thread.
class SnapFrame
{
public:
    struct Place
    {
        QString path;
        double seconds = 0; ///< of the file
        QSize size;         ///< of the picture, in pixels

        bool operator==(const Place&) const = default;
    };

    /// Takes as long as the card takes, on any thread; null when there is no such frame.
    static QImage taken(const Place& place);

    /// Begins with this frame, unless it is the one at hand or under way already.
    void prepare(const Place& place);
    void clear();
    /// Null unless it is this frame and ready.
    QImage image(const Place& place) const { return place == m_place ? m_image : QImage(); }

private:
    NewestJob m_job;
    Place m_place;
    QImage m_image;
};

} // namespace cardreel

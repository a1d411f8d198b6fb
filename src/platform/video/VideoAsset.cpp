#include "platform/video/VideoAsset.h"

#include "platform/files/Files.h"
#include "platform/video/BackgroundEnd.h"
#include "platform/video/ScaledImage.h"
#include "platform/video/VideoSource.h"

#include <QCoreApplication>
#include <QPointer>

#include <utility>

extern "C" {
#include <libavformat/avformat.h>
}

namespace cardreel {

VideoAsset::VideoAsset(const QString& path)
    : m_path(path)
{
    const VideoSource source(path, nullptr);
    m_error = source.error();
    m_errorText = source.errorText();
    m_exists = m_error == FrameError::None || files::exists(path);
    if (m_error != FrameError::None)
        return;
    const AVCodecParameters* const parameters = source.stream()->codecpar;
    m_rotation = source.rotation();
    m_trackSize = ScaledImage::shownSize({parameters->width, parameters->height}, source.pixelAspect(), m_rotation, {});
    m_duration = source.duration();
    m_frameRate = source.frameRate();
}

void VideoAsset::load(const QString& path, QObject* context, Loaded loaded)
{
    struct Request
    {
        QPointer<QObject> context;
        Loaded loaded;
    };
    auto request = std::make_shared<Request>(Request{context, std::move(loaded)});
    BackgroundEnd::run([path, request = std::move(request)]() mutable {
        auto asset = std::make_shared<const VideoAsset>(path);
        // The context may be going at this very moment; only its own thread can tell.
        if (QCoreApplication* const application = QCoreApplication::instance())
            QMetaObject::invokeMethod(
                application,
                [request = std::move(request), asset = std::move(asset)] {
                    if (request->context)
                        request->loaded(asset);
                },
                Qt::QueuedConnection);
    });
}

} // namespace cardreel

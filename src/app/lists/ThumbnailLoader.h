#pragma once

#include <QCache>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QSize>
#include <QString>

#include <atomic>
#include <memory>

namespace cardreel {

/// Reads the lists' small pictures from their files off the interface thread, and keeps the last few hundred. Interface
/// thread; shared by the lists of a window.
class ThumbnailLoader : public QObject
{
    Q_OBJECT

public:
    explicit ThumbnailLoader(QObject* parent = nullptr);
    /// What is still being read is dropped.
    ~ThumbnailLoader() override;

    /// The picture filling `pixels`, or a null one, which loaded() follows when the file could be read.
    QPixmap thumbnail(const QString& path, QSize pixels);

    /// Forgets what was read, for another card or the same one come back.
    void clear();

Q_SIGNALS:
    void loaded(const QString& path);

private:
    void take(const QString& path, const QImage& image);

    QCache<QString, QPixmap> m_pixmaps;
    QSet<QString> m_underWay;
    std::shared_ptr<std::atomic<bool>> m_cancelled = std::make_shared<std::atomic<bool>>(false);
};

} // namespace cardreel

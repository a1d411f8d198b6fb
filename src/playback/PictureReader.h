#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

namespace cardreel {

/// Reads still pictures on a thread of its own, one at a time; of those asked for meanwhile only the newest is read.
/// Owned by a pane; interface thread.
class PictureReader : public QObject
{
    Q_OBJECT

public:
    /// A null picture when the file can't be read as one.
    using Read = std::function<void(const QImage& picture)>;

    /// No more than a screen has, so that a pane doesn't hold a camera's whole picture.
    static constexpr QSize mostPictureSize{2560, 1600};

    explicit PictureReader(QObject* parent = nullptr);
    /// Doesn't wait for what is being read; its answer is dropped.
    ~PictureReader() override;

    /// Answers later, unless cancel() or another read() comes first.
    void read(const QString& path, Read read);
    void cancel();

private:
    struct Shared;
    void takeAnswer();

    std::shared_ptr<Shared> m_shared;
    Read m_read;
};

} // namespace cardreel

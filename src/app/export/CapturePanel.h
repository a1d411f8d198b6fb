#pragma once

#include "platform/files/FileCopy.h"
#include "playback/ZoomPlayerViewController.h"
#include "telemetry/CustomLocation.h"

#include <QObject>
#include <QPointer>
#include <QSet>

#include <array>
#include <memory>
#include <optional>

class QFileDialog;

namespace cardreel {

class MapPane;
class MediaController;

/// Leads from a pane's camera button to a saved picture: asks where to, then takes the frame and writes it in the
/// background, and says how that went. Owned by its window; interface thread.
class CapturePanel : public QObject
{
    Q_OBJECT

public:
    using Panes = std::array<ZoomPlayerViewController*, 2>;

    /// Listens to the panes. All but `window`, which is the parent, outlive it or go with the window.
    CapturePanel(MediaController& controller, const MapPane& map, const Panes& panes, QWidget& window);

    /// `path` as a picture is saved: with `extension` behind it, unless it has one that can be written.
    static QString withPictureExtension(const QString& path, const QString& extension);

private:
    /// What was asked for at the press of the button.
    struct Capture
    {
        QPointer<ZoomPlayerViewController> pane;
        ZoomPlayerViewController::SnapRequest request;
        std::optional<CustomLocation> location; ///< of the vehicle; nothing when it isn't known
    };
    using SharedCapture = std::shared_ptr<const Capture>;

    void begin(ZoomPlayerViewController* pane, const ZoomPlayerViewController::SnapRequest& request);
    void ask(const SharedCapture& capture, const QString& proposedPath);
    static void followFilter(QFileDialog& dialog);
    void chosen(const SharedCapture& capture, const QString& path);
    void refuse(const SharedCapture& capture, const QString& path);
    void confirm(const SharedCapture& capture, const QString& path);
    void save(const SharedCapture& capture, const QString& path);
    void didSave(const ZoomPlayerViewController* pane, const QString& path, const QString& problem);
    QString proposedPath(const QString& name) const;

    MediaController& m_controller;
    const MapPane& m_map;
    QWidget& m_window;
    bool m_isAsking = false;
    QSet<QString> m_saving; ///< paths of pictures that aren't on the disk yet
};

} // namespace cardreel

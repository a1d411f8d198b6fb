#include "app/export/CapturePanel.h"

#include "app/WindowKeys.h"
#include "app/export/SheetParts.h"
#include "app/export/TargetPlace.h"
#include "export/ExportDates.h"
#include "export/ImageCapture.h"
#include "media/CustomPointAnnotation.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/Files.h"
#include "platform/files/Places.h"
#include "platform/settings/UserDefaults.h"
#include "playback/MediaController.h"
#include "playback/OptionPopover.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString jpg = QStringLiteral("jpg");
const QString png = QStringLiteral("png");

/// Where the vehicle was, also while the map doesn't show it.
std::optional<CustomLocation> locationOf(const CustomPointAnnotation* marker, Instant date)
{
    if (!marker)
        return {};
    const CustomLocation location({marker->coordinate.latitude, marker->coordinate.longitude}, 0, 1.0, 0,
                                  marker->direction, static_cast<double>(marker->speed), date);
    return location.isValid() ? std::optional(location) : std::nullopt;
}

QString startFolder()
{
    return lastFolder(keys::captureFolder, QStandardPaths::PicturesLocation);
}

/// The extension of the dialog's kind of file.
QString extensionOf(const QFileDialog& dialog)
{
    return dialog.selectedNameFilter().contains(u"*.png"_s) ? png : jpg;
}

/// A path's parts may be broken apart where they begin.
QString breakable(const QString& path)
{
    return files::displayPath(path).replace(u'/', u"/\u200B"_s);
}

QMessageBox* makeBox(QMessageBox::Icon icon, const QString& text, const QString& informativeText, QWidget& window)
{
    auto* box = new QMessageBox(icon, CapturePanel::tr("Capture Picture"), text, QMessageBox::NoButton, &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(informativeText);
    return box;
}

} // namespace

CapturePanel::CapturePanel(MediaController& controller, const MapPane& map, const Panes& panes, QWidget& window)
    : QObject(&window)
    , m_controller(controller)
    , m_map(map)
    , m_window(window)
{
    for (ZoomPlayerViewController* pane : panes) {
        connect(pane, &ZoomPlayerViewController::snapRequested, this,
                [this, pane](const ZoomPlayerViewController::SnapRequest& request) { begin(pane, request); });
    }
}

QString CapturePanel::withPictureExtension(const QString& path, const QString& extension)
{
    return ImageCapture::fileTypes().contains(files::extensionOf(path)) ? path : path + u'.' + extension;
}

void CapturePanel::begin(ZoomPlayerViewController* pane, const ZoomPlayerViewController::SnapRequest& request)
{
    if (std::exchange(m_isAsking, true))
        return;
    const Instant date(std::chrono::milliseconds(std::llround(m_controller.userDate() * 1000)));
    const auto capture =
        std::make_shared<const Capture>(Capture{pane, request, locationOf(m_map.userLocation(), date)});
    // A camera that played on would take the other along.
    for (PlayerPane* player : m_controller.playerVCs()) {
        if (player)
            player->pause();
    }
    ask(capture, freePath(startFolder(), asFileName(captureImageFileName(date)), u'.' + jpg));
}

void CapturePanel::ask(const SharedCapture& capture, const QString& proposedPath)
{
    auto* dialog = new QFileDialog(&m_window, tr("Capture Picture"), files::folderOf(proposedPath));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    // The name isn't the last word yet: an extension may be added to it.
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = {tr("JPEG picture (*.jpg *.jpeg)"), tr("PNG picture, without the place (*.png)")};
    dialog->setNameFilters(filters);
    dialog->selectNameFilter(filters[proposedPath.endsWith(u".png", Qt::CaseInsensitive) ? 1 : 0]);
    dialog->selectFile(files::nameOf(proposedPath));
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog] { followFilter(*dialog); });
    connect(dialog, &QDialog::accepted, this, [this, dialog, capture] {
        const QString path = files::absolutePath(dialog->selectedFiles().value(0));
        chosen(capture, withPictureExtension(path, extensionOf(*dialog)));
    });
    connect(dialog, &QDialog::rejected, this, [this, capture] {
        m_isAsking = false;
        if (capture->pane)
            capture->pane->forgetSnap();
    });
    dialog->open();
}

/// Another kind of file gives the name another extension.
void CapturePanel::followFilter(QFileDialog& dialog)
{
    const QString name = files::nameOf(dialog.selectedFiles().value(0));
    if (name.isEmpty())
        return;
    const bool hasExtension = withPictureExtension(name, jpg) == name;
    dialog.selectFile((hasExtension ? files::stemOf(name) : name) + u'.' + extensionOf(dialog));
}

void CapturePanel::chosen(const SharedCapture& capture, const QString& path)
{
    if (wouldLieWithin(path, m_controller.rootPath()))
        refuse(capture, path);
    else if (files::exists(path))
        confirm(capture, path);
    else
        save(capture, path);
}

void CapturePanel::refuse(const SharedCapture& capture, const QString& path)
{
    QMessageBox* box = makeBox(QMessageBox::Information, tr("The card is never changed."),
                               tr("Choose a folder that isn't on the card."), m_window);
    box->addButton(QMessageBox::Ok);
    connect(box, &QMessageBox::finished, this,
            [this, capture, path] { ask(capture, files::join(startFolder(), files::nameOf(path))); });
    box->open();
}

void CapturePanel::confirm(const SharedCapture& capture, const QString& path)
{
    const QString name = files::displayPath(files::nameOf(path));
    QMessageBox* box = makeBox(QMessageBox::Warning, tr("“%1” is there already.").arg(name),
                               tr("The new picture would take its place."), m_window);
    const QPushButton* replace = box->addButton(tr("Replace"), QMessageBox::DestructiveRole);
    box->setDefaultButton(box->addButton(QMessageBox::Cancel));
    connect(box, &QMessageBox::finished, this, [this, box, replace, capture, path] {
        if (box->clickedButton() == replace)
            save(capture, path);
        else
            ask(capture, path);
    });
    box->open();
}

void CapturePanel::save(const SharedCapture& capture, const QString& path)
{
    m_isAsking = false;
    if (!capture->pane)
        return;
    const std::function<QImage()> snapshot = capture->pane->snapshot(capture->request);
    capture->pane->forgetSnap();
    BackgroundQueue::start(
        [self = QPointer(this), pane = capture->pane, location = capture->location, path, snapshot] {
            const QImage image = snapshot();
            QString problem;
            if (image.isNull())
                problem = tr("There is no picture at this moment of the video.");
            else if (const auto error = ImageCapture::writeFileWithCaptureImage(image, location, path))
                problem = error->text();
            InterfaceThread::callAndWait([&] {
                if (self && pane)
                    self->didSave(pane, path, problem);
            });
        },
        BackgroundQueue::Priority::Soon);
}

void CapturePanel::didSave(ZoomPlayerViewController* pane, const QString& path, const QString& problem)
{
    if (problem.isEmpty()) {
        UserDefaults::shared().setValue(keys::captureFolder, files::folderOf(path));
        OptionPopover::showPopoverWithTarget(pane->snapChip(), tr("Saved to %1").arg(breakable(path)));
        return;
    }
    QMessageBox* box = makeBox(QMessageBox::Critical, tr("The picture couldn't be saved."), problem, m_window);
    box->addButton(QMessageBox::Ok);
    box->open();
}

} // namespace cardreel

#include "app/export/CapturePanel.h"

#include "app/WindowKeys.h"
#include "app/export/SheetParts.h"
#include "app/export/TargetPlace.h"
#include "export/ExportDates.h"
#include "export/ImageCapture.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/Files.h"
#include "platform/files/Places.h"
#include "platform/settings/UserDefaults.h"
#include "playback/MediaController.h"
#include "playback/OptionPopover.h"

#include <QFileDialog>
#include <QMessageBox>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString jpg = QStringLiteral("jpg");
const QString png = QStringLiteral("png");

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
    auto* box = new QMessageBox(icon, CapturePanel::tr("Capture Picture"), text, QMessageBox::Ok, &window);
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
        return pane->forgetSnap();
    const Instant date(std::chrono::milliseconds(std::llround(m_controller.userDate() * 1000)));
    const auto capture =
        std::make_shared<const Capture>(Capture{pane, request, ImageCapture::locationOf(m_map.userLocation(), date)});
    // A camera that played on would take the other along.
    for (PlayerPane* player : m_controller.playerVCs()) {
        if (player)
            player->pause();
    }
    ask(capture, proposedPath(asFileName(captureImageFileName(date))));
}

/// The other camera's picture of this moment may still be on its way to the disk.
QString CapturePanel::proposedPath(const QString& name) const
{
    QString path = freePath(startFolder(), name, u'.' + jpg);
    for (int number = 2; m_saving.contains(path); ++number)
        path = freePath(startFolder(), name + u' ' + QString::number(number), u'.' + jpg);
    return path;
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
    else if (files::exists(path) || m_saving.contains(path))
        confirm(capture, path);
    else
        save(capture, path);
}

void CapturePanel::refuse(const SharedCapture& capture, const QString& path)
{
    QMessageBox* box = makeBox(QMessageBox::Information, tr("The card is never changed."),
                               tr("Choose a folder that isn't on the card."), m_window);
    connect(box, &QMessageBox::finished, this,
            [this, capture, path] { ask(capture, files::join(startFolder(), files::nameOf(path))); });
    box->open();
}

void CapturePanel::confirm(const SharedCapture& capture, const QString& path)
{
    const QString name = files::displayPath(files::nameOf(path));
    const ReplaceQuestion question{tr("Capture Picture"), tr("“%1” is there already.").arg(name),
                                   tr("The new picture would take its place."), tr("Replace")};
    // The panel and its window go together.
    askToReplace(
        m_window, question, [this, capture, path] { save(capture, path); },
        [this, capture, path] { ask(capture, path); });
}

void CapturePanel::save(const SharedCapture& capture, const QString& path)
{
    m_isAsking = false;
    if (!capture->pane)
        return;
    const std::function<QImage()> snapshot = capture->pane->snapshot(capture->request);
    capture->pane->forgetSnap();
    m_saving.insert(path);
    BackgroundQueue::start(
        [self = QPointer(this), pane = capture->pane, location = capture->location, path, snapshot] {
            const QImage image = snapshot();
            QString problem;
            if (image.isNull())
                problem = tr("There is no picture at this moment of the video.");
            else if (const auto error = ImageCapture::writeFileWithCaptureImage(image, location, path))
                problem = error->text();
            InterfaceThread::callAndWait([&] {
                if (self)
                    self->didSave(pane, path, problem);
            });
        },
        BackgroundQueue::Priority::Soon);
}

void CapturePanel::didSave(const ZoomPlayerViewController* pane, const QString& path, const QString& problem)
{
    m_saving.remove(path);
    if (!pane)
        return;
    if (problem.isEmpty()) {
        UserDefaults::shared().setValue(keys::captureFolder, files::folderOf(path));
        OptionPopover::showPopoverWithTarget(pane->snapChip(), tr("Saved to %1").arg(breakable(path)));
        return;
    }
    QMessageBox* box = makeBox(QMessageBox::Critical, tr("The picture couldn't be saved."), problem, m_window);
    box->open();
}

} // namespace cardreel

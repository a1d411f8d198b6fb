#include "views/map/CustomMapCalloutView.h"

#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "platform/image/ApplicationImage.h"
#include "platform/text/Localization.h"
#include "playback/StillPicture.h"
#include "views/map/MarkerImages.h"
#include "views/map/PlaceText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace cardreel {

namespace {

constexpr QSize pictureSize(160, 90);
constexpr int kindDrawingSize = 18;
constexpr int spacing = 8;

/// The marker's own drawing and the kind in words.
QLayout* kindRow(const QString& eventName, const QString& text, double devicePixelRatio)
{
    auto* drawing = new QLabel;
    const QSize pixels = QSize(kindDrawingSize, kindDrawingSize) * devicePixelRatio;
    QImage image = applicationImage(recordingImageName(eventName), pixels);
    image.setDevicePixelRatio(devicePixelRatio);
    drawing->setPixmap(QPixmap::fromImage(image));
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing / 2);
    row->addWidget(drawing);
    row->addWidget(new QLabel(text), 1);
    return row;
}

} // namespace

CustomMapCalloutView::CustomMapCalloutView(const DCFInfo& dcf, QWidget* parent)
    : QWidget(parent)
    , m_imageView(new QLabel)
    , m_calloutActionButton(new QPushButton(tr("Show Recording")))
{
    const QString kind = localizedText(dcf.eventName().toLatin1().constData());
    setAccessibleName(dcf.dcfDateString);
    setAccessibleDescription(kind);
    m_imageView->setFixedSize(pictureSize);
    m_imageView->setAlignment(Qt::AlignCenter);
    m_imageView->setBackgroundRole(QPalette::Mid);
    m_imageView->setAutoFillBackground(true);
    auto* date = new QLabel(dcf.dcfDateString);
    QFont font = date->font();
    font.setWeight(QFont::DemiBold);
    date->setFont(font);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing / 2);
    column->addWidget(m_imageView, 0, Qt::AlignHCenter);
    column->addWidget(date);
    column->addLayout(kindRow(dcf.eventName(), kind, devicePixelRatioF()));
    column->addWidget(m_calloutActionButton);
    load(dcf.thumbnailPath);
}

void CustomMapCalloutView::load(const QString& path)
{
    if (path.isEmpty())
        return;
    const double ratio = devicePixelRatioF();
    m_pictureJob.start([this, path, ratio]() -> NewestJob::Answer {
        const QImage read = readStillPicture(path);
        if (read.isNull())
            return [] {};
        QImage image = read.scaled(pictureSize * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        image.setDevicePixelRatio(ratio);
        return [this, image] { m_imageView->setPixmap(QPixmap::fromImage(image)); };
    });
}

std::unique_ptr<QWidget> makePositionCallout(const CustomPointAnnotation& marker)
{
    auto callout = std::make_unique<QLabel>(positionMarkerText(marker));
    callout->setAccessibleName(CustomMapCalloutView::tr("Present position"));
    return callout;
}

} // namespace cardreel

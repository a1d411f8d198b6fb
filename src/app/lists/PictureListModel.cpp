#include "app/lists/PictureListModel.h"

#include "app/lists/CardItem.h"
#include "media/CardLayout.h"
#include "media/PictureInfo.h"
#include "platform/text/RecorderTime.h"
#include "platform/text/UnitText.h"

namespace cardreel {

namespace {

Instant recorderTimeOf(const PictureInfo& picture)
{
    return recorderDate(picture.deltaPath).value_or(picture.fileDate);
}

QString detailOf(const PictureInfo& picture)
{
    const QString size = dataSizeText(picture.fileSize);
    return picture.location.isValid() ? PictureListModel::tr("%1  ·  with position").arg(size) : size;
}

} // namespace

PictureListModel::PictureListModel(QObject* parent)
    : QAbstractListModel(parent)
{
}

void PictureListModel::setPictures(PictureList pictures)
{
    beginResetModel();
    m_pictures = std::move(pictures);
    endResetModel();
}

int PictureListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_pictures.size());
}

QVariant PictureListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const PictureInfo& info = *picture(index.row());
    switch (role) {
    case TitleRole:
        return recorderTimeText(recorderTimeOf(info));
    case DetailRole:
        return detailOf(info);
    case DayRole: {
        const QString day = recorderDayText(recorderTimeOf(info));
        const bool first = index.row() == 0 || recorderDayText(recorderTimeOf(*picture(index.row() - 1))) != day;
        return first ? day : QString();
    }
    case LockedRole:
        return info.isProtected();
    case ThumbnailPathRole:
        return info.pictureThumbnailPath;
    case Qt::ToolTipRole:
        return info.deltaPath;
    case Qt::AccessibleTextRole:
        return info.pictureName;
    default:
        return {};
    }
}

} // namespace cardreel

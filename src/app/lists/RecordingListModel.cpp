#include "app/lists/RecordingListModel.h"

#include "app/lists/CardItem.h"
#include "media/CardLayout.h"
#include "media/DCFInfo.h"
#include "names/ConstClass.h"
#include "platform/text/Localization.h"
#include "platform/text/RecorderTime.h"
#include "platform/text/UnitText.h"

namespace cardreel {

namespace {

QString detailOf(const DCFInfo& dcf)
{
    const QString cameras =
        dcf.secondaryFilePath.isEmpty() ? RecordingListModel::tr("front") : RecordingListModel::tr("front, rear");
    return RecordingListModel::tr("%1  ·  %2", "size and cameras of a recording")
        .arg(dataSizeText(dcf.fileSize), cameras);
}

} // namespace

QString kindText(const QString& eventName)
{
    // Ordinary recordings need no word in a list, but their key is one of the four.
    static const char* const keys[] = {
        QT_TRANSLATE_NOOP("Keys", "EVENTNAME_NORMAL"), QT_TRANSLATE_NOOP("Keys", "EVENTNAME_EVENT"),
        QT_TRANSLATE_NOOP("Keys", "EVENTNAME_MANUAL"), QT_TRANSLATE_NOOP("Keys", "EVENTNAME_PARKING")};
    if (eventName == ConstClass::DCF_EVENTNAME_NORMAL)
        return {};
    for (const char* key : keys) {
        if (eventName == QLatin1StringView(key))
            return localizedText(key);
    }
    return {};
}

Instant recorderTimeOf(const DCFInfo& dcf)
{
    return recorderDate(dcf.deltaPath).value_or(dcf.fileDate);
}

RecordingListModel::RecordingListModel(QObject* parent)
    : QAbstractListModel(parent)
{
}

void RecordingListModel::setRecordings(DCFList recordings)
{
    beginResetModel();
    m_rows.clear();
    m_rowOf.clear();
    m_rows.reserve(recordings.size());
    std::optional<std::chrono::sys_days> dayBefore;
    for (std::shared_ptr<DCFInfo>& dcf : recordings) {
        const Instant time = recorderTimeOf(*dcf);
        const auto day = std::chrono::floor<std::chrono::days>(time);
        m_rowOf.insert(dcf.get(), static_cast<int>(m_rows.size()));
        m_rows.push_back({std::move(dcf), day == dayBefore ? QString() : recorderDayText(time), std::nullopt});
        dayBefore = day;
    }
    endResetModel();
}

int RecordingListModel::rowOf(const DCFInfo* dcf) const
{
    return m_rowOf.value(dcf, -1);
}

void RecordingListModel::updateRecording(const DCFInfo* dcf)
{
    const int row = rowOf(dcf);
    if (row >= 0)
        Q_EMIT dataChanged(index(row), index(row), {ThumbnailPathRole});
}

int RecordingListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant RecordingListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Row& row = m_rows[static_cast<size_t>(index.row())];
    const DCFInfo& dcf = *row.dcf;
    switch (role) {
    case TitleRole:
        return recorderTimeText(recorderTimeOf(dcf));
    case DetailRole:
        return detailOf(dcf);
    case DayRole:
        return row.day;
    case KindRole:
        return dcf.eventName();
    case KindTextRole:
        return kindText(dcf.eventName());
    case LockedRole:
        if (!row.locked)
            row.locked = dcf.isProtected();
        return *row.locked;
    case ThumbnailPathRole:
        return dcf.thumbnailPath;
    case Qt::ToolTipRole:
        return dcf.deltaPath;
    case Qt::AccessibleTextRole:
        return QString(dcf.dcfName).replace(QLatin1Char('\n'), QLatin1Char(' ')).trimmed();
    default:
        return {};
    }
}

} // namespace cardreel

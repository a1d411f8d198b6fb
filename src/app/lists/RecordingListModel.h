#pragma once

#include "platform/Instant.h"

#include <QAbstractListModel>
#include <QHash>

#include <memory>
#include <optional>
#include <vector>

namespace cardreel {

class DCFInfo;

/// The rows of a list of recordings, as the scan ordered them. Interface thread.
class RecordingListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using DCFList = std::vector<std::shared_ptr<DCFInfo>>;

    explicit RecordingListModel(QObject* parent = nullptr);

    void setRecordings(DCFList recordings);
    const std::shared_ptr<DCFInfo>& recording(int row) const { return m_rows[static_cast<size_t>(row)].dcf; }
    /// -1 when the recording isn't in the list.
    int rowOf(const DCFInfo* dcf) const;
    /// What the background parse found is to be shown.
    void updateRecording(const DCFInfo* dcf);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Row
    {
        std::shared_ptr<DCFInfo> dcf;
        QString day;                        ///< set where the row's day differs from the one before
        mutable std::optional<bool> locked; ///< asked of the card once, when first shown
    };
    std::vector<Row> m_rows;
    QHash<const DCFInfo*, int> m_rowOf;
};

/// When a recording was made by its recorder's clock, as the list says it; Instant{} when nothing tells.
Instant recorderTimeOf(const DCFInfo& dcf);

/// The user's word for a kind of recording; empty for ordinary ones.
QString kindText(const QString& eventName);

} // namespace cardreel

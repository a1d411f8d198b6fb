#pragma once

#include <QAbstractListModel>

#include <memory>
#include <vector>

namespace cardreel {

class PictureInfo;

/// The rows of the list of pictures, as the scan ordered them. Interface thread.
class PictureListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using PictureList = std::vector<std::shared_ptr<PictureInfo>>;

    explicit PictureListModel(QObject* parent = nullptr);

    void setPictures(PictureList pictures);
    const std::shared_ptr<PictureInfo>& picture(int row) const { return m_pictures[static_cast<size_t>(row)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    PictureList m_pictures;
};

} // namespace cardreel

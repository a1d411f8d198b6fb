#pragma once

#include <QStyledItemDelegate>

namespace cardreel {

class ThumbnailLoader;

/// Draws a row of a card's list: thumbnail, time, kind, lock and details, and the day above the first row of a day.
class CardItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// `loader` outlives the delegate.
    explicit CardItemDelegate(ThumbnailLoader& loader, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintThumbnail(QPainter& painter, const QRect& box, const QModelIndex& index) const;

    ThumbnailLoader& m_loader;
};

} // namespace cardreel

#include "app/lists/CardListView.h"

#include "app/Theme.h"
#include "app/lists/CardItem.h"
#include "app/lists/CardItemDelegate.h"
#include "app/lists/ThumbnailLoader.h"

#include <QPainter>

#include <algorithm>

namespace cardreel {

CardListView::CardListView(ThumbnailLoader& loader, const QString& name, QWidget* parent)
    : QListView(parent)
{
    setItemDelegate(new CardItemDelegate(loader, this));
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setMouseTracking(true);
    connect(&loader, &ThumbnailLoader::loaded, this, &CardListView::thumbnailLoaded);
    connect(&Theme::current(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
}

void CardListView::setEmptyText(const QString& text)
{
    m_emptyText = text;
    viewport()->update();
}

QList<int> CardListView::selectedRows() const
{
    QList<int> rows;
    if (selectionModel()) {
        for (const QItemSelectionRange& range : selectionModel()->selection()) {
            for (int row = range.top(); row <= range.bottom(); ++row)
                rows.push_back(row);
        }
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

int CardListView::currentRow() const
{
    const QList<int> rows = selectedRows();
    return rows.size() == 1 ? rows.front() : -1;
}

void CardListView::selectRow(int row)
{
    const QModelIndex index = model()->index(row, 0);
    setCurrentIndex(index);
    scrollTo(index, EnsureVisible);
}

void CardListView::thumbnailLoaded(const QString& path)
{
    if (!isVisible())
        return;
    const int bottom = viewport()->height();
    for (QModelIndex index = indexAt({0, 0}); index.isValid(); index = index.siblingAtRow(index.row() + 1)) {
        const QRect row = visualRect(index);
        if (row.top() >= bottom)
            break;
        if (index.data(ThumbnailPathRole).toString() == path)
            viewport()->update(row);
    }
}

void CardListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles)
{
    if (roles != QList<int>{ThumbnailPathRole})
        return QListView::dataChanged(topLeft, bottomRight, roles);
    for (QModelIndex index = topLeft; index.row() <= bottomRight.row() && index.isValid();
         index = index.siblingAtRow(index.row() + 1))
        viewport()->update(visualRect(index));
}

void CardListView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (!model() || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(Theme::current().colors().muted);
    painter.drawText(viewport()->rect().adjusted(24, 24, -24, -24), Qt::AlignTop | Qt::AlignHCenter | Qt::TextWordWrap,
                     m_emptyText);
}

QItemSelectionModel::SelectionFlags CardListView::selectionCommand(const QModelIndex& index, const QEvent* event) const
{
    return event ? QListView::selectionCommand(index, event) : QItemSelectionModel::ClearAndSelect;
}

void CardListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    Q_EMIT selectedRowsChanged(selectedRows());
}

} // namespace cardreel

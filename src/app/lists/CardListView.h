#pragma once

#include <QListView>

namespace cardreel {

class ThumbnailLoader;

/// One of a window's lists. Shows a plain sentence while it is empty. Interface thread.
class CardListView : public QListView
{
    Q_OBJECT

public:
    /// `loader` outlives the view.
    CardListView(ThumbnailLoader& loader, const QString& name, QWidget* parent = nullptr);

    void setEmptyText(const QString& text);
    /// The selected rows from the top down.
    QList<int> selectedRows() const;
    /// The selected row; -1 when none or several are.
    int currentRow() const;
    /// Selects a row and no other, scrolling as little as shows it.
    void selectRow(int row);

Q_SIGNALS:
    /// The user or the program selected other rows, perhaps none.
    void selectedRowsChanged(const QList<int>& rows);

protected:
    /// A thumbnail's path changes no row's size: unlike other data it only repaints, because the view would lay out all
    /// rows anew, thousands of them for each recording that the background parse reports.
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    void paintEvent(QPaintEvent* event) override;
    /// Only what the user does extends a selection, not what happens while a modifier key is down.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void thumbnailLoaded(const QString& path);

    QString m_emptyText;
};

} // namespace cardreel

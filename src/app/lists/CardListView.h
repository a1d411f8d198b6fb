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
    /// The selected row, or -1.
    int currentRow() const;
    /// Selects a row, scrolling as little as shows it.
    void selectRow(int row);

Q_SIGNALS:
    /// The user or the program chose another row; -1 when none is chosen any more.
    void rowSelected(int row);

protected:
    /// A thumbnail's path changes no row's size: unlike other data it only repaints, because the view would lay out all
    /// rows anew, thousands of them for each recording that the background parse reports.
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    void paintEvent(QPaintEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void thumbnailLoaded(const QString& path);

    QString m_emptyText;
};

} // namespace cardreel

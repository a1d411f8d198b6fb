#pragma once

#include <QStringList>
#include <QWidget>

namespace cardreel {

/// The speed and the three accelerations in figures: four texts in one column, two or four. Its cells don't move, so a
/// new figure repaints only its own. Interface thread.
class ReadoutView : public QWidget
{
    Q_OBJECT

public:
    explicit ReadoutView(QWidget* parent = nullptr);

    /// Four of them.
    void setTexts(const QStringList& texts);
    const QStringList& texts() const { return m_texts; }
    void setColumns(int columns);

    /// What the widest usual text takes.
    static QSize cellSize(const QFont& widgetFont);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect cell(int index) const;

    QStringList m_texts;
    int m_columns = 1;
};

} // namespace cardreel

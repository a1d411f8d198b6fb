#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

namespace cardreel {

/// A driver-assistance warning as a drawing and a word in a frame of its colour. The tool tip has the names in full.
/// Interface thread.
class WarningChip : public QWidget
{
    Q_OBJECT

public:
    static constexpr int chipHeight = 36;

    explicit WarningChip(QWidget* parent = nullptr);

    /// `imageName` names one of the program's drawings.
    void showWarning(const QString& imageName, const QString& eventName, const QColor& color);
    const QString& imageName() const { return m_imageName; }
    const QString& text() const { return m_text; }
    /// The room to keep within, at its right end; one too narrow for a word takes the drawing alone.
    void setRoom(const QRect& room);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void place();
    QFont textFont() const;

    QString m_imageName;
    QString m_text;
    QColor m_color;
    QRect m_room;
    QImage m_drawing; ///< at the present scale
};

} // namespace cardreel

#pragma once

#include <QCheckBox>

namespace cardreel {

/// A check box drawn as a switch at the right of its text. Interface thread.
class SwitchBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit SwitchBox(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;

private:
    void paintTrack(QPainter& painter, const QRectF& track) const;
};

} // namespace cardreel

#pragma once

#include <QComboBox>

namespace cardreel {

/// A menu to choose from that looks like the buttons beside it. The wheel passes it by, to scroll what it stands in: it
/// mustn't change a setting that happens to pass under the pointer. Interface thread.
class MenuBox : public QComboBox
{
    Q_OBJECT

public:
    explicit MenuBox(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace cardreel

#pragma once

#include "platform/NewestJob.h"

#include <QWidget>

#include <memory>

class QLabel;
class QPushButton;

namespace cardreel {

class DCFInfo;
struct CustomPointAnnotation;

/// What a recording's marker says when it is chosen: picture, date and kind, and a button that shows the recording. It
/// looks at the recording only while it is made. Owned by the map; interface thread.
class CustomMapCalloutView : public QWidget
{
    Q_OBJECT

public:
    explicit CustomMapCalloutView(const DCFInfo& dcf, QWidget* parent = nullptr);

    /// Has its size from the beginning; the picture follows when it is read, if it can be.
    QLabel* imageView() const { return m_imageView; }
    QPushButton* calloutActionButton() const { return m_calloutActionButton; }

private:
    void load(const QString& path);

    QLabel* m_imageView;
    QPushButton* m_calloutActionButton;
    NewestJob m_pictureJob;
};

/// What the present position's marker says when it is chosen.
std::unique_ptr<QWidget> makePositionCallout(const CustomPointAnnotation& marker);

} // namespace cardreel

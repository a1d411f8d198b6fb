#pragma once

#include <QWidget>

#include <optional>

class QLabel;

namespace cardreel {

struct CustomLocation;

/// The moment shown, in words that can be copied: time of day, speed, position and heading. Lies in the status bar.
/// Interface thread.
class ReadoutBar : public QWidget
{
    Q_OBJECT

public:
    explicit ReadoutBar(QWidget* parent = nullptr);

    /// Nothing is loaded.
    void clear();
    void setClock(const QString& text);
    /// The fix of the moment; null when there is none, and then `reason` says why.
    void setFix(const CustomLocation* fix, const QString& reason);
    /// A place without a movement.
    void setPlace(const CustomLocation* place, const QString& reason);

private:
    QLabel* m_clock;
    QLabel* m_speed;
    QLabel* m_position;
    QLabel* m_heading;
};

} // namespace cardreel

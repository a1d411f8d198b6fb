#pragma once

#include <QFrame>

class QLabel;

namespace cardreel {

/// The open card's name and free space in the tool row; says so when there is none. Interface thread.
class CardChip : public QFrame
{
    Q_OBJECT

public:
    explicit CardChip(QWidget* parent = nullptr);

    void setCard(const QString& rootPath);

private:
    void updateLook();

    QLabel* m_icon;
    QLabel* m_name;
    QLabel* m_free;
};

} // namespace cardreel

#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

namespace cardreel {

/// Notices that a window's card is pulled out and that it is put back. Interface thread.
class CardWatch : public QObject
{
    Q_OBJECT

public:
    explicit CardWatch(QObject* parent = nullptr);

    /// The card is there now.
    void setCard(const QString& rootPath);

Q_SIGNALS:
    void removed();
    /// A card that can be opened is there again under the same path.
    void returned(const QString& rootPath);

private:
    void look();

    QString m_rootPath;
    QTimer m_timer;
    bool m_isGone = false;
};

} // namespace cardreel

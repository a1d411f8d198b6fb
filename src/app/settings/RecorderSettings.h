#pragma once

#include "app/settings/MessageBoxPresenter.h"
#include "settings/SettingSession.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace cardreel {

class UnitSettingSheet;
class VolumeChooser;

/// Leads the user of a window through a recorder's settings: which card, the sheet, and how it ended. A member of the
/// window, so that it is gone before what lies over that; interface thread.
class RecorderSettings : public QObject
{
    Q_OBJECT

public:
    explicit RecorderSettings(QWidget& window);
    ~RecorderSettings() override;

    /// Opens those of this card; if some are being edited already, these come to the front.
    void edit(const QString& rootPath);
    /// Asks for the card first; `proposed` may be empty.
    void chooseCard(const QString& proposed);

    /// Whether a card is being chosen, read, edited or written, or a last alert stands.
    bool isActive() const;

Q_SIGNALS:
    /// It was told how it ended, unless it was cancelled.
    void finished(cardreel::SettingSession::Outcome outcome);

private:
    bool raiseWhatIsOpen();
    void begin(const QString& rootPath);
    void openEditor();
    void showSheet();
    void setBusy(bool isBusy);
    void end(SettingSession::Outcome outcome);
    /// What is in front of the user.
    QWidget* belowAlert() const;

    QWidget& m_window;
    MessageBoxPresenter m_presenter;
    std::unique_ptr<SettingSession> m_session;
    QPointer<VolumeChooser> m_chooser;
    QPointer<UnitSettingSheet> m_sheet;
    QTimer m_untilSheet; ///< from the chooser's end on
};

} // namespace cardreel

#pragma once

#include "playback/Panes.h"

#include <QWidget>

#include <memory>
#include <vector>

class QStackedWidget;
class QTabBar;

namespace cardreel {

class CardListView;
class DCFInfo;
class MediaLibrary;
class PictureInfo;
class PictureListModel;
class RecordingListModel;
class ThumbnailLoader;

/// What is on the card: recordings, events and pictures in three tabs. Choosing in one list leaves nothing chosen in
/// the others. To the clock it is the list of recordings. Interface thread.
class LibraryPanel : public QWidget, public RecordingsList
{
    Q_OBJECT

public:
    using DCFList = std::vector<std::shared_ptr<DCFInfo>>;
    enum class Tab { Recordings, Events, Pictures };

    /// `library` outlives the panel.
    explicit LibraryPanel(MediaLibrary& library, QWidget* parent = nullptr);
    ~LibraryPanel() override;

    /// Shows a recording as the chosen one and announces it as if the user had clicked it. Nothing for a
    /// row that there isn't.
    void selectRecording(int row);
    void showTab(Tab tab);
    /// Chooses the neighbour of what is shown in the list that the user chose from, from the last the first and the
    /// other way round.
    void selectNext();
    void selectPrevious();

    // The clock's choices: announced as all are, yet the user's list stays the one in which the user steps.
    void selectCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override;
    void selectNextDCFWithCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override;

Q_SIGNALS:
    /// One recording or picture was chosen and no other is.
    void recordingChosen(const std::shared_ptr<cardreel::DCFInfo>& dcf);
    void pictureChosen(const std::shared_ptr<cardreel::PictureInfo>& picture);
    /// Comes before recordingChosen(). From the list of recordings or that of events; empty when neither has any.
    void recordingsSelected(const std::vector<std::shared_ptr<cardreel::DCFInfo>>& dcfs);

private:
    void fill();
    void chosen(CardListView* list, const QList<int>& rows);
    void select(CardListView* list, int row);
    void step(int rows);
    int neighbour(int rows) const;
    int neighbourAmongEvents(int rows) const;
    void updateTabs();

    MediaLibrary& m_library;
    std::unique_ptr<ThumbnailLoader> m_loader;
    RecordingListModel* m_recordingModel;
    RecordingListModel* m_eventModel;
    PictureListModel* m_pictureModel;
    QTabBar* m_tabs;
    QStackedWidget* m_pages;
    CardListView* m_recordings;
    CardListView* m_events;
    CardListView* m_pictures;
    CardListView* m_chosenFrom; ///< the list that the user chose from last
    bool m_isClockChoosing = false;
};

} // namespace cardreel

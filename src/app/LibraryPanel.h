#pragma once

#include <QWidget>

#include <memory>

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
/// the others. Interface thread.
class LibraryPanel : public QWidget
{
    Q_OBJECT

public:
    /// `library` outlives the panel.
    explicit LibraryPanel(MediaLibrary& library, QWidget* parent = nullptr);
    ~LibraryPanel() override;

    /// Shows a recording as the chosen one and announces it as if the user had clicked it.
    void selectRecording(int row);
    /// The place of a recording among all of the card; -1 when it isn't one of them.
    int rowOf(const std::shared_ptr<DCFInfo>& dcf) const;
    /// Chooses the neighbour of the row in view in its own list, from the last the first and the other way round.
    void selectNext();
    void selectPrevious();

Q_SIGNALS:
    void recordingChosen(const std::shared_ptr<cardreel::DCFInfo>& dcf);
    void pictureChosen(const std::shared_ptr<cardreel::PictureInfo>& picture);

private:
    void fill();
    void chosen(CardListView* list, int row);
    void step(int rows);
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
    CardListView* m_inPlay; ///< the list whose choice is shown
};

} // namespace cardreel

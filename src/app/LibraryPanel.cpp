#include "app/LibraryPanel.h"

#include "app/lists/CardListView.h"
#include "app/lists/PictureListModel.h"
#include "app/lists/RecordingListModel.h"
#include "app/lists/ThumbnailLoader.h"
#include "media/DCFInfo.h"
#include "media/MediaLibrary.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace cardreel {

LibraryPanel::LibraryPanel(MediaLibrary& library, QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_loader(std::make_unique<ThumbnailLoader>())
    , m_recordingModel(new RecordingListModel(this))
    , m_eventModel(new RecordingListModel(this))
    , m_pictureModel(new PictureListModel(this))
    , m_tabs(new QTabBar)
    , m_pages(new QStackedWidget)
    , m_recordings(new CardListView(*m_loader, tr("Recordings")))
    , m_events(new CardListView(*m_loader, tr("Events")))
    , m_pictures(new CardListView(*m_loader, tr("Pictures")))
    , m_chosenFrom(m_recordings)
{
    setMinimumWidth(260);
    m_recordings->setModel(m_recordingModel);
    m_events->setModel(m_eventModel);
    m_pictures->setModel(m_pictureModel);
    m_recordings->setEmptyText(tr("This card holds no recordings."));
    m_events->setEmptyText(tr("No event, manual or parking recordings on this card."));
    m_pictures->setEmptyText(tr("This card holds no pictures."));

    m_tabs->setExpanding(true);
    m_tabs->setDrawBase(false);
    m_tabs->setDocumentMode(true);
    for (CardListView* list : {m_recordings, m_events, m_pictures}) {
        m_tabs->addTab(list->accessibleName());
        m_pages->addWidget(list);
        connect(list, &CardListView::selectedRowsChanged, this,
                [this, list](const QList<int>& rows) { chosen(list, rows); });
    }
    connect(m_tabs, &QTabBar::currentChanged, m_pages, &QStackedWidget::setCurrentIndex);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tabs);
    layout->addWidget(m_pages);

    connect(&library, &MediaLibrary::mediaTreeDidSync, this, &LibraryPanel::fill);
    connect(&library, &MediaLibrary::recordingDidParse, this, [this](const std::shared_ptr<DCFInfo>& dcf) {
        m_recordingModel->updateRecording(dcf.get());
        m_eventModel->updateRecording(dcf.get());
    });
}

LibraryPanel::~LibraryPanel() = default;

void LibraryPanel::fill()
{
    const QSignalBlocker noRecording(m_recordings);
    const QSignalBlocker noEvent(m_events);
    const QSignalBlocker noPicture(m_pictures);
    m_loader->clear();
    m_recordingModel->setRecordings(m_library.mediaTree());
    m_eventModel->setRecordings(m_library.eventTree());
    m_pictureModel->setPictures(m_library.pictureTree());
    m_chosenFrom = m_recordings;
    updateTabs();
}

void LibraryPanel::updateTabs()
{
    for (int i = 0; i < m_tabs->count(); ++i) {
        const auto* list = qobject_cast<CardListView*>(m_pages->widget(i));
        m_tabs->setTabText(i, tr("%1 %2", "a tab's name and how many rows it has")
                                  .arg(list->accessibleName(), locale().toString(list->model()->rowCount())));
    }
}

void LibraryPanel::chosen(CardListView* list, const QList<int>& rows)
{
    if (rows.isEmpty()) {
        Q_EMIT recordingsSelected({});
        return;
    }
    if (!m_isClockChoosing)
        m_chosenFrom = list;
    for (CardListView* other : {m_recordings, m_events, m_pictures}) {
        if (other != list) {
            const QSignalBlocker quiet(other);
            other->clearSelection();
        }
    }
    if (list == m_pictures) {
        Q_EMIT recordingsSelected({});
        if (rows.size() == 1)
            Q_EMIT pictureChosen(std::shared_ptr<PictureInfo>(m_pictureModel->picture(rows.front())));
        return;
    }
    DCFList recordings;
    for (const int row : rows)
        recordings.push_back((list == m_events ? m_eventModel : m_recordingModel)->recording(row));
    Q_EMIT recordingsSelected(recordings);
    if (recordings.size() == 1)
        Q_EMIT recordingChosen(recordings.front());
}

/// Announces the choice also when the row is selected already.
void LibraryPanel::select(CardListView* list, int row)
{
    if (row < 0 || row >= list->model()->rowCount())
        return;
    if (list->currentRow() == row) {
        const QSignalBlocker quiet(list);
        list->clearSelection();
    }
    list->selectRow(row);
}

void LibraryPanel::selectRecording(int row)
{
    showTab(Tab::Recordings);
    select(m_recordings, row);
    m_recordings->setFocus();
}

void LibraryPanel::showTab(Tab tab)
{
    m_tabs->setCurrentIndex(static_cast<int>(tab));
}

void LibraryPanel::selectCurrentDCF(const std::shared_ptr<DCFInfo>& dcf)
{
    const QScopedValueRollback<bool> choosing(m_isClockChoosing, true);
    select(m_recordings, m_recordingModel->rowOf(dcf.get()));
}

void LibraryPanel::selectNextDCFWithCurrentDCF(const std::shared_ptr<DCFInfo>& dcf)
{
    const QScopedValueRollback<bool> choosing(m_isClockChoosing, true);
    const int count = m_recordingModel->rowCount();
    if (count > 0) // a recording that isn't in the list has the row -1
        select(m_recordings, (m_recordingModel->rowOf(dcf.get()) + 1) % count);
}

void LibraryPanel::selectNext()
{
    step(1);
}

void LibraryPanel::selectPrevious()
{
    step(-1);
}

void LibraryPanel::step(int rows)
{
    if (m_chosenFrom->model()->rowCount() > 0)
        select(m_chosenFrom, neighbour(rows));
}

int LibraryPanel::neighbour(int rows) const
{
    const int count = m_chosenFrom->model()->rowCount();
    int row = m_chosenFrom->currentIndex().row();
    if (m_chosenFrom == m_recordings)
        row = m_recordingModel->rowOf(m_library.currentDCF().get());
    else if (m_chosenFrom == m_events && m_eventModel->rowOf(m_library.currentDCF().get()) < 0)
        return neighbourAmongEvents(rows);
    else if (m_chosenFrom == m_events)
        row = m_eventModel->rowOf(m_library.currentDCF().get());
    return row < 0 ? 0 : (row + rows + count) % count;
}

/// The clock went on to a recording that is no event: the events next to it in time.
int LibraryPanel::neighbourAmongEvents(int rows) const
{
    const int place = m_recordingModel->rowOf(m_library.currentDCF().get());
    const int count = m_eventModel->rowCount();
    int after = 0;
    while (after < count && m_recordingModel->rowOf(m_eventModel->recording(after).get()) < place)
        ++after;
    return ((rows > 0 ? after : after - 1) + count) % count;
}

} // namespace cardreel

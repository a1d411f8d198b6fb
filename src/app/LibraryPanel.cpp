#include "app/LibraryPanel.h"

#include "app/lists/CardListView.h"
#include "app/lists/PictureListModel.h"
#include "app/lists/RecordingListModel.h"
#include "app/lists/ThumbnailLoader.h"
#include "media/DCFInfo.h"
#include "media/MediaLibrary.h"

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
    , m_inPlay(m_recordings)
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
        connect(list, &CardListView::rowSelected, this, [this, list](int row) { chosen(list, row); });
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
    m_inPlay = m_recordings;
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

void LibraryPanel::chosen(CardListView* list, int row)
{
    if (row < 0)
        return;
    m_inPlay = list;
    for (CardListView* other : {m_recordings, m_events, m_pictures}) {
        if (other != list) {
            const QSignalBlocker quiet(other);
            other->clearSelection();
        }
    }
    if (list == m_pictures)
        Q_EMIT pictureChosen(m_pictureModel->picture(row));
    else
        Q_EMIT recordingChosen((list == m_events ? m_eventModel : m_recordingModel)->recording(row));
}

void LibraryPanel::selectRecording(int row)
{
    m_tabs->setCurrentIndex(0);
    m_recordings->selectRow(row);
    m_recordings->setFocus();
}

int LibraryPanel::rowOf(const std::shared_ptr<DCFInfo>& dcf) const
{
    return m_recordingModel->rowOf(dcf.get());
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
    const int count = m_inPlay->model()->rowCount();
    if (count == 0)
        return;
    const int row = m_inPlay->currentRow();
    const int next = row < 0 ? 0 : (row + rows + count) % count;
    if (next == row) // a list of one plays its recording anew
        chosen(m_inPlay, row);
    else
        m_inPlay->selectRow(next);
}

} // namespace cardreel

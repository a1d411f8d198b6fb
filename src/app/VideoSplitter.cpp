#include "app/VideoSplitter.h"

#include <algorithm>
#include <cstdlib>

namespace cardreel {

namespace {

constexpr int snapDistance = 12;

} // namespace

VideoSplitter::VideoSplitter(QWidget* parent)
    : QSplitter(Qt::Vertical, parent)
{
    setChildrenCollapsible(false);
    setHandleWidth(1);
    connect(this, &QSplitter::splitterMoved, this, &VideoSplitter::dragged);
}

int VideoSplitter::filledHeight(int width, int count)
{
    return width / std::max(count, 1) * 9 / 16;
}

void VideoSplitter::setPictures(int count)
{
    m_pictures = count;
    if (!m_isDragged)
        fit();
}

QByteArray VideoSplitter::savedState() const
{
    return m_isDragged ? saveState() : QByteArray();
}

void VideoSplitter::restoreSavedState(const QByteArray& state)
{
    m_isDragged = !state.isEmpty() && restoreState(state);
}

void VideoSplitter::resizeEvent(QResizeEvent* event)
{
    QSplitter::resizeEvent(event);
    if (!m_isDragged)
        fit();
}

void VideoSplitter::fit()
{
    const int video = filledHeight(width(), m_pictures);
    setSizes({video, std::max(height() - video, 1)});
}

void VideoSplitter::dragged()
{
    m_isDragged = std::abs(sizes().constFirst() - filledHeight(width(), m_pictures)) > snapDistance;
    if (!m_isDragged)
        fit();
}

} // namespace cardreel

#include "app/lists/CardItemDelegate.h"

#include "app/Theme.h"
#include "app/lists/CardItem.h"
#include "app/lists/ThumbnailLoader.h"
#include "names/ConstClass.h"

#include <QPainter>
#include <QPainterPath>

namespace cardreel {

namespace {

constexpr int rowHeight = 62;
constexpr int dayHeaderHeight = 28;
constexpr QSize thumbnailSize(96, 54);
constexpr int edge = 12;
constexpr int gap = 8;
constexpr int thumbnailRadius = 4;

QFont pixelFont(const QFont& base, int pixels, QFont::Weight weight = QFont::Normal)
{
    QFont font = base;
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

QColor kindColor(const QString& eventName, const ThemeColors& colors)
{
    if (eventName == ConstClass::DCF_EVENTNAME_EVENT)
        return colors.event;
    return eventName == ConstClass::DCF_EVENTNAME_MANUAL ? colors.manual : colors.parking;
}

/// Draws a word in an outlined capsule from `left` on; returns its right end.
int paintBadge(QPainter& painter, int left, const QRect& line, const QString& text, const QColor& color,
               const QFont& font)
{
    const QFontMetrics metrics(font);
    QRect box(left, 0, metrics.horizontalAdvance(text) + 14, metrics.height() + 3);
    box.moveCenter({box.center().x(), line.center().y()});
    painter.setPen(QPen(color, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), box.height() / 2.0, box.height() / 2.0);
    painter.setFont(font);
    painter.drawText(box, Qt::AlignCenter, text);
    return box.right();
}

} // namespace

CardItemDelegate::CardItemDelegate(ThumbnailLoader& loader, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_loader(loader)
{
}

QSize CardItemDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const
{
    const bool startsDay = !index.data(DayRole).toString().isEmpty();
    return {200, rowHeight + (startsDay ? dayHeaderHeight : 0)};
}

void CardItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const ThemeColors& colors = Theme::current().colors();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QRect row = option.rect;
    const QString day = index.data(DayRole).toString();
    if (!day.isEmpty()) {
        painter->setFont(pixelFont(option.font, 11));
        painter->setPen(colors.muted);
        painter->drawText(QRect(row.left() + edge, row.top(), row.width() - 2 * edge, dayHeaderHeight),
                          Qt::AlignVCenter | Qt::AlignLeft, day);
        row.setTop(row.top() + dayHeaderHeight);
    }
    if (option.state.testFlag(QStyle::State_Selected)) {
        painter->fillRect(row, colors.selection);
        painter->fillRect(QRect(row.left(), row.top(), 3, row.height()), colors.accent);
    } else if (option.state.testFlag(QStyle::State_MouseOver)) {
        painter->fillRect(row, colors.raised);
    }

    QRect picture(QPoint(row.left() + edge, 0), thumbnailSize);
    picture.moveTop(row.top() + (row.height() - picture.height()) / 2);
    paintThumbnail(*painter, picture, index);

    const int left = picture.right() + 1 + edge;
    const QRect first(left, row.top() + 11, row.right() - left - gap, 20);
    const QRect second(left, first.bottom() + 2, first.width(), 18);
    const QFont titleFont = pixelFont(option.font, 13, QFont::DemiBold);
    const QString title = index.data(TitleRole).toString();
    painter->setFont(titleFont);
    painter->setPen(colors.text);
    painter->drawText(first, Qt::AlignVCenter | Qt::AlignLeft, title);
    int end = left + QFontMetrics(titleFont).horizontalAdvance(title);
    const QString kind = index.data(KindTextRole).toString();
    if (!kind.isEmpty()) {
        end = paintBadge(*painter, end + gap, first, kind, kindColor(index.data(KindRole).toString(), colors),
                         pixelFont(option.font, 10, QFont::DemiBold));
    }
    if (index.data(LockedRole).toBool())
        Theme::current().icon(QStringLiteral("lock")).paint(painter, QRect(end + 6, first.center().y() - 6, 13, 13));
    const QFont detailFont = pixelFont(option.font, 11);
    painter->setFont(detailFont);
    painter->setPen(colors.muted);
    painter->drawText(
        second, Qt::AlignVCenter | Qt::AlignLeft,
        QFontMetrics(detailFont).elidedText(index.data(DetailRole).toString(), Qt::ElideRight, second.width()));
    painter->restore();
}

void CardItemDelegate::paintThumbnail(QPainter& painter, const QRect& box, const QModelIndex& index) const
{
    const ThemeColors& colors = Theme::current().colors();
    QPainterPath shape;
    shape.addRoundedRect(box, thumbnailRadius, thumbnailRadius);
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QPixmap pixmap =
        m_loader.thumbnail(index.data(ThumbnailPathRole).toString(), (QSizeF(box.size()) * ratio).toSize());
    if (pixmap.isNull()) {
        painter.fillPath(shape, colors.raised);
        return;
    }
    painter.save();
    painter.setClipPath(shape);
    painter.drawPixmap(box, pixmap);
    painter.restore();
}

} // namespace cardreel

#include "app/CardChip.h"

#include "app/Theme.h"
#include "platform/files/Files.h"
#include "platform/text/UnitText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStorageInfo>

using namespace Qt::StringLiterals;

namespace cardreel {

CardChip::CardChip(QWidget* parent)
    : QFrame(parent)
    , m_icon(new QLabel)
    , m_name(new QLabel(tr("No card")))
    , m_free(new QLabel)
{
    setObjectName(u"cardChip"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 5, 10, 5);
    layout->setSpacing(8);
    layout->addWidget(m_icon);
    layout->addWidget(m_name, 1);
    layout->addWidget(m_free);
    setMinimumWidth(200);
    connect(&Theme::current(), &Theme::changed, this, &CardChip::updateLook);
    updateLook();
}

void CardChip::setCard(const QString& rootPath)
{
    const QString shown = files::displayPath(rootPath);
    m_name->setText(files::nameOf(shown));
    setToolTip(shown);
    const QStorageInfo volume(rootPath);
    m_free->setText(volume.isValid() ? tr("%1 free").arg(dataSizeText(static_cast<quint64>(volume.bytesAvailable())))
                                     : QString());
}

void CardChip::updateLook()
{
    const ThemeColors& colors = Theme::current().colors();
    m_icon->setPixmap(Theme::current().icon(u"card"_s).pixmap(16, 16));
    setStyleSheet(u"#cardChip { background: %1; border: 1px solid %2; border-radius: 6px; }"_s.arg(colors.raised.name(),
                                                                                                   colors.line.name()));
    m_free->setStyleSheet(u"color: %1;"_s.arg(colors.muted.name()));
}

} // namespace cardreel

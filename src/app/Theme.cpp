#include "app/Theme.h"

#include "platform/image/ApplicationImage.h"
#include "platform/settings/UserDefaults.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const ThemeColors darkColors = {0x1e2125, 0x25292e, 0x2d3238, 0x383e45, 0xe8eaed, 0x9aa2ab,
                                0x4ea1ff, 0x23405f, 0xff6b62, 0xf2b632, 0x7ab0ff};
const ThemeColors lightColors = {0xeceef1, 0xf8f9fa, 0xffffff, 0xd5d9de, 0x1d2126, 0x5b646d,
                                 0x1668c7, 0xd6e7fa, 0xc42b22, 0x8a5a00, 0x1f5fb8};

const QString appearanceKey = u"Appearance"_s;
const QString portalGroup = u"org.freedesktop.appearance"_s;
const QString portalKey = u"color-scheme"_s;
constexpr auto portalService = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto portalInterface = "org.freedesktop.portal.Settings";

Theme* theTheme = nullptr;

QPalette paletteOf(const ThemeColors& c)
{
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, const QColor& color) { palette.setColor(role, color); };
    set(QPalette::Window, c.panel);
    set(QPalette::WindowText, c.text);
    set(QPalette::Base, c.panel);
    set(QPalette::AlternateBase, c.background);
    set(QPalette::Text, c.text);
    set(QPalette::PlaceholderText, c.muted);
    set(QPalette::Button, c.raised);
    set(QPalette::ButtonText, c.text);
    set(QPalette::BrightText, c.event);
    set(QPalette::ToolTipBase, c.raised);
    set(QPalette::ToolTipText, c.text);
    set(QPalette::Highlight, c.selection);
    set(QPalette::HighlightedText, c.text);
    set(QPalette::Link, c.accent);
    set(QPalette::Light, c.raised);
    set(QPalette::Midlight, c.raised);
    set(QPalette::Mid, c.line);
    set(QPalette::Dark, c.line);
    set(QPalette::Shadow, c.background);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        QColor disabled = c.muted;
        disabled.setAlphaF(0.6F);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    return palette;
}

QString styleSheetOf(const ThemeColors& c)
{
    return uR"(
        QMainWindow, QMenuBar, QStatusBar { background: %1; }
        QMenuBar { border-bottom: 1px solid %2; padding: 2px 4px; }
        QMenuBar::item { padding: 4px 8px; border-radius: 6px; background: transparent; }
        QMenuBar::item:selected { background: %3; }
        QMenu { background: %4; border: 1px solid %2; padding: 4px; }
        QMenu::item { padding: 5px 24px 5px 12px; border-radius: 4px; }
        QMenu::item:selected { background: %3; }
        QMenu::separator { height: 1px; background: %2; margin: 4px 8px; }
        QStatusBar { border-top: 1px solid %2; color: %5; font-size: 11px; }
        QStatusBar::item { border: none; }
        QStatusBar QLabel { color: %5; font-size: 11px; }
        QSplitter::handle { background: %2; }
        QSplitter::handle:horizontal { width: 1px; }
        QSplitter::handle:vertical { height: 1px; }
        QToolButton { border: none; border-radius: 6px; padding: 5px; }
        QToolButton:hover { background: %4; }
        QToolButton:focus { background: %4; border: 1px solid %6; padding: 4px; }
        QPushButton { background: %4; border: 1px solid %2; border-radius: 6px; padding: 6px 14px; }
        QPushButton:hover { border-color: %5; }
        QPushButton:focus { border-color: %6; }
        QPushButton:checked { background: %3; border-color: %6; }
        QLineEdit { background: %4; border: 1px solid %2; border-radius: 4px; padding: 4px 6px; }
        QLineEdit:focus { border-color: %6; }
        QRadioButton::indicator { width: 14px; height: 14px; border: 1px solid %5; border-radius: 8px; }
        QRadioButton::indicator:checked { width: 6px; height: 6px; border: 5px solid %6; background: %4; }
        QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
        #rateButton { background: %4; border: 1px solid %2; }
        #rateButton:focus { border-color: %6; padding: 5px; }
        #sliderTip { background: %4; color: %7; border: 1px solid %2; border-radius: 4px; padding: 3px 6px; }
        QTabBar { background: %1; border-bottom: 1px solid %2; }
        QTabBar::tab { padding: 9px 4px 8px 4px; color: %5; border: none; border-bottom: 2px solid transparent; }
        QTabBar::tab:selected { color: %7; border-bottom: 2px solid %6; font-weight: 600; }
        QTabBar::tab:hover:!selected { color: %7; }
        QScrollBar:vertical { background: transparent; width: 10px; margin: 0; }
        QScrollBar::handle:vertical { background: %2; border-radius: 3px; min-height: 32px; margin: 2px; }
        QScrollBar::handle:vertical:hover { background: %5; }
        QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
        QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
        QToolTip { background: %4; color: %7; border: 1px solid %2; padding: 4px 6px; }
    )"_s.arg(c.panel.name(), c.line.name(), c.selection.name(), c.raised.name(), c.muted.name(), c.accent.name(),
             c.text.name());
}

} // namespace

Theme::Theme(QApplication& application)
    : m_application(application)
{
    theTheme = this;
    m_desktopIsDark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    const QString chosen = UserDefaults::shared().value(appearanceKey).toString();
    m_appearance = chosen == u"dark" ? Appearance::Dark : chosen == u"light" ? Appearance::Light : Appearance::System;
    apply();
    askDesktop();
}

Theme::~Theme()
{
    theTheme = nullptr;
}

Theme& Theme::current()
{
    Q_ASSERT(theTheme);
    return *theTheme;
}

void Theme::setAppearance(Appearance appearance)
{
    m_appearance = appearance;
    const QString name = appearance == Appearance::Dark    ? u"dark"_s
                         : appearance == Appearance::Light ? u"light"_s
                                                           : u"system"_s;
    UserDefaults::shared().setValue(appearanceKey, name);
    apply();
}

const ThemeColors& Theme::colors() const
{
    return m_isDark ? darkColors : lightColors;
}

QIcon Theme::icon(const QString& name) const
{
    QIcon& icon = m_icons[name];
    if (!icon.isNull())
        return icon;
    const QSize size = QSize(16, 16) * m_application.devicePixelRatio() * 2;
    icon.addPixmap(QPixmap::fromImage(applicationImage(name, size, colors().text)), QIcon::Normal);
    icon.addPixmap(QPixmap::fromImage(applicationImage(name, size, colors().line)), QIcon::Disabled);
    return icon;
}

/// Asks the desktop portal without waiting: on a desktop without one the answer may take long or never come.
void Theme::askDesktop()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(QLatin1StringView(portalService), QLatin1StringView(portalPath), QLatin1StringView(portalInterface),
                u"SettingChanged"_s, this, SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage ask = QDBusMessage::createMethodCall(QLatin1StringView(portalService), QLatin1StringView(portalPath),
                                                      QLatin1StringView(portalInterface), u"Read"_s);
    ask << portalGroup << portalKey;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(ask), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        if (reply.isError())
            return;
        QVariant value = reply.value().variant();
        if (value.canConvert<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        setDesktopScheme(value.toUInt());
    });
}

void Theme::portalSettingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == portalGroup && key == portalKey)
        setDesktopScheme(value.variant().toUInt());
}

void Theme::setDesktopScheme(uint scheme)
{
    if (scheme != 1 && scheme != 2) // 1 dark, 2 light, else no preference
        return;
    m_desktopIsDark = scheme == 1;
    if (m_appearance == Appearance::System)
        apply();
}

void Theme::apply()
{
    m_isDark = m_appearance == Appearance::System ? m_desktopIsDark : m_appearance == Appearance::Dark;
    m_icons.clear();
    QApplication::setPalette(paletteOf(colors()));
    m_application.setStyleSheet(styleSheetOf(colors()));
    Q_EMIT changed();
}

} // namespace cardreel

#pragma once

#include <QColor>
#include <QHash>
#include <QIcon>
#include <QObject>

class QApplication;
class QDBusVariant;

namespace cardreel {

/// The window's colours: one set dark, one light.
struct ThemeColors
{
    QColor background, panel, raised, line, text, muted, accent, selection;
    QColor event, manual, parking; ///< kinds of recording; always beside a word or shape
};

/// The look of the program: Fusion with its own palette, dark or light as the user or the desktop prefers. One per
/// process, on the interface thread.
class Theme : public QObject
{
    Q_OBJECT

public:
    enum class Appearance { System, Dark, Light };

    /// Takes the appearance from the user's settings and puts it on the application.
    explicit Theme(QApplication& application);
    ~Theme() override;

    /// The one that was made first; there is one while windows exist.
    static Theme& current();

    Appearance appearance() const { return m_appearance; }
    /// Applies and remembers it.
    void setAppearance(Appearance appearance);

    bool isDark() const { return m_isDark; }
    const ThemeColors& colors() const;
    /// One of the program's drawings in the text colour, muted when disabled.
    QIcon icon(const QString& name) const;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void portalSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void askDesktop();
    void setDesktopScheme(uint scheme);
    void apply();

    QApplication& m_application;
    Appearance m_appearance = Appearance::System;
    bool m_desktopIsDark = false;
    bool m_isDark = false;
    mutable QHash<QString, QIcon> m_icons; ///< drawn in the present colours
};

} // namespace cardreel

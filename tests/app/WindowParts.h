#pragma once

#include "app/LibraryPanel.h"
#include "app/MainWindow.h"
#include "app/lists/CardListView.h"
#include "playback/ZoomPlayerSplitViewController.h"
#include "playback/ZoomPlayerViewController.h"

#include <QProcess>

namespace cardreel::test {

// Sanitized builds decode many times slower, and the window looks after its card every other second only.
constexpr int patienceMs = 20'000;

enum List { Recordings, Events, Pictures };

/// A part of a window by what it is called to the blind.
template<typename Widget>
Widget* named(const QWidget* window, const QString& accessibleName)
{
    for (Widget* widget : window->findChildren<Widget*>()) {
        if (widget->accessibleName() == accessibleName)
            return widget;
    }
    qFatal("the window has no part named %s", qPrintable(accessibleName));
}

inline CardListView* listOf(const MainWindow* window, List which)
{
    const QStringList names = {LibraryPanel::tr("Recordings"), LibraryPanel::tr("Events"),
                               LibraryPanel::tr("Pictures")};
    return named<CardListView>(window, names[which]);
}

inline ZoomPlayerViewController* frontOf(const MainWindow* window)
{
    return window->findChild<ZoomPlayerSplitViewController*>()->primaryPlayerItem();
}

inline ZoomPlayerViewController* rearOf(const MainWindow* window)
{
    return window->findChild<ZoomPlayerSplitViewController*>()->secondaryPlayerItem();
}

/// Makes a playable card; false when that failed.
inline bool makeSampleCard(const QString& path, int recordings, int seconds, int pictures = 0)
{
    return QProcess::execute(qEnvironmentVariable("CARDREEL_SAMPLE_CARD_TOOL"),
                             {QStringLiteral("--recordings"), QString::number(recordings), QStringLiteral("--seconds"),
                              QString::number(seconds), QStringLiteral("--size"), QStringLiteral("320x180"),
                              QStringLiteral("--pictures"), QString::number(pictures), path}) == 0;
}

} // namespace cardreel::test

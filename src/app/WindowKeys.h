#pragma once

#include "playback/ZoomPlayerSplitViewController.h"

#include <QString>

/// The names under which a window's settings are kept.
namespace cardreel::keys {

inline const QString geometry = QStringLiteral("MainWindowFrameAutosaveName");
inline const QString split = QStringLiteral("TopSplitViewControllerAutosaveName");
inline const QString rightSplit = QStringLiteral("RightSplitViewControllerAutosaveName");
inline const QString videos = QString::fromLatin1(ZoomPlayerSplitViewController::autosaveName);
inline const QString lowerPanes = QStringLiteral("LowerPanes");         ///< LowerPanes::savedState()
inline const QString mapTiles = QStringLiteral("MapTiles");             ///< TileSettings::location
inline const QString mapAttribution = QStringLiteral("MapAttribution"); ///< TileSettings::attribution
inline const QString exportFolder = QStringLiteral("ExportFolder");
inline const QString backUpFolder = QStringLiteral("BackUpFolder");
inline const QString captureFolder = QStringLiteral("CaptureFolder");
inline const QString backUpReadBack = QStringLiteral("BackUpReadBack"); ///< whether copies are read back
inline const QString muted = QStringLiteral("Muted");
inline const QString volume = QStringLiteral("Volume");         ///< 0 to 1
inline const QString rearCamera = QStringLiteral("RearCamera"); ///< whether it is switched on

} // namespace cardreel::keys

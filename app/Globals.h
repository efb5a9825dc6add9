#pragma once

#include <QString>

// The process-wide values that start-up fills before any window is loaded.
// The settings globals are loaded once from the settings store and written
// back once, when the main window unloads; in between they are the only copy
// in use. (The runtime keeps its booleans as -1 and 0 and toggles them with a
// bitwise complement; for true and false that is exactly `!`.)
namespace Globals {

inline QString WinDir;
inline QString WinDrive = QStringLiteral("  ");

inline QString InstallPath;
inline qint32 WallpaperType = 0;
inline QString WallpaperDirectory;
inline QString WallpaperFile;
inline bool MusicOn = false;
inline bool GraphicOn = false;
inline bool ShutdownOnQuit = false;
inline bool HowToOn = false;
inline bool SmartPencilOn = false;

} // namespace Globals

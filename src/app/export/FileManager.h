#pragma once

class QString;

/// The desktop's file manager, asked without waiting. Interface thread.
namespace cardreel {

/// Shows a folder, or a file selected in its folder; where no file manager can do that, just the folder.
void showInFileManager(const QString& path);

} // namespace cardreel

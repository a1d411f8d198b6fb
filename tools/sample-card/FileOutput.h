// Writes the card's small files and their attributes. Every function returns nothing on success and one line for the
// user otherwise. Any thread.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

class QFile;

namespace cardreel {

// What went wrong, as a line for the user; nothing when all went well.
using Problem = std::optional<QString>;

// To a file that is open without a buffer.
Problem writeAll(QFile& file, const QByteArray& bytes);
Problem writeFile(const QString& path, const QByteArray& bytes);
Problem makeFolder(const QString& path);
Problem copyFile(const QString& from, const QString& to);
Problem setModificationTime(const QString& path, const QDateTime& time);
// Takes every write permission away, as a card's read-only attribute shows itself when it is mounted.
Problem protectFile(const QString& path);

} // namespace cardreel

#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

class QTemporaryDir;

namespace cardreel {

/// The archive of one KMZ export in the making, in a folder of its own in the caches folder: the archive's entry has
/// the name of the file that is packed, and the zip program leaves unfinished files behind when a disk is full. So no
/// export, of whichever process, meets another's. What is left is gone with this object. One thread at a time.
class KmzPackage
{
public:
    enum class Document { Keep, Drop };

    /// Touches nothing yet.
    KmzPackage();
    ~KmzPackage();
    KmzPackage(const KmzPackage&) = delete;
    KmzPackage& operator=(const KmzPackage&) = delete;

    /// Once, and not on the interface thread: `archive` receives the document packed as "route.kml". Otherwise the
    /// reason, for the user.
    std::optional<QString> pack(const QByteArray& document, QByteArray& archive);
    /// Removes everything, but a document to keep, which takes the place of the last export's in the caches folder.
    void close(Document document);

private:
    void keepDocument();

    std::unique_ptr<QTemporaryDir> m_folder;
};

} // namespace cardreel

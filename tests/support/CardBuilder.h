#pragma once

#include "platform/Instant.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <optional>

namespace cardreel::test {

/// A moment given by its UTC clock fields.
Instant utc(int year, unsigned month, unsigned day, int hour, int minute, int second = 0, int ms = 0);

/// A card in a temporary folder, built file by file. The files aren't playable: for what needs real video there is the
/// sample card. Paths are as in platform/files/Files.h, so names need not be UTF-8.
class CardBuilder
{
public:
    /// `name` is that of the card's own folder.
    explicit CardBuilder(const QString& name = QStringLiteral("card"));
    ~CardBuilder();
    CardBuilder(const CardBuilder&) = delete;
    CardBuilder& operator=(const CardBuilder&) = delete;

    QString root() const { return m_root; }
    QString path(const QString& delta) const { return m_root + QLatin1Char('/') + delta; }

    /// Makes the file with its folders. Without a date it is as old as the test.
    QString file(const QString& delta, const QByteArray& bytes = "x", std::optional<Instant> modified = {});
    QString folder(const QString& delta);
    /// A symbolic link, leading anywhere or nowhere.
    QString link(const QString& delta, const QByteArray& target);
    /// A small JPEG; with a position, degrees and hemispheres as the EXIF standard has them. What is missing is left
    /// out.
    QString picture(const QString& delta, std::optional<Instant> modified = {});
    QString pictureAt(const QString& delta, std::optional<double> latitude, const char* latitudeRef, double longitude,
                      const char* longitudeRef);

    /// The card comes back as another folder beside the former one; root() is the new one.
    void mountAgainAs(const QString& name);

private:
    QTemporaryDir m_folder;
    QString m_root;
};

/// A fix as a side file has it. Empty texts are empty fields.
struct Fix
{
    Instant time;
    QByteArray latitude = "3500.0000"; ///< degrees and minutes, north
    QByteArray speed = "10.0";         ///< knots
    QByteArray course = "0.0";
    char status = 'A';
};
QByteArray fixSentence(const Fix& fix);

/// The sentences of a drive: a trip, then `fixes` valid fixes a second from `start` on, going north from
/// 35° N 139° E at 10 knots, each with one sample (0.1, 0.2, 1.0).
QByteArray sideFile(Instant start, int fixes);

void setModified(const QString& path, Instant modified);

/// While it lives, this thread meets the permissions of files as an ordinary user does, also when the tests run as
/// root.
class OrdinaryPermissions
{
public:
    OrdinaryPermissions();
    ~OrdinaryPermissions();
    OrdinaryPermissions(const OrdinaryPermissions&) = delete;
    OrdinaryPermissions& operator=(const OrdinaryPermissions&) = delete;

private:
    quint32 m_former[2] = {};
};

} // namespace cardreel::test

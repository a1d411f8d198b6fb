#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <mutex>

namespace cardreel {

/// The user's settings: what the user chose, else what the program registered at start, else an invalid value. One per
/// process, on the interface thread. The user's choices are read once, by the first call of shared(), which comes after
/// the application has its names.
class UserDefaults
{
public:
    static UserDefaults& shared();

    /// Makes the entries of a property list (XML or binary) the initial values; false when it can't be read.
    bool registerDefaults(const QByteArray& propertyList);

    QVariant value(const QString& key) const;
    /// Holds at once and is written on the BackgroundQueue, because that waits for the disk.
    void setValue(const QString& key, const QVariant& value);

private:
    UserDefaults();
    void write();

    QVariantMap m_registered;
    QVariantMap m_chosen;
    std::mutex m_writing; ///< held by who writes, so that the older of two values never comes last
    std::mutex m_mutex;   ///< guards what follows
    QVariantMap m_unwritten;
};

/// The dictionary at the top of a property list: numbers, booleans, texts, lists and dictionaries; other values are
/// left out. An empty map when the bytes are no property list or hold no dictionary. Any thread.
QVariantMap dictionaryFromPropertyList(const QByteArray& bytes);

} // namespace cardreel

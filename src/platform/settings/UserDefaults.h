#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

namespace cardreel {

/// The user's settings: what the user chose, else what the program registered at start, else an invalid value. One per
/// process, on the interface thread.
class UserDefaults
{
public:
    static UserDefaults& shared();

    /// Makes the entries of a property list (XML or binary) the initial values; false when it can't be read.
    bool registerDefaults(const QByteArray& propertyList);

    QVariant value(const QString& key) const;
    void setValue(const QString& key, const QVariant& value);

private:
    UserDefaults() = default;
    QVariantMap m_registered;
};

/// The dictionary at the top of a property list: numbers, booleans, texts, lists and dictionaries; other values are
/// left out. An empty map when the bytes are no property list or hold no dictionary. Any thread.
QVariantMap dictionaryFromPropertyList(const QByteArray& bytes);

} // namespace cardreel

#include "platform/settings/UserDefaults.h"

#include "platform/BackgroundQueue.h"

#include <QSettings>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace cardreel {

namespace {

constexpr int deepestNesting = 32; // a hand-made list can nest without end

struct PlistFree
{
    void operator()(void* node) const { plist_free(node); }
};

QVariant toVariant(plist_t node, int depth);

QVariantMap toMap(plist_t node, int depth)
{
    QVariantMap result;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    while (iterator) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &key, &item);
        if (!key)
            break;
        const QVariant value = toVariant(item, depth + 1);
        if (value.isValid())
            result.insert(QString::fromUtf8(key), value);
        std::free(key);
    }
    std::free(iterator);
    return result;
}

QVariantList toList(plist_t node, int depth)
{
    QVariantList result;
    for (uint32_t i = 0; i < plist_array_get_size(node); ++i)
        result.push_back(toVariant(plist_array_get_item(node, i), depth + 1));
    return result;
}

QVariant toVariant(plist_t node, int depth)
{
    if (depth > deepestNesting)
        return {};
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return QVariant::fromValue(static_cast<qint64>(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return QString::fromUtf8(text, static_cast<qsizetype>(length));
    }
    case PLIST_ARRAY:
        return toList(node, depth);
    case PLIST_DICT:
        return toMap(node, depth);
    default:
        return {};
    }
}

} // namespace

QVariantMap dictionaryFromPropertyList(const QByteArray& bytes)
{
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
    const std::unique_ptr<void, PlistFree> owner(root);
    return root && plist_get_node_type(root) == PLIST_DICT ? toMap(root, 0) : QVariantMap();
}

UserDefaults& UserDefaults::shared()
{
    static UserDefaults instance;
    return instance;
}

bool UserDefaults::registerDefaults(const QByteArray& propertyList)
{
    m_registered = dictionaryFromPropertyList(propertyList);
    return !m_registered.isEmpty();
}

UserDefaults::UserDefaults()
{
    const QSettings settings;
    for (const QString& key : settings.allKeys())
        m_chosen.insert(key, settings.value(key));
}

QVariant UserDefaults::value(const QString& key) const
{
    return m_chosen.value(key, m_registered.value(key));
}

void UserDefaults::setValue(const QString& key, const QVariant& value)
{
    m_chosen.insert(key, value);
    const std::lock_guard lock(m_mutex);
    const bool isQueued = !m_unwritten.isEmpty();
    m_unwritten.insert(key, value);
    if (!isQueued)
        BackgroundQueue::start([this] { write(); }, BackgroundQueue::Priority::Soon);
}

void UserDefaults::write()
{
    const std::lock_guard writing(m_writing);
    QVariantMap values;
    {
        const std::lock_guard lock(m_mutex);
        values = std::exchange(m_unwritten, {});
    }
    QSettings settings;
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        settings.setValue(value.key(), value.value());
}

} // namespace cardreel

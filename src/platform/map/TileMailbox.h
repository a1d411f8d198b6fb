#pragma once

#include "platform/map/TileLoader.h"

#include <QImage>
#include <QString>

#include <mutex>
#include <optional>
#include <vector>

namespace cardreel {

/// What a loader and its worker on the tile thread have for each other. Of wishes and of the source's condition only
/// the newest counts; pictures are numbered, so that one that was on its way when a wish was made isn't brought twice.
class TileMailbox
{
public:
    struct Wish
    {
        std::vector<TileKey> keys;
        quint64 received = 0; ///< the number of the last result that the loader had when it made the wish
    };
    struct Result
    {
        TileKey key;
        QImage image; ///< null when there is no such tile
    };
    struct Condition
    {
        TileLoader::State state = TileLoader::State::Working;
        int maxZoom = 19;
        QString attribution;

        bool operator==(const Condition& other) const = default;
    };
    struct Delivery
    {
        std::vector<Result> results;
        std::optional<Condition> condition;
    };

    /// `receiver` is sent a QEvent::User when there is something.
    explicit TileMailbox(QObject* receiver);

    // Interface thread.
    /// Whether the worker must be told that there is one.
    bool putWish(std::vector<TileKey> keys);
    Delivery takeDelivery();
    /// The receiver ends.
    void close();

    // The worker's thread.
    std::optional<Wish> takeWish();
    /// Its number, from 1.
    quint64 put(Result result);
    void put(Condition condition);

private:
    void wake(); ///< with the mutex held, before anything is put

    std::mutex m_mutex;
    QObject* m_receiver;
    std::optional<Wish> m_wish;
    Delivery m_delivery;
    quint64 m_putCount = 0;
    quint64 m_takenCount = 0;
};

} // namespace cardreel

#pragma once

#include <QByteArray>
#include <QHashFunctions>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace cardreel {

/// One square picture of the map: at level z the world is 2^z of them wide and high, counted from the north-west.
struct TileKey
{
    int z = 0;
    int x = 0;
    int y = 0;

    bool operator==(const TileKey& other) const = default;
};

inline size_t qHash(const TileKey& key, size_t seed = 0)
{
    return qHashMulti(seed, key.z, key.x, key.y);
}

/// Whether the world has such a tile at all.
bool isTile(const TileKey& key);

/// Where the map's pictures come from, as the user's settings have it.
struct TileSettings
{
    /// A URL template with {z}, {x} and {y}, a folder that holds z/x/y.png (or .jpg), or an MBTiles file; empty for
    /// none.
    QString location;
    QString attribution; ///< shown on the map as plain text; empty for what the source itself says
    QString cacheFolder; ///< for what servers send; made when missing, empty for no cache

    bool operator==(const TileSettings& other) const = default;
};

/// A place that tiles come from. Lives on one thread, on which it is called and answers.
class TileSource
{
public:
    enum class Status {
        Found,
        Missing, ///< the source has no such tile and never will: beyond its levels, or sea
        Failed,  ///< refused, unreachable or unreadable; perhaps another time
    };
    /// The file's bytes (PNG, JPEG or what else Qt reads); empty unless found.
    using Answer = std::function<void(Status, const QByteArray&)>;

    /// What can be had without asking anybody.
    struct Held
    {
        QByteArray bytes;
        bool isCurrent = true; ///< otherwise it should be asked for anew, and is better than nothing
    };

    TileSource() = default;
    virtual ~TileSource() = default;
    TileSource(const TileSource&) = delete;
    TileSource& operator=(const TileSource&) = delete;

    /// Only of sources that take long to answer; nothing when it must be fetched.
    virtual std::optional<Held> atHand(const TileKey&) { return {}; }
    /// Asks for a tile; answers once, perhaps at once, never after the source is gone.
    virtual void fetch(const TileKey& key, Answer answer) = 0;
    /// The tile isn't wanted any more; its answer may be left out.
    virtual void cancel(const TileKey& key) = 0;
    /// What was answered for this tile isn't a picture: it must not be given again from a cache.
    virtual void reject(const TileKey& key) = 0;
    /// How many may be asked for at a time.
    virtual int parallelFetches() const = 0;
    /// The deepest level there is.
    virtual int maxZoom() const = 0;
    /// For how long the source asked to be left alone when it failed last; 0 when it didn't.
    virtual qint64 pauseMs() const { return 0; }
    /// Whose map it is; empty when the source doesn't say.
    virtual QString attribution() const = 0;
};

/// Whether a location is the address of a tile server: http or https with {z}, {x} and {y}, and without a password.
bool isTileServer(const QString& location);

/// The source that the settings name, for the thread that calls this; null for none, for what can't be one and for what
/// isn't there (yet).
std::unique_ptr<TileSource> makeTileSource(const TileSettings& settings);

} // namespace cardreel

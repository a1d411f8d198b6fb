#pragma once

#include "platform/map/TileSource.h"

#include <QSqlDatabase>

#include <memory>

namespace cardreel {

/// Tiles in an MBTiles file: a SQLite database with the table or view `tiles`, whose rows count from the south, and
/// `metadata`. The file is only read. Answers at once. Owned by whoever shows them; one thread.
class MbtilesTileSource : public TileSource
{
public:
    static constexpr qint64 largestBytes = 4 << 20;

    /// Null for what isn't such a file, or one with vector tiles.
    static std::unique_ptr<MbtilesTileSource> open(const QString& path);
    ~MbtilesTileSource() override;

    void fetch(const TileKey& key, Answer answer) override;
    void cancel(const TileKey&) override {}
    void reject(const TileKey&) override {}
    int parallelFetches() const override { return 1; }
    int maxZoom() const override { return m_maxZoom; }
    QString attribution() const override { return m_attribution; }

private:
    explicit MbtilesTileSource(const QString& path);

    bool readMetadata();
    QString metadata(const QString& name) const;

    const QString m_path;
    const QString m_connection; ///< its name among Qt's
    QSqlDatabase m_database;
    int m_maxZoom = 19;
    QString m_attribution;
};

/// What a piece of HTML says, on one line: without tags, the commonest entities put in. For attributions, which are
/// written for web pages.
QString plainText(const QString& html);

} // namespace cardreel

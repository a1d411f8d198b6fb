#include "platform/map/MbtilesTileSource.h"

#include "platform/files/Files.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

#include <algorithm>
#include <array>
#include <utility>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestAttribution = 500;

QString entityText(const QString& name)
{
    static constexpr std::array<std::pair<const char*, char16_t>, 7> known{{{"amp", u'&'},
                                                                            {"lt", u'<'},
                                                                            {"gt", u'>'},
                                                                            {"quot", u'"'},
                                                                            {"apos", u'\''},
                                                                            {"nbsp", u' '},
                                                                            {"copy", u'\u00A9'}}};
    for (const auto& [text, character] : known) {
        if (name == QLatin1StringView(text))
            return QString(QChar(character));
    }
    const bool isHex = name.startsWith("#x"_L1, Qt::CaseInsensitive);
    const uint code = name.mid(isHex ? 2 : 1).toUInt(nullptr, isHex ? 16 : 10);
    const bool isCharacter =
        name.startsWith(u'#') && code >= 0x20 && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
    return isCharacter ? QString::fromUcs4(std::array{char32_t(code)}.data(), 1) : QString();
}

} // namespace

QString plainText(const QString& html)
{
    static const QRegularExpression hidden(u"<!--.*?-->|<(script|style)\\b.*?</\\1\\s*>|<[^>]*>"_s,
                                           QRegularExpression::CaseInsensitiveOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression entity(u"&(#?\\w{1,8});"_s);
    QString rest = html.left(16 * longestAttribution);
    rest.replace(hidden, u" "_s);
    QString text;
    qsizetype end = 0;
    for (const QRegularExpressionMatch& match : entity.globalMatch(rest)) {
        text += QStringView(rest).mid(end, match.capturedStart() - end);
        const QString character = entityText(match.captured(1));
        text += character.isEmpty() ? match.captured() : character;
        end = match.capturedEnd();
    }
    text += QStringView(rest).mid(end);
    return text.simplified().left(longestAttribution);
}

std::unique_ptr<MbtilesTileSource> MbtilesTileSource::open(const QString& path)
{
    // SQLite would wait at a pipe for somebody to write, and with it all maps that share the thread.
    if (!files::openForReading(path))
        return nullptr;
    std::unique_ptr<MbtilesTileSource> source(new MbtilesTileSource(path));
    if (!source->m_database.open() || !source->readMetadata())
        return nullptr;
    return source;
}

MbtilesTileSource::MbtilesTileSource(const QString& path)
    : m_path(path)
    , m_connection(QUuid::createUuid().toString())
    , m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection))
{
    // Through a URI, also for what it spares: SQLite would make a file that isn't there.
    const QByteArray encoded = files::nativePath(files::absolutePath(path)).toPercentEncoding("/");
    m_database.setDatabaseName(u"file://"_s + QString::fromLatin1(encoded) + u"?mode=ro"_s);
    m_database.setConnectOptions(u"QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=1000"_s);
}

MbtilesTileSource::~MbtilesTileSource()
{
    m_database = {};
    QSqlDatabase::removeDatabase(m_connection);
}

bool MbtilesTileSource::readMetadata()
{
    QSqlQuery query(m_database);
    if (!query.exec(u"SELECT zoom_level, tile_column, tile_row, tile_data FROM tiles LIMIT 1"_s) || !query.next())
        return false;
    query.finish();
    if (metadata(u"format"_s).compare("pbf"_L1, Qt::CaseInsensitive) == 0)
        return false;
    bool isNumber = false;
    int deepest = metadata(u"maxzoom"_s).toInt(&isNumber);
    if (!isNumber && query.exec(u"SELECT max(zoom_level) FROM tiles"_s) && query.next())
        deepest = query.value(0).toInt(&isNumber);
    if (isNumber && isTile({deepest, 0, 0}))
        m_maxZoom = deepest;
    m_attribution = plainText(metadata(u"attribution"_s));
    if (m_attribution.isEmpty())
        m_attribution = plainText(metadata(u"name"_s));
    return true;
}

QString MbtilesTileSource::metadata(const QString& name) const
{
    QSqlQuery query(m_database);
    query.prepare(u"SELECT value FROM metadata WHERE name = ?"_s);
    query.addBindValue(name);
    return query.exec() && query.next() ? query.value(0).toString() : QString();
}

void MbtilesTileSource::fetch(const TileKey& key, Answer answer)
{
    // The open file would go on answering, from what is no more the user's map.
    if (!isTile(key) || !files::exists(m_path)) {
        answer(isTile(key) ? Status::Failed : Status::Missing, {});
        return;
    }
    QSqlQuery query(m_database);
    query.prepare(u"SELECT CASE WHEN length(tile_data) <= ? THEN tile_data END FROM tiles "
                  "WHERE zoom_level = ? AND tile_column = ? AND tile_row = ?"_s);
    query.addBindValue(largestBytes);
    query.addBindValue(key.z);
    query.addBindValue(key.x);
    query.addBindValue((1 << key.z) - 1 - key.y);
    if (!query.exec()) {
        answer(Status::Failed, {});
        return;
    }
    if (!query.next()) {
        // SQLite tells of damage only now, and Qt as of an end; only its error says which.
        answer(query.lastError().isValid() ? Status::Failed : Status::Missing, {});
        return;
    }
    const QByteArray bytes = query.value(0).toByteArray();
    answer(bytes.isEmpty() ? Status::Failed : Status::Found, bytes);
}

} // namespace cardreel

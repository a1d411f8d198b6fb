#include "platform/map/TileWorker.h"

#include "platform/map/TileImage.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace cardreel {
namespace {

constexpr qsizetype rememberedMissing = 65'536;

} // namespace

TileWorker::TileWorker(const TileSettings& settings, const TileRetryTimes& times, std::shared_ptr<TileMailbox> mailbox)
    : m_settings(settings)
    , m_mailbox(std::move(mailbox))
    , m_plan(times)
{
}

TileWorker::~TileWorker() = default;

void TileWorker::start()
{
    m_clock.start();
    m_turn = std::make_unique<QTimer>();
    m_turn->setSingleShot(true);
    QObject::connect(m_turn.get(), &QTimer::timeout, m_turn.get(), [this] { turn(); });
    makeSource();
    tellCondition();
}

bool TileWorker::makeSource()
{
    m_source = makeTileSource(m_settings);
    if (m_source)
        m_plan.setParallel(m_source->parallelFetches());
    return m_source != nullptr;
}

void TileWorker::takeWish()
{
    std::optional<TileMailbox::Wish> wish = m_mailbox->takeWish();
    if (!wish)
        return;
    m_given.removeIf([&wish](const auto& entry) { return entry.value() <= wish->received; });
    std::vector<TileKey> wanted;
    for (const TileKey& key : wish->keys) {
        if (m_given.contains(key))
            continue;
        if (m_missing.contains(key))
            giveMissing(key);
        else
            wanted.push_back(key);
    }
    for (const TileKey& key : m_plan.setWanted(std::move(wanted))) {
        if (m_source)
            m_source->cancel(key);
    }
    const std::vector<TileKey>& keys = m_plan.wanted();
    m_notAtHand.intersect(QSet<TileKey>(keys.begin(), keys.end()));
    m_toLookUp.clear();
    std::copy_if(keys.rbegin(), keys.rend(), std::back_inserter(m_toLookUp),
                 [this](const TileKey& key) { return !m_notAtHand.contains(key) && !m_plan.isUnderway(key); });
    scheduleTurn();
}

void TileWorker::turn()
{
    if (!m_toLookUp.empty()) {
        const TileKey key = m_toLookUp.back();
        m_toLookUp.pop_back();
        lookUp(key);
    } else if (const std::optional<TileKey> key = m_plan.next(m_clock.elapsed())) {
        fetch(*key);
    }
    scheduleTurn();
}

void TileWorker::scheduleTurn()
{
    const std::optional<qint64> due = m_toLookUp.empty() ? m_plan.nextDueMs() : 0;
    if (due)
        m_turn->start(std::chrono::milliseconds(std::max<qint64>(*due - m_clock.elapsed(), 0)));
    else
        m_turn->stop();
    tellCondition();
}

void TileWorker::lookUp(const TileKey& key)
{
    const std::optional<TileSource::Held> held = m_source ? m_source->atHand(key) : std::nullopt;
    if (held && held->isCurrent) {
        const QImage image = tileImage(held->bytes);
        if (!image.isNull()) {
            m_plan.didObtain(key);
            give(key, image);
            return;
        }
        m_source->reject(key);
    }
    if (!held || !m_plan.isPaused() || !giveOld(key))
        m_notAtHand.insert(key);
}

void TileWorker::fetch(const TileKey& key)
{
    if (!m_source && !makeSource()) {
        didFail(key, 0);
        return;
    }
    if (!isTile(key) || key.z > m_source->maxZoom()) {
        didFetch(key, TileSource::Status::Missing, {});
        return;
    }
    m_source->fetch(key, [this, key](TileSource::Status status, const QByteArray& bytes) {
        didFetch(key, status, bytes);
        scheduleTurn();
    });
}

void TileWorker::didFetch(const TileKey& key, TileSource::Status status, const QByteArray& bytes)
{
    if (!m_plan.isUnderway(key))
        return;
    if (status == TileSource::Status::Failed) {
        didFail(key, m_source->pauseMs());
        return;
    }
    if (status == TileSource::Status::Missing) {
        m_plan.didAnswer(key);
        giveMissing(key);
        return;
    }
    const QImage image = tileImage(bytes);
    if (image.isNull()) {
        m_source->reject(key);
        didFail(key, 0);
        return;
    }
    m_plan.didAnswer(key);
    give(key, image);
}

void TileWorker::didFail(const TileKey& key, qint64 pauseMs)
{
    const bool wasPaused = m_plan.isPaused();
    m_plan.didFail(key, m_clock.elapsed(), pauseMs);
    giveOld(key);
    if (m_plan.isPaused() && !wasPaused) {
        // Nothing better will come for a while: whatever is there will do.
        m_notAtHand.clear();
        m_toLookUp.assign(m_plan.wanted().rbegin(), m_plan.wanted().rend());
    }
}

bool TileWorker::giveOld(const TileKey& key)
{
    if (!m_source || m_given.contains(key))
        return false;
    const std::optional<TileSource::Held> held = m_source->atHand(key);
    const QImage image = held ? tileImage(held->bytes) : QImage();
    if (!image.isNull())
        give(key, image);
    return !image.isNull();
}

void TileWorker::giveMissing(const TileKey& key)
{
    if (m_missing.size() >= rememberedMissing)
        m_missing.clear();
    m_missing.insert(key);
    give(key, {});
}

void TileWorker::give(const TileKey& key, const QImage& image)
{
    m_notAtHand.remove(key); // it may well be in the cache now
    m_given.insert(key, m_mailbox->put(TileMailbox::Result{key, image}));
}

void TileWorker::tellCondition()
{
    TileMailbox::Condition condition;
    condition.state = m_plan.isUnreachable() ? TileLoader::State::Unreachable : TileLoader::State::Working;
    if (m_source)
        condition.maxZoom = m_source->maxZoom();
    condition.attribution =
        m_settings.attribution.isEmpty() && m_source ? m_source->attribution() : m_settings.attribution;
    if (m_told == condition)
        return;
    m_told = condition;
    m_mailbox->put(std::move(condition));
}

} // namespace cardreel

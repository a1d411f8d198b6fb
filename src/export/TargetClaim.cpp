#include "export/TargetClaim.h"

#include "platform/files/Places.h"

#include <QSet>

#include <algorithm>
#include <mutex>
#include <utility>

namespace cardreel {

namespace {

struct Claims
{
    std::mutex mutex;
    QSet<QString> targets;
};

Claims& allClaims()
{
    static Claims claims;
    return claims;
}

} // namespace

TargetClaim::TargetClaim(const QString& target)
    : m_target(target)
{
    Claims& claims = allClaims();
    const std::scoped_lock lock(claims.mutex);
    m_isHeld = std::none_of(claims.targets.begin(), claims.targets.end(),
                            [&](const QString& other) { return foldersOverlap(target, other); });
    if (m_isHeld)
        claims.targets.insert(target);
}

void TargetClaim::release()
{
    if (!std::exchange(m_isHeld, false))
        return;
    Claims& claims = allClaims();
    const std::scoped_lock lock(claims.mutex);
    claims.targets.remove(m_target);
}

} // namespace cardreel

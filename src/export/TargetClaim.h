#pragma once

#include <QString>

namespace cardreel {

/// A folder that a job of this process fills or removes, for as long as it does: what one job removes must not be what
/// another one writes. Owned by the job; any thread.
class TargetClaim
{
public:
    explicit TargetClaim(const QString& target);
    ~TargetClaim() { release(); }
    TargetClaim(const TargetClaim&) = delete;
    TargetClaim& operator=(const TargetClaim&) = delete;

    /// False when the folder overlaps one that was claimed before, and after release().
    bool isHeld() const { return m_isHeld; }
    void release();

private:
    QString m_target;
    bool m_isHeld = false;
};

} // namespace cardreel

#pragma once

#include <functional>

/// Where players end that the interface thread must not wait for: stopping a decoder takes some 200 ms, and as long as
/// a dying card takes to answer.
namespace cardreel::BackgroundEnd {

/// Runs `end` on a thread of its own. Any thread.
void run(std::function<void()> end);

/// Waits for everything handed over so far. Any thread but those.
void wait();

} // namespace cardreel::BackgroundEnd

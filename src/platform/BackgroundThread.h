#pragma once

#include <functional>

/// Threads for what the interface thread must not wait for but the program's end does: players that end, for stopping a
/// decoder takes some 200 ms, and reads, which take as long as a dying card takes to answer.
namespace cardreel::BackgroundThread {

/// Runs a job on a thread of its own. Any thread.
void run(std::function<void()> job);

/// Waits for everything handed over so far. Any thread but those.
void wait();

} // namespace cardreel::BackgroundThread

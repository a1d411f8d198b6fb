#pragma once

#include <functional>

/// The process-wide queue of background jobs, on a thread pool of its own. Not Qt's global one: painting a large
/// picture shares its work with that pool and waits for it, which would never end while the pool's threads are jobs
/// that wait for the interface thread.
namespace cardreel::BackgroundQueue {

enum class Priority { Default, Soon /**< before jobs of default priority that haven't started */ };

/// Runs `job` on a thread of the pool; everything done before this call happens before it. Any thread.
void start(std::function<void()> job, Priority priority = Priority::Default);

/// Waits until no job is left; false when `timeoutMs` (negative: none) passed before. For the end of the program, when
/// every job was told to stop.
bool waitForDone(int timeoutMs = -1);

} // namespace cardreel::BackgroundQueue

#pragma once

#include <functional>

/// How a background job reaches the interface thread, the one place where a thread waits for another. The application
/// calls close() on the interface thread when it is about to end; from then on no call is carried out and nobody waits.
namespace cardreel::InterfaceThread {

/// Runs `call` on the interface thread and waits for its end. Called on the interface thread it runs at once. False,
/// without calling, once the application is closing or where there is none.
bool callAndWait(const std::function<void()>& call);

/// Interface thread. Releases everyone who waits; later calls return false.
void close();

/// Interface thread. Undoes close(); for programs that start the application object more than once.
void open();

} // namespace cardreel::InterfaceThread

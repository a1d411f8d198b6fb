#pragma once

/// Ctrl+C and what else asks the program to end (SIGINT, SIGTERM, SIGHUP), for work that can't be left where it stands.
/// A signal that the program was started to ignore stays ignored. Interface thread.
namespace cardreel::CommandLine::Interrupts {

/// From now on a signal ends the program with the status of what was cancelled. For the time before there is anything
/// to clean up; later calls change nothing.
void endProgram();

/// From now on a signal is only kept for who asks. Returns a descriptor that becomes readable by the first one and
/// stays so.
int hold();

/// Whether a signal was kept.
bool wereHeld();

} // namespace cardreel::CommandLine::Interrupts

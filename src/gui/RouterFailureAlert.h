#pragma once

struct RouterFailure;

// Where the tray shows what went wrong in router work: one message box per text at a time.
namespace RouterFailureAlert {
// Safe from any thread; the box opens on the main one. An empty failure shows nothing.
void show(const RouterFailure& failure);
} // namespace RouterFailureAlert

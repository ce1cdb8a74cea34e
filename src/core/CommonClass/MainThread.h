// Running work on the application's main thread (the thread of the
// QCoreApplication), from any thread.
#pragma once

#include <functional>

namespace MainThread {

// True on the main thread, or when there is no application object yet.
bool isCurrent();
// Queues `work` to run on the main thread's event loop; safe from any thread.
void post(std::function<void()> work);
// Runs `work` now when on the main thread, else queues it.
void run(std::function<void()> work);

}  // namespace MainThread

// A private home for a test process: the per-user folders (configuration,
// data, caches) and the log folder point into a temporary folder, so that
// tests neither read nor change the real user's files.
#pragma once

#include <QString>

namespace TestEnvironment {

// The temporary home of this test process.
QString home();
// Resets the process-wide settings, path cache and user defaults file.
void resetApplicationState();

}  // namespace TestEnvironment

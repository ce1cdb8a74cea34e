// Waiting on the real event loop for something the code under test does.
#pragma once

#include <chrono>
#include <functional>

// Runs the event loop until `condition` holds; false when `bound` passed
// first, which only a hang reaches.
bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds bound = std::chrono::minutes(2));

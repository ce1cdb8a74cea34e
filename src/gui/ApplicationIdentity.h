// What the windowed program sets up before its first window: its name for
// settings and folders, its desktop entry and its icon.
#pragma once

void setUpApplicationIdentity();

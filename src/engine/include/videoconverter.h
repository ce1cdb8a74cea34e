// Public interface of the converter library: C functions and fixed-layout
// records. Strings are UTF-8 and NUL-terminated.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Sets the folder the library keeps its scratch files in (keyframe indexes,
// intermediate files). The path is copied. Returns 0, or -1 for a null path.
int VideoConverter_SetTempPath(const char* path);

#ifdef __cplusplus
}
#endif

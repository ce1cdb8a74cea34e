#include "DownloadSettings.h"

int32_t qualityParam = 0;

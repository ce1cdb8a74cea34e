// The name a download is saved under.
#pragma once

#include <QString>

// "<folder>/<title>.<format>", or while a file of that name exists
// "<folder>/<title>(<n>).<format>" with n counting from 0: the first
// alternative to clip.mp4 is clip(0).mp4.
QString freeDownloadPath(const QString& folder, const QString& title, const QString& format);

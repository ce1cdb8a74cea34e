// Thumbnails as TIFF data, the picture format of the download list file. Qt
// writes TIFF only through an image plugin that a desktop may lack, so the
// baseline form is written here: one uncompressed strip of 8-bit RGB, or
// RGBA when the picture has transparency.
#pragma once

#include <QByteArray>
#include <QImage>

namespace TiffImage {

// Baseline TIFF of `image`, little-endian; empty for a null image.
QByteArray encode(const QImage& image);
// An uncompressed 8-bit TIFF (grey, grey and alpha, RGB or RGBA, in strips,
// either byte order) as encode() and most writers make it; other TIFFs go
// to Qt's TIFF plugin when there is one. A null image when neither reads it.
QImage decode(const QByteArray& data);
// True when the bytes start like a TIFF file.
bool isTiff(const QByteArray& data);

}  // namespace TiffImage

// A thumbnail as the download list or a web server gives it: TIFF, or any
// format that Qt reads (PNG, JPEG, GIF, ...). A null image when it is none.
QImage decodeThumbnail(const QByteArray& data);

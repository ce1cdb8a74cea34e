// Pictures of the skin, drawn from SVG files at whatever size and pixel
// density they are shown, so that they stay sharp on high-resolution
// screens. Colour tokens in the files ({base}, {text}, {mid}, {highlight},
// {highlightedText}, {button}) take the colours of the palette, so the skin
// follows the desktop's light or dark look.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace SkinImage {

// The picture at `path`, or at its ".svg" sibling when `path` names a
// bitmap that is not there; a null icon when neither is a picture. Other
// formats than SVG are loaded as they are.
QIcon load(const QString& path, const QPalette& palette);

}  // namespace SkinImage

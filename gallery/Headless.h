#pragma once

#include <QTemporaryDir>

namespace gallery {

// True when the environment names neither a display nor a platform to draw on.
bool hasNoDisplay();

// Drawing without a display, the same on every machine: Qt's offscreen platform, the software renderer, fixed
// fonts and fixed hinting. To be made before the application object; what the environment already says is
// left alone.
class HeadlessDrawing
{
public:
    HeadlessDrawing();

private:
    QTemporaryDir m_folder;
};

} // namespace gallery

#pragma once

namespace gallery {

// Makes the gallery's own types known to QML as the module `gallery`.
void registerQmlTypes();

} // namespace gallery

#pragma once

namespace gallery {

// From now on every warning and error of Qt's log is counted as well as printed.
void startCountingWarnings();
int warningCount();

} // namespace gallery

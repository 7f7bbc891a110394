#pragma once

#include "simulator/Recording.h"

#include <optional>

class QIODevice;

namespace simulation {

// The recording that an open device holds: UTF-8 header lines "# key: value", then rows of numbers and names
// between commas, "nan" for a missing sample. Nothing, and the reason with its line, when any part of it is
// not as it must be.
std::optional<Recording> recordingFrom(QIODevice &device, ReadingError *error);

} // namespace simulation

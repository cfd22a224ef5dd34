#pragma once

#include "desktop/demo/DemoRun.h"

namespace velmorand::desktop {

/// Print the table of the demo to standard output, line by line as it grows.

void printHeading(std::span<const PixelRect> workAreas);
void printRow(int number, const DemoRow& row);

}  // namespace velmorand::desktop

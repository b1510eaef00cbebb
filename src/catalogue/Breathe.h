#pragma once

namespace cintal {

// Lets the interface repaint and take events during a long loop, at most
// every 30 ms so that a large run is not slowed by painting.
void Breathe();

} // namespace cintal

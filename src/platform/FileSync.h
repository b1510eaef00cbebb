#pragma once

#include <cstdio>

namespace cintal::platform {

// Pushes a file's written bytes to the disk, so that a rename that follows
// never exposes a file whose contents are still only in memory.
bool SyncFile(std::FILE* file);

} // namespace cintal::platform

namespace cintal {

// Makes the engine push every file it writes with SyncFile. The programs
// call it at start-up, before any file is written.
void UseFileSync();

} // namespace cintal
